// Deep equality of two terms, evaluated as far as the comparison goes. Called by the equality
// built-ins, by the list built-ins that look for an element, and by those that look for a clause.
#include "eval/builtins/bi_maths.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"

namespace velora {

namespace {

// Reduces what may still stand for another value.
void reduce_side(node *n) {
  if (is_apply(n) || n->type == kBuiltin || n->type == kFunctionNode)
    evaluate(n);
}

// The head of a term's left spine, and the number of its arguments.
const node *head_of(const node *n, std::size_t &arguments) {
  arguments = 0;
  for (; is_apply(n); n = n->val.a.a1)
    ++arguments;
  return n;
}

// The arguments of a term but the last, from the first.
std::vector<node *> leading_arguments(const node *n) {
  std::vector<node *> arguments;
  for (n = n->val.a.a1; is_apply(n); n = n->val.a.a1)
    arguments.push_back(n->val.a.a2);
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

// Whether two applications agree in all but their last arguments: the function parts are compared
// as terms of their own.
bool equal_function_parts(node *n1, node *n2) {
  std::size_t count1 = 0;
  std::size_t count2 = 0;
  const node *const head1 = head_of(n1, count1);
  const node *const head2 = head_of(n2, count2);
  if (head1->type != kConstructorNode || head2->type != kConstructorNode)
    return bi_equal_node(n1->val.a.a1, n2->val.a.a1) != 0;
  // A constructor with arguments stays what it is, so only the arguments need to be looked at.
  if (count1 != count2 || head1->val.cs != head2->val.cs)
    return false;
  if (count1 == 2)
    return bi_equal_node(n1->val.a.a1->val.a.a2, n2->val.a.a1->val.a.a2) != 0;
  const std::vector<node *> arguments1 = leading_arguments(n1);
  const std::vector<node *> arguments2 = leading_arguments(n2);
  return std::equal(arguments1.begin(), arguments1.end(), arguments2.begin(),
                    [](node *a, node *b) { return bi_equal_node(a, b) != 0; });
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

// Follows the last arguments by a loop, so that long lists need no nesting; the others nest.
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
    if (!equal_function_parts(first, second) || !is_apply(first) || !is_apply(second))
      return 0;
    first = first->val.a.a2;
    second = second->val.a.a2;
    if (first.get() == nullptr || second.get() == nullptr)
      return first.get() == second.get() ? 1 : 0;
  }
}

} // namespace velora
