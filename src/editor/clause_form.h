// Clauses as trees, for telling whether two texts mean the same: brackets and lists are resolved,
// literals have one spelling, and variables and the numbers of held expressions count by their
// first occurrence. Names are not looked up, so texts that are not loaded can be compared. Used by
// the guard between pictures and text, and by the translator before it replaces a clause.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/records.h"

namespace velora {

// A clause in its common form; two clauses with equal forms are the same up to names of variables.
struct ClauseForm {
  bool readable = false; // false: the text is no clause, and the rest is empty
  std::string left;      // the head
  std::string whole;     // head and body
};

// The form of "f p1 .. pn ::= body", without a semicolon.
ClauseForm clause_form(std::string_view clause);

// True when both are clauses and the same up to names of variables; same_left_side looks at the
// heads alone, which `clause` needs no body for.
bool same_clause(std::string_view clause, std::string_view other);
bool same_left_side(std::string_view clause, std::string_view other);

// The text of every clause of a function, "f p1 .. pn ::= body", in their order; with `mentioned`
// only those whose body has that name.
std::vector<std::string> clauses_of(const func_block *function, const symbol *mentioned = nullptr);

} // namespace velora
