// The type check of function pictures. Before a picture is translated or run, every function box is
// held against what the symbol table knows of the function that it names. Most disagreements are
// warnings; a few conditions stop the translation. Called by the translation alone.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "editor/translate.h"
#include "editor/type_terms.h"

namespace velora {

// What is drawn at one input of a box.
struct BoxParameter {
  std::string label; // as it is drawn; empty for a blank one
  TypeTerm type;     // what is known of its type
  int from_box = 0;  // the slot of the box whose result it is; 0 for a label
};
using BoxParameters = std::vector<BoxParameter>;

// A box that is to look, or to be called, otherwise than it is drawn.
struct BoxChange {
  int slot;
  int shape;         // the new shape; -1 leaves it
  std::string label; // the new label; empty leaves it
};

// The check of one picture.
struct TypeCheck {
  const WinInfo *wi;
  bool defining; // a clause is made; false for a query
  Translation *t;
  std::vector<BoxChange> changes;
  std::vector<int> expanded; // boxes to be shown with what they expect
  // The boxes whose result goes where a function is expected; empty until one is asked for.
  std::optional<std::set<int>> given_as_functions = std::nullopt;
};

// Checks every box: 1, or 0 at the first that cannot be used. Afterwards boxes of constructors are
// double and calls of the picture's own function bold, also when the check failed.
int function_input_check(WinInfo *wi, int checkfdef, Translation &t);

// Name of a box; 1 or 0.
int CheckFunctionBox(TypeCheck &check, const Segm *box);
// Inputs and result of a box; 1 or 0.
int TypeCheckFunction(TypeCheck &check, const Segm *box);
int typecheck_inputs(TypeCheck &check, const Segm *box, const symbol *sym);
void typecheck_output(TypeCheck &check, const Segm *box);
void HigherOrderTypeCheck(TypeCheck &check, const Segm *box);
// Warns when two types cannot be the same.
void CheckTypesCompatible(TypeCheck &check, const std::string &fname, const TypeTerm &par1,
                          const TypeTerm &par2, int segnum);
// True for functions whose arguments are not checked.
bool SpecialCase(const std::string &name);

// The inputs of a box in order, looked for through junctions, holds and blank hexagons; 0 when a
// junction leads nowhere or in a ring.
int GetParNames(const TypeCheck &check, const Segm *box, BoxParameters &parameters);
// True when a box is drawn with fewer inputs on purpose: what takes its result is declared, or
// labelled, as a function.
bool is_given_as_function(TypeCheck &check, const Segm *box);
// The name that a box calls: its label, or the picture's name when that is blank.
std::string called_name(const TypeCheck &check, const Segm *box);
// The type of a value as it is written in a label; an empty term when it is not known.
TypeTerm type_of_value(std::string_view text);
// Declares an undeclared function from the types that are drawn at its box, after a question.
// 1 or 0.
int create_dec_from_graph(TypeCheck &check, const Segm *box, const BoxParameters &parameters);

} // namespace velora
