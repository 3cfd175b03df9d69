// Heap trees: parsed expressions, clause bodies, decision trees and types. Making, copying,
// comparing and freeing them. Deep trees are handled without recursion.
#pragma once

#include "core/records.h"

namespace velora {

// A new heap application of `a1` to `a2`. Takes the error exit with "Alloc failed".
node *make_apply_node(node *a1, node *a2);
// A new heap leaf of `type` with a zero value.
node *make_leaf(std::uint8_t type);
// A heap copy of a leaf or of a whole tree (a query-space term too); texts are shared and held.
node *copy_leaf(const node *leaf);
node *copy_tree(const node *root);
// Frees a heap tree with everything it holds; null is allowed.
void free_struct(node *root);

// Owns a heap tree until it is released to its place.
class Tree {
public:
  explicit Tree(node *root = nullptr) : root_(root) {}
  ~Tree() { free_struct(root_); }
  Tree(const Tree &) = delete;
  Tree &operator=(const Tree &) = delete;
  Tree(Tree &&other) noexcept : root_(other.release()) {}
  Tree &operator=(Tree &&other) noexcept {
    if (this != &other)
      reset(other.release());
    return *this;
  }
  node *get() const { return root_; }
  node *operator->() const { return root_; }
  explicit operator bool() const { return root_ != nullptr; }
  node *release() {
    node *r = root_;
    root_ = nullptr;
    return r;
  }
  void reset(node *root = nullptr) {
    free_struct(root_);
    root_ = root;
  }

private:
  node *root_;
};

// Shallow equality of two nodes: same type and equal value; two applications are equal when the
// presence of their parts agrees; combinators of one code are equal; all else is unequal.
int equal_node(const node *n1, const node *n2);
// Structural equality of two whole trees.
int equal_expression(const node *first, const node *second);

// Type trees. make_* take the error exit with "Alloc_bi_top_node failed" (basic types, variables,
// arrows) or "Alloc_user_top_node failed" (user types).
top_node *make_bi_top_node(std::uint8_t code);
top_node *make_arrow_node(top_node *type, top_node *next);
top_node *make_user_top_node(symbol *s, unsigned args);
void free_type_tree(top_node *t);
// 1 when two types are equal; a variable on the left is compared by the low 7 bits of the codes
// alone, and user types by symbol and arguments.
int equal_type_tree(const top_node *tt1, const top_node *tt2);
inline unsigned type_arg_count(const top_node *t) {
  return t->top_code & 0x3F;
}

// Decision trees.
void free_lhs_tree(choice_node *list);

// While a match is in progress (gMatchDepth above 0) its argument evaluations may change the very
// clauses it walks, so what is freed then is kept until the outermost match has ended.
extern int gMatchDepth;
extern bool gBuried; // something waits for that
void free_buried_clauses();
class MatchScope {
public:
  MatchScope() { ++gMatchDepth; }
  ~MatchScope() {
    if (--gMatchDepth == 0 && gBuried)
      free_buried_clauses();
  }
  MatchScope(const MatchScope &) = delete;
  MatchScope &operator=(const MatchScope &) = delete;
};

// Frees the clauses of a function (not its type or block) and sets gSymbolTableChanged.
void free_function_defs(func_block *fc);
// Frees one clause: its bodies, its compiled form and the record itself.
void free_clause(rhs_link *clause);

} // namespace velora
