// Declarations: type operators and enumerated types, functions and constructors with their
// signatures. Each successful declaration changes the symbol table at once.
#pragma once

#include "core/records.h"

namespace velora {

// The most arguments of a type operator in a type, and arrows of a signature.
inline constexpr unsigned kMostTypeArguments = 63;
inline constexpr int kMostArrows = 255;

// One type declaration, whose first token is current. Leaves the token after it current. 1 or 0.
int p_tdec();

// One function (26) or constructor (27) declaration including its semicolon, which stays current.
int p_f_or_c_dec(int dec_token);

// A specification; `arity` receives its number of arrows. The caller owns the tree
// (free_type_tree). Null after "Invalid tspec\n".
top_node *p_tspecs(int *arity);
// A note on why the type that was read last is none, for who reports it.
void note_invalid_type();

// How many clauses a function has.
int clause_count(const func_block *fc);

} // namespace velora
