// Printing: of query results, which drives evaluation as far as the printing needs, and of symbols
// with their types, decision trees and bodies.
#pragma once

#include <string>

#include "core/records.h"

namespace velora {

// Ends a query: evaluates Query_root, prints it while Query_root advances along it, collects, and
// empties the extra-root list. Answers 1.
int print_spine();
// Evaluates `root` and prints it. Answers 1.
int print(node *root);
// Prints the term at `*p`, advancing `*p` along its right spine.
void print_out(node **p);
// Prints the function part and the arguments of a spine, each followed by a blank.
void print_args(node *root);
// 1 when `root` is a list cell that prints in list form.
int part_of_list(const node *root);
// Prints one node without evaluating anything; clears its guard.
void print_node(node *n);
// The text of a leaf as print_node prints it outside the narrative.
std::string leaf_text(const node *n);

// Dumps every symbol, newest first.
void print_all();
// Dumps one symbol; 0 when the name is unknown.
int print_symbol(const char *name);
void print_enum_vals(symbol *head);
void print_lhs_tree(const choice_node *lhs);

// Appends a type specification, positions joined by "->", to `buf`.
void buffer_tspecs(std::string &buf, const top_node *tn);
void buffer_tspec(std::string &buf, const top_node *tn);
std::string tspecs_text(const top_node *tn);
// The result type's symbol of a specification when it is a user type, else null.
symbol *GetSymbolOutput(const top_node *tn);

} // namespace velora
