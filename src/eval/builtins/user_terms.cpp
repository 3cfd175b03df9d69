// The list form of terms, both ways. Everything built hangs off a Root while more is taken from
// the query space; nesting is bounded by check_stack.
#include "eval/builtins/user_terms.h"

#include <vector>

#include "core/events.h"
#include "eval/bi_support.h"

namespace velora {

namespace {

// A copy of a leaf as a part of a list form.
node *part_of_form(const node *leaf) {
  node *copy = LCopy(leaf);
  copy->quote = leaf->type == kBuiltin || leaf->type == kFunctionNode ? 1 : 0;
  return copy;
}

node *form_of(const node *part) {
  return is_apply(part) ? user_expr_to_list(part) : part_of_form(part);
}

node *term_of(const node *part) {
  if (is_cell(part) && is_list(part))
    return user_list_to_expr(part);
  return LCopy(part);
}

} // namespace

// form(f a1 ... an) = [form f, form a1, ..., form an]
node *user_expr_to_list(const node *term) {
  check_stack();
  CheckForUserEvents(800);
  std::vector<const node *> arguments;
  const node *head = term;
  for (; is_apply(head); head = head->val.a.a1)
    arguments.push_back(head->val.a.a2);
  ListBuilder list;
  Root part(part_of_form(head));
  list.add_shared(part);
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
    part = form_of(*argument);
    list.add_shared(part);
  }
  return list.finish();
}

// term [p0 p1 ... pn] = (((term p0) (term p1)) ...) (term pn)
node *user_list_to_expr(const node *list) {
  check_stack();
  CheckForUserEvents(800);
  if (!is_cell(list))
    return LCopy(list);
  Root term(term_of(cell_head(list)));
  for (const node *cell = cell_tail(list); is_cell(cell); cell = cell_tail(cell)) {
    Root argument(term_of(cell_head(cell)));
    term = LMakeApplyNode(term, argument);
  }
  return term;
}

} // namespace velora
