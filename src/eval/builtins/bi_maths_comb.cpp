// The combinators as built-ins: each turns its own node into the combinator node of the same name,
// and the next step of the reducer applies the rule.
#include "core/space.h"
#include "eval/builtins/families.h"

namespace velora {

namespace {

node *make_combinator(NodeType code) {
  node *n = take_node();
  n->type = code;
  n->quote = 0;
  return n;
}

// The head belongs to shared clause code: the part of the spine that does is made anew around a
// combinator of its own, and the first application above it that may be written takes it.
int replace_shared_head(node **stack, int spine_len, NodeType code) {
  int own = 1;
  while (own <= spine_len && (stack[own]->flags & kStaticNode) != 0)
    ++own;
  if (own > spine_len)
    return 0;
  Root head(make_combinator(code));
  for (int i = 1; i < own; ++i)
    head = LMakeApplyNode(head, stack[i]->val.a.a2);
  stack[own]->val.a.a1 = head;
  return 1;
}

int become(node **stack, int spine_len, NodeType code) {
  if ((stack[0]->flags & kStaticNode) != 0)
    return replace_shared_head(stack, spine_len, code);
  stack[0]->type = code;
  stack[0]->quote = 0;
  return 1;
}

} // namespace

int bi_comb_i(node **stack, int spine_len) {
  return become(stack, spine_len, kCombI);
}
int bi_comb_k(node **stack, int spine_len) {
  return become(stack, spine_len, kCombK);
}
int bi_comb_s(node **stack, int spine_len) {
  return become(stack, spine_len, kCombS);
}
int bi_comb_b(node **stack, int spine_len) {
  return become(stack, spine_len, kCombB);
}
int bi_comb_c(node **stack, int spine_len) {
  return become(stack, spine_len, kCombC);
}

} // namespace velora
