// Translation of pictures into text. A function picture becomes a declaration, if its function has
// none, and one clause; a picture of constructors becomes declarations; any function picture runs
// as a query. The text is made by a walk over the picture that changes nothing and reports into a
// record; the commands below show that record, hand the text to the parser and mark the segments
// that are at fault. Called by the menus, the terminal's commands and the components.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "editor/model/records.h"
#include "front/type_names.h"

namespace velora {

// The text of one picture is never longer than this.
inline constexpr std::size_t kLongestTranslation = std::size_t{1} << 20;
// Nor does the walk over it pass more nodes: more mean a doubling that writes nothing, through
// junctions.
inline constexpr std::size_t kMostWalkSteps = 1'000'000;
// The slot of the result node of function and type pictures.
inline constexpr int kResultSlot = 1;

// Where a segment stands in the text made from its picture. A shared box has a place for each use.
struct TextPlace {
  int segnum;
  std::size_t from;
  std::size_t to; // behind its last character
};

// What is said about a picture: how loudly it beeps (kPlainText for what only stands in the
// console), and the segment it is about, 0 for the picture as a whole.
inline constexpr int kPlainText = -1;
struct PictureMessage {
  std::string text;
  int level;
  int segnum;
};

// A translation and all that is remembered of it. Plain data that holds no pointer into the
// picture, so that it may be kept when the picture changes or goes.
struct Translation {
  std::string declaration; // what was declared first, without its semicolon; empty for nothing
  std::string lhs;         // left side of the clause
  std::string rhs;         // its body
  std::string text;        // the whole clause or query
  std::vector<TextPlace> places; // in `text`, in the order of their beginnings
  std::vector<PictureMessage> messages;
  std::vector<int> selected;    // segments to be shown selected
  std::vector<int> highlighted; // arcs to be pointed out
  std::vector<int> expanded;    // boxes to be shown with what they expect
  std::size_t steps = 0;        // how many nodes the walk passed
  bool quiet = false;           // messages are only collected
  bool asks = true;             // a clause that stands otherwise is replaced after a question only

  // Notes a message and, unless `quiet`, shows it. Answers false, for those who fail with it.
  bool tell(std::string message, int level, int segnum = 0);
};

// The translation that a command made last, for jumping between its text and its picture.
extern Translation gTranslation;
// The innermost segment whose text stands at a position; 0 for none.
int segment_at(const Translation &t, std::size_t position);
// Where a segment stands first in the text; null when it does not.
const TextPlace *place_of(const Translation &t, int segnum);
// Shows what a translation found on the picture: selects and highlights; what a former one
// highlighted is no longer so.
void show_findings(WinInfo *wi, const Translation &t);

// The pure part: no symbol table, no questions, nothing shown or selected.

// The text of the clause of a function picture with the given declared argument types, in lhs, rhs
// and text. With `count_fits` false their number is not held against the picture's.
bool picture_clause(const WinInfo *wi, const TypeNames &formals, Translation &t,
                    bool count_fits = true);
// The same for those who want the texts alone; `why` receives the message of a failure.
bool picture_clause(const WinInfo *wi, const TypeNames &formals, std::string &lhs, std::string &rhs,
                    std::string &why);
// The left side alone: -1 when an input has no valid text or their number does not fit, else 1.
int picture_lhs(const WinInfo *wi, const TypeNames &formals, Translation &t);
// The query that a function picture is, in t.text. `values` stand for the inputs with those slots.
using InputValues = std::vector<std::pair<int, std::string>>;
bool picture_query(const WinInfo *wi, Translation &t, const InputValues &values = {});
// Asks a value for each input in the text of `t` that is a variable. Inputs without an answer keep
// their labels. What was answered is suggested the next time, or, without `again`, taken.
InputValues ask_values(const WinInfo *wi, const Translation &t, bool again);
// The declaration that a function picture shows: "NAME ::= T0 -> T1 -> RESULT".
std::string picture_declaration(const WinInfo *wi);

// What a picture of constructors declares.
struct Structures {
  std::string type;   // the type's name
  std::string result; // its result type with variables, as it ends each constructor
  std::string base;   // "NAME ::= enum" and so on
  std::string import; // the file that constructors are taken from; empty for none
  struct Constructor {
    std::string name;
    std::string declaration;
    int segnum;
  };
  std::vector<Constructor> constructors;
  int operands = 0; // of a type operator; -1 for enum and nonlex
};
bool picture_structures(const WinInfo *wi, Structures &out, Translation &t);
// The declarations alone: the type's, then each constructor's.
bool picture_structures(const WinInfo *wi, std::vector<std::string> &declarations,
                        std::string &why);

// The commands.

// Translates a function, constructors or type picture; 1 or 0. `newfdec` 1 makes a fresh
// declaration from the picture even when there is one.
int TranslateGraph(WinInfo *wi, int newfdec);
// The same without asking whether there is anything to save. Without `asks` a clause that stands
// with another body is replaced without a question.
int translate_picture(WinInfo *wi, int newfdec, bool asks = true);
// Runs a function picture as a query; what cint_query answers, 0 when the picture gives none.
int GraphToQuery(WinInfo *wi);
// Sees to it that the function is declared; fills `inpars` with its argument types. 1 or 0.
int check_for_fdec(WinInfo *wi, TypeNames &inpars, int newfdec, Translation &t);
// Builds and defines one clause. 1 or 0.
int get_function(WinInfo *wi, const TypeNames &fmpars, int newfdec, Translation &t);
// Translates a picture of constructors. 1 or 0.
int get_structures(WinInfo *wi, Translation &t);

} // namespace velora
