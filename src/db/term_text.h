// Terms in the notation of database files: leaves, spines, clause heads read out of a decision
// tree, and the folding of long lines. Used by the writers of the database file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/records.h"

namespace velora {

// Each appends to `f` and answers false when the term holds a leaf that a file cannot carry (a
// text with a double quote or a line end in it, a character that ends the line). Outside clause
// heads such a leaf is written as an expression that computes it, so that it is not lost.

// One leaf.
bool fprint_node(std::string &f, const node *n);
// A term as an argument: an application stands in parentheses.
bool fprint_expr(std::string &f, const node *root, char sep);
// A spine without parentheses, each item followed by `sep`.
bool fprint_args(std::string &f, const node *root, char sep);
// The same for the head of the clause of bit `mask` in a decision tree.
bool fprint_lhs_args(std::string &f, const choice_node *root, std::uint32_t mask, char sep);

// Appends one clause, its printed head and body, folding each at the first `sep` after 45
// characters, never inside a text or a character. Every piece stands on a line of its own after
// `lind` (head) or `rind` (body).
void fprint_tf(std::string &f, std::string_view head, std::string_view body, std::string_view lind,
               std::string_view rind, char sep);

} // namespace velora
