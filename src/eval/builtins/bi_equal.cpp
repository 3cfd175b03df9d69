// Deep equality of two terms, evaluated as far as the comparison goes. Called by the equality
// built-ins, by the list built-ins that look for an element, and by those that look for a clause.
#include "eval/builtins/bi_maths.h"

#include <algorithm>
#include <vector>

#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "core/trees.h"

namespace velora {

namespace {

// Reduces what may still stand for another value.
void reduce_side(node *n) {
  if (is_apply(n) || n->type == kBuiltin || n->type == kFunctionNode)
    evaluate(n);
}

// Lambdas and combinators have no value that could be compared.
bool equal_leaf(const node *n1, const node *n2) {
  return n1->type < kCombI && equal_node(n1, n2) != 0;
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
      return equal_leaf(first, second) ? 1 : 0;
    if (!equal_function_parts(first, second) || !is_apply(first) || !is_apply(second))
      return 0;
    first = first->val.a.a2;
    second = second->val.a.a2;
    if (first.get() == nullptr || second.get() == nullptr)
      return first.get() == second.get() ? 1 : 0;
  }
}

} // namespace velora
