// The records of one build of pictures from text: the builder's own symbol list with its
// declarations and clauses, and the pictures made of them. All of it lives in one `Build` and goes
// with it; pointers between records own nothing. Private to the builder.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "editor/model/records.h"
#include "front/parse.h"

namespace velora {

// A type declaration. `base` is the first token behind "::=".
struct tdec_block {
  std::string base;
  std::string text; // the whole declaration
};

// One of the groups that arrows part in a declaration: its tokens joined by single blanks.
struct cfdec_block {
  std::string param;
};

// One item of a clause: a token, an application (its head with `params`), or a gathered pattern.
struct fdef_block {
  std::string name; // its text; a string has its opening quote only, unless it was gathered
  int item_type = kTokName;
  bool gathered = false;
  std::vector<fdef_block *> params;
};

// A clause. Invariant: `rhs` is there once the clause has been parsed.
struct fdef_header_block {
  int occurence = 0; // how many clauses of the function stand before it
  std::vector<fdef_block *> lhs;
  fdef_block *rhs = nullptr;
  std::string text; // its tokens joined by blanks, as the guard compares it
};

// An entry of the list; `stype` is the code of its section's keyword and says which part counts.
struct jsymbol {
  std::string name;
  int stype = kTokTdec;
  tdec_block tdec;
  std::vector<cfdec_block> cfdec; // of a declaration: the result first, then the arguments
  fdef_header_block fdef;
};

// One segment of a picture: a box, or a line between two.
struct graph_block {
  int number = 0;
  int shape = 1; // a segment kind
  int line = 2;  // a style
  int lx = 0;
  int ly = 0;
  int ux = 0;
  int uy = 0;
  std::string label;
  std::string annot;
  std::vector<int> backward; // oldest first; files have the newest first
  std::vector<int> forward;
};

// A picture that is ready to be written. Segment number n stands at place n - 1.
struct BuiltPicture {
  jsymbol *source = nullptr; // the type, or the clause
  std::string name;
  int component = 0;
  int text_size = 12;
  int arguments = 0;  // the boxes from number 2 on that stand for parameters
  bool stood = false; // it is a picture that stood, taken whole: numbers say nothing of the clause
  std::string annot;
  std::vector<graph_block> segments;
};

// Everything of one build.
struct Build {
  std::deque<jsymbol> jSymbol_table;
  std::unordered_map<std::string, jsymbol *> latest; // by section and name: the latest entry
  std::unordered_map<std::string, int> clause_count;
  std::unordered_map<std::string, std::vector<const jsymbol *>>
      constructors; // by their type's word
  std::deque<fdef_block> items;
  std::vector<BuiltPicture> pictures;
};

// The list. J_insert_symbol answers null when the name stands in that section already, clauses
// apart, which may repeat; J_find_symbol finds the latest entry.
jsymbol *J_insert_symbol(Build &build, std::string_view name, int type);
jsymbol *J_find_symbol(Build &build, std::string_view name, int type);

// Reports the current token in the place of what was required; answers 0.
int J_parse_error(const char *fun, const char *token_required);

// Each reads one entry whose first token is current, up to the token that ends it: 1, or 0 after
// a report.
int process_t_dec(Build &build);
int process_f_or_c_dec(Build &build, int type);
int process_f_def(Build &build);
// Reads one expression from the current token on, to the token that ends it; null for none.
fdef_block *J_p_expression(Build &build, fdef_header_block &clause);

// The text of the current token as files have it, a string with both quotes.
std::string token_text();

// Reads all sections of a text; 1, or 0 after a message when a heading is none. Abandons the
// command when a type or clause cannot be read.
int read_sections(Build &build);

// The pictures of all types, then of all clauses, in the order of the list.
void output_types(Build &build);
void build_function(Build &build, jsymbol &clause);
BuiltPicture function_picture(Build &build, jsymbol &clause);
// Counts the items of a tree at each level, for the layout by rules.
void calc_func_details(const fdef_block *item, std::size_t level, std::vector<int> &level_count);

// Geometry: a box around (x, y) for a name; a line between two boxes of a picture.
graph_block calc_box(std::string_view name, int number, int shape, int style, int x, int y);
graph_block join_nodes(graph_block &source, graph_block &dest, int number);
// Puts a line's ends where its boxes are.
void place_line(graph_block &line, const graph_block &source, const graph_block &dest);
// Shape and style of an item of a right-hand side.
void determine_symbol(const fdef_block &item, graph_block &box);

// Gives boxes the places they had in pictures that stood (builder_places.cpp).
void keep_places(Build &build, const std::vector<std::unique_ptr<WinInfo>> &stood);
// How many pictures have boxes on each other or among the arguments, and the laying out of those
// and of the ones that mean something else than their text (builder_tidy.cpp).
int count_untidy(const Build &build);
void tidy_pictures(Build &build);

// The argument types of a declared function.
std::vector<std::string> formals_of(const jsymbol &declaration);

// The picture as the file has it.
std::string write_picture(const BuiltPicture &picture);

// The first declaration of a function, or null.
const jsymbol *declaration_of(Build &build, const std::string &function);

} // namespace velora
