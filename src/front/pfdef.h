// Clauses: adding one to a function, and preparing its body for the reducer.
#pragma once

#include "core/records.h"
#include "core/trees.h"

namespace velora {

// The highest number that a variable of a clause head may have, and the most arguments of a head.
inline constexpr int kMostVariable = 32767;
inline constexpr int kMostArguments = 255;

// Adds the clause `lhs ::= rhs` to `fc`, or replaces the body of the clause with exactly that head.
// Takes `rhs` over, whatever happens, and `lhs` when `freelhs` is non-zero; both are heap trees,
// and the head begins with `fc`. `db_f` tells of an explicit arity and changes nothing. Answers 1;
// 0 after a message when the head has too many arguments or a variable number out of range.
int add_defs(func_block *fc, int db_f, node *lhs, node *rhs, int freelhs);

// The compiled form of a clause body with the variables 0 to `max_var` abstracted, ?0 outermost,
// and every held expression shared.
Tree compile_body(int max_var, const node *body);

// Parses one clause, from the function's name to the semicolon, and adds it. 1 or 0.
int p_f_def();

} // namespace velora
