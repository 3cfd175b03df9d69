// The expression parser: clause heads, clause bodies and queries become heap trees. No recursion,
// so brackets may nest and lists may run on as far as memory goes.
#pragma once

#include "core/records.h"

namespace velora {

// Parses an expression whose first token is current. With `list_level` 0 it ends, without
// consuming the token, at `;` or `::=`, and consumes the `)` that it may end at; with a level of 1
// or more it is the inside of a bracketed list. The caller owns the tree (trees.h); null on
// failure, when a message has been given if there was one to give.
node *p_expression(int list_level);

// A leaf for the current token, or null: for a name that is not declared after the message, for a
// token that is no element of expressions silently.
node *p_make_node();

// What the last expression lacked, in the order in which it was met: a missing or superfluous
// bracket, or kBalanced. Files accept such expressions; the console refuses them.
enum Balance { kBalanced, kRoundUnmatched, kSquareUnmatched };
extern Balance p_balance;

} // namespace velora
