// Deep equality of two terms, evaluated as far as the comparison goes. Called by the equality
// built-ins, by the list built-ins that look for an element, and by those that look for a clause.
#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "eval/builtins/bi_maths.h"

namespace velora {

namespace {

// Reduces what may still stand for another value. A constructor applied to one argument on the left
// of a cell is a value already, so it is passed over when nothing guards it.
void reduce_side(node *n) {
  if (is_apply(n)) {
    if (n->quote == 0 && n->val.a.a1->type == kConstructorNode)
      return;
    evaluate(n);
  } else if (n->type == kBuiltin || n->type == kFunctionNode) {
    evaluate(n);
  }
}

} // namespace

bool equal_leaves(const node *n1, const node *n2) {
  switch (n1->type) {
  case kInteger:
    return n1->val.i == n2->val.i;
  case kCharacter:
    return n1->val.c == n2->val.c;
  case kReal:
    return n1->val.r == n2->val.r;
  case kString:
    return std::string_view(n1->val.s.str, static_cast<std::size_t>(n1->val.s.len)) ==
           std::string_view(n2->val.s.str, static_cast<std::size_t>(n2->val.s.len));
  case kConstructorNode:
    return n1->val.cs == n2->val.cs;
  case kFunctionNode:
    return n1->val.fc == n2->val.fc;
  case kBuiltin:
    return n1->val.bi.id == n2->val.bi.id;
  case kVariable:
    return n1->val.v == n2->val.v;
  case kName:
    return n1->val.sym == n2->val.sym;
  default:
    return false;
  }
}

// Follows the argument side by a loop, so that long lists need no nesting; function sides nest.
int bi_equal_node(node *n1, node *n2) {
  check_stack();
  Root first(n1);
  Root second(n2);
  for (;;) {
    CheckForUserEvents(800);
    reduce_side(first);
    reduce_side(second);
    if (first->type != second->type)
      return 0;
    if (!is_apply(first))
      return equal_leaves(first, second) ? 1 : 0;
    if (!bi_equal_node(first->val.a.a1, second->val.a.a1) || !is_apply(first) || !is_apply(second))
      return 0;
    first = first->val.a.a2;
    second = second->val.a.a2;
  }
}

} // namespace velora
