// The translation of clause bodies into the combinators I, K, S, B and C, so that the reducer never
// substitutes variables. All trees are heap trees (core/trees.h), and all walks are iterative.
#pragma once

#include "core/records.h"
#include "core/trees.h"

namespace velora {

// Compiles `e`: each `((lambda ?v) body)` becomes the abstraction of v out of the compiled body,
// innermost first. The result shares no node with `e`; null for null.
node *comb(const node *e);

// The abstraction of a variable out of a combinator tree: a tree that applied to x gives `e` with
// x for every `?v`. Takes `e` over and builds the result from its nodes.
node *abso(int v, node *e);
// The same for every `HOLD x` with x equal to `held` (which must not belong to `e`), and for every
// `HOLDN id x`, in the place of the variable.
node *abst_held_exp(node *e, const node *held);
node *abst_HOLDN_exp(node *e, int id);

// True for an application `HOLD x`, and for `HOLDN #k x`.
bool is_hold(const node *n);
bool is_holdn(const node *n);
// The number k of a `HOLDN #k x`.
inline int holdn_id(const node *n) {
  return n->val.a.a1->val.a.a2->val.i;
}

// 1 when the tree contains a constructor that takes more than one argument.
int constructor_in(const node *root);

} // namespace velora
