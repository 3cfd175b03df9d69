// Combinator and lambda reduction. Each result is written over the application that completes the
// redex, so that every reference to it sees the result.
#include "eval/combinators.h"

#include <vector>

#include "core/events.h"
#include "core/space.h"

namespace velora {

namespace {

void write_apply(node *target, node *fun, node *arg) {
  target->type = kApply;
  target->quote = 0;
  target->val.a = {fun, arg};
}

// A part of `parent` made its own when it is shared code, so that it may be changed in place.
node *own_part(node *parent, node *&part) {
  if ((part->flags & kStaticNode) == 0)
    return part;
  Root held(parent);
  node *copy = take_node();
  LCopy_whole(copy, part, 0);
  part = copy;
  return copy;
}

// Kept: a variable in function position, or a body that is the bare variable, stays as it is.
void bi_lambda_subst(node *body, int v, node *x) {
  std::vector<node *> open{body};
  while (!open.empty()) {
    CheckForUserEvents(0);
    node *const at = open.back();
    open.pop_back();
    node *&fun = at->val.a.a1;
    node *&arg = at->val.a.a2;
    if (arg != nullptr && arg->type == kVariable && arg->val.v == v)
      arg = x;
    else if (arg != nullptr && is_apply(arg))
      open.push_back(own_part(at, arg));
    if (fun != nullptr && is_apply(fun))
      open.push_back(own_part(at, fun));
  }
}

} // namespace

int comb_arguments(std::uint8_t type) {
  switch (type) {
  case kCombI:
    return 1;
  case kCombK:
    return 2;
  case kCombS:
  case kCombB:
  case kCombC:
    return 3;
  default:
    return 0;
  }
}

int comb_redex(node **stack, int spine_len) {
  const int needed = comb_arguments(stack[0]->type);
  if (needed == 0 || spine_len < needed)
    return 0;
  node *const x = stack[1]->val.a.a2;
  node *const target = stack[needed];
  if (needed < 3) { // I x = x, K x y = x
    overwrite_node(target, x);
    return 1;
  }
  reserve_nodes(2);
  node *const y = stack[2]->val.a.a2;
  node *const z = target->val.a.a2;
  switch (stack[0]->type) {
  case kCombS: { // S x y z = (x z) (y z)
    node *const fun = LMakeApplyNode(x, z);
    write_apply(target, fun, LMakeApplyNode(y, z));
    break;
  }
  case kCombB: // B x y z = x (y z)
    write_apply(target, x, LMakeApplyNode(y, z));
    break;
  default: // C x y z = (x z) y
    write_apply(target, LMakeApplyNode(x, z), y);
  }
  return 1;
}

int bi_lambda(node **stack, int spine_len) {
  if (spine_len != 3)
    return 0;
  const node *const v = stack[1]->val.a.a2;
  if (v->type != kVariable)
    return 0;
  node *body = stack[2]->val.a.a2;
  if (is_apply(body)) {
    body = own_part(stack[2], stack[2]->val.a.a2);
    bi_lambda_subst(body, v->val.v, stack[3]->val.a.a2);
  }
  overwrite_node(stack[3], body);
  return 1;
}

} // namespace velora
