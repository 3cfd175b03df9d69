// List built-ins that take lists apart and put them together without applying functions. Lists are
// forced completely first; results are new cells that share the element nodes.
#include "eval/bi_support.h"

#include <vector>

#include "core/clock.h"
#include "eval/builtins/bi_maths.h"
#include "eval/builtins/families.h"
#include "eval/failed_runs.h"

namespace velora {

int bi_explode(node **stack, int) {
  const node *text = force_arg(stack, 1, kString);
  if (text == nullptr)
    return 0;
  ListBuilder list;
  for (char c : text_of(text))
    list.add_char(c);
  return list.write_over(stack[1]);
}

int bi_length(node **stack, int) {
  const node *list = force_list(stack, 1);
  return list == nullptr ? 0 : set_int(stack[1], list_length(list));
}

int bi_index(node **stack, int) {
  const node *list = force_list(stack, 1);
  if (list == nullptr)
    return 0;
  const std::int32_t length = list_length(list);
  ListBuilder numbers;
  for (std::int32_t i = 0; i < length; ++i)
    numbers.add_int(i);
  return numbers.write_over(stack[1]);
}

int bi_append(node **stack, int) {
  if (force_list(stack, 1) == nullptr || force_list(stack, 2) == nullptr)
    return 0;
  ListBuilder list;
  for (const node *cell = bi_arg(stack, 1); is_cell(cell); cell = cell_tail(cell))
    list.add_shared(cell_head(cell));
  for (const node *cell = bi_arg(stack, 2); is_cell(cell); cell = cell_tail(cell))
    list.add_shared(cell_head(cell));
  return list.write_over(stack[2]);
}

// --- take and drop -----------------------------------------------------------------------------

namespace {

// The count and the list of `take` and `drop`: null unless the list has at least that many
// elements. `count` becomes at least 0.
const node *counted_list(node **stack, std::int32_t &count) {
  const node *n = force_arg(stack, 1, kInteger);
  if (n == nullptr)
    return nullptr;
  count = n->val.i < 0 ? 0 : n->val.i;
  const node *list = force_list(stack, 2);
  return list == nullptr || list_length(list) < count ? nullptr : list;
}

} // namespace

int bi_take(node **stack, int) {
  std::int32_t count = 0;
  const node *cell = counted_list(stack, count);
  if (cell == nullptr)
    return 0;
  ListBuilder list;
  for (; count > 0; --count, cell = cell_tail(cell))
    list.add_shared(cell_head(cell));
  return list.write_over(stack[2]);
}

int bi_drop(node **stack, int) {
  std::int32_t count = 0;
  const node *cell = counted_list(stack, count);
  if (cell == nullptr)
    return 0;
  for (; count > 0; --count)
    cell = cell_tail(cell);
  ListBuilder list;
  for (; is_cell(cell); cell = cell_tail(cell))
    list.add_shared(cell_head(cell));
  return list.write_over(stack[2]);
}

// --- numbers -----------------------------------------------------------------------------------

// Divisors come in pairs d and n / d; those up to the root ascend, their partners descend.
int bi_factors(node **stack, int) {
  const node *arg = force_arg(stack, 1, kInteger);
  if (arg == nullptr)
    return 0;
  const std::int32_t n = arg->val.i;
  std::vector<std::int32_t> partners;
  ListBuilder list;
  for (std::int32_t d = 2; d <= n / d; ++d) {
    if (n % d != 0)
      continue;
    list.add_int(d);
    if (d != n / d)
      partners.push_back(n / d);
  }
  for (auto partner = partners.rbegin(); partner != partners.rend(); ++partner)
    list.add_int(*partner);
  return list.write_over(stack[1]);
}

// Without a qualifying element nothing is inserted. Every element must be of the kind of x.
int bi_insert(node **stack, int) {
  evaluate(bi_arg(stack, 1));
  if (!is_measure(bi_arg(stack, 1)) || force_list(stack, 2) == nullptr)
    return 0;
  node *x = bi_arg(stack, 1);
  for (const node *cell = bi_arg(stack, 2); is_cell(cell); cell = cell_tail(cell))
    if (cell_head(cell)->type != x->type)
      return 0;
  ListBuilder list;
  bool inserted = false;
  for (const node *cell = bi_arg(stack, 2); is_cell(cell); cell = cell_tail(cell)) {
    if (!inserted && bi_compare(kAtMostOp, x, cell_head(cell)) != 0) {
      list.add_shared(x);
      inserted = true;
    }
    list.add_shared(cell_head(cell));
  }
  return list.write_over(stack[2]);
}

// The integers a, a + s, ... up to the last that does not pass b; always at least a.
int bi_list_of_int(node **stack, int) {
  for (int i = 1; i <= 3; ++i)
    if (force_arg(stack, i, kInteger) == nullptr)
      return 0;
  const std::int64_t a = bi_arg(stack, 1)->val.i;
  const std::int64_t b = bi_arg(stack, 2)->val.i;
  const std::int64_t step = bi_arg(stack, 3)->val.i;
  if (step == 0)
    error_exit("list_of_int: the step must not be 0\n");
  const std::int64_t steps = (b - a) / step;
  ListBuilder list;
  list.add_int(static_cast<std::int32_t>(a));
  for (std::int64_t k = 1; k <= steps; ++k)
    list.add_int(static_cast<std::int32_t>(a + k * step));
  return list.write_over(stack[3]);
}

namespace {

// Folds `greater` or `lesser` over a list of numbers; a real once one comparison is not between
// integers.
int extreme(node **stack, int op) {
  const node *list = force_list(stack, 1);
  if (list == nullptr || is_nil(list))
    return 0;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell))
    if (!is_number(cell_head(cell)))
      return 0;
  node best = *cell_head(list);
  for (const node *cell = cell_tail(list); is_cell(cell); cell = cell_tail(cell))
    bi_arith(op, &best, cell_head(cell), &best);
  return set_copy(stack[1], &best);
}

} // namespace

int bi_max(node **stack, int) {
  return extreme(stack, kGreaterOp);
}
int bi_min(node **stack, int) {
  return extreme(stack, kLesserOp);
}

// --- the same element many times ---------------------------------------------------------------

// One node stands in every cell, so it is evaluated at most once.
int bi_replicate(node **stack, int) {
  const node *n = force_arg(stack, 1, kInteger);
  if (n == nullptr)
    return 0;
  ListBuilder list;
  for (std::int32_t count = n->val.i; count > 0; --count)
    list.add_shared(bi_arg(stack, 2));
  return list.write_over(stack[2]);
}

// The first cell shares the element; each further one has a copy to be evaluated on its own.
int bi_repeat(node **stack, int) {
  const node *n = force_arg(stack, 1, kInteger);
  if (n == nullptr)
    return 0;
  std::int32_t count = n->val.i;
  ListBuilder list;
  if (count > 0)
    list.add_shared(bi_arg(stack, 2));
  for (; count > 1; --count)
    list.add_copy(bi_arg(stack, 2));
  return list.write_over(stack[2]);
}

// --- shapes ------------------------------------------------------------------------------------

// The i-th list of the result holds the i-th elements of all the lists.
int bi_zip(node **stack, int) {
  const node *outer = force_list(stack, 1);
  if (outer == nullptr)
    return 0;
  std::vector<const node *> cursors;
  for (const node *cell = outer; is_cell(cell); cell = cell_tail(cell)) {
    const node *inner = cell_head(cell);
    if (!is_list(inner) || list_length(inner) != list_length(cell_head(outer)))
      return 0;
    cursors.push_back(inner);
  }
  ListBuilder rows;
  while (!cursors.empty() && is_cell(cursors.front())) {
    ListBuilder row;
    for (const node *&cursor : cursors) {
      row.add_shared(cell_head(cursor));
      cursor = cell_tail(cursor);
    }
    rows.add_list(row);
  }
  return rows.write_over(stack[1]);
}

// f x1 ... xn as one application, not evaluated here.
int bi_combine(node **stack, int) {
  const node *cell = force_list(stack, 2);
  if (cell == nullptr)
    return 0;
  Root term(bi_arg(stack, 1));
  for (; is_cell(cell); cell = cell_tail(cell))
    term = LMakeApplyNode(term, cell_head(cell));
  return set_copy(stack[2], term);
}

// The arguments as they stand; without arguments the empty list.
int bi_makelist(node **stack, int spine_len) {
  ListBuilder list;
  for (int i = 1; i <= spine_len; ++i)
    list.add_shared(bi_arg(stack, i));
  return list.write_over(stack[spine_len]);
}

// --- tag ---------------------------------------------------------------------------------------

namespace {

// Gives the list at `*place` cells and an end of its own from the first one on that belongs to
// shared clause code.
void own_cells(node **place) {
  while (is_cell(*place) && ((*place)->flags & kStaticNode) == 0)
    place = &(*place)->val.a.a2;
  if (((*place)->flags & kStaticNode) == 0)
    return;
  ListBuilder own;
  for (const node *cell = *place; is_cell(cell); cell = cell_tail(cell))
    own.add_shared(cell_head(cell));
  *place = own.finish();
}

// A value of a few nodes that forcing leaves as it is and nothing but a write in place can change.
bool is_plain(const node *n, int depth = 8) {
  if (n->quote != 0)
    return false;
  if (!is_apply(n))
    return n->type == kConstructorNode || (n->type >= kInteger && n->type <= kString);
  return depth > 0 && (n->flags & kStaticNode) == 0 && is_plain(n->val.a.a1, depth - 1) &&
         is_plain(n->val.a.a2, depth - 1);
}

// The list that has grown last. All its cells are its own and all its elements but the last are
// plain, as long as nothing was written in place and the space was not collected (when the nodes
// may be others). So a list that grows by one element after the other is not walked each time.
class GrownList {
public:
  [[nodiscard]] bool is(const node *list) const {
    return last_ != nullptr && is_apply(list) && list->quote == 0 && list->val.a.a1 == head_ &&
           list->val.a.a2 == tail_ && changes_ == gOtherChanges &&
           collections_ == space_counters().collections &&
           // Evaluating it nests one deeper for a moment.
           Evaluates + 1 < gNestingLimit && Evaluates < gDeepest;
  }

  // Forces what is not known to be plain: the last element, and what that has put behind it. False
  // when the list must be looked at as a whole.
  bool force_rest() {
    node *const last = last_;
    full_evaluate(cell_head(last));
    full_evaluate(cell_tail(last));
    return last == last_ && changes_ == gOtherChanges && is_nil(cell_tail(last)) &&
           is_plain(cell_head(last));
  }
  [[nodiscard]] node *end() const { return cell_tail(last_); }

  // Notes a list that has just got its last cell, `last`.
  void note(const node *list, node *last) {
    head_ = list->val.a.a1;
    tail_ = list->val.a.a2;
    last_ = last;
    changes_ = gOtherChanges;
    collections_ = space_counters().collections;
  }
  void forget() { last_ = nullptr; }

private:
  const node *head_ = nullptr; // the two parts of its first cell
  const node *tail_ = nullptr;
  node *last_ = nullptr;
  std::uint64_t changes_ = 0;
  std::uint64_t collections_ = 0;
};
GrownList grown;

// The list argument forced, with cells of its own, and its end. False when it is no list.
bool list_to_grow(node **stack, Root &list, node *&end, bool &all_plain) {
  list = bi_arg(stack, 1);
  if (grown.is(list)) {
    all_plain = grown.force_rest();
    if (all_plain) {
      end = grown.end();
      return true;
    }
    if (is_list(bi_arg(stack, 1)) == 0)
      return false;
  } else if (force_list(stack, 1) == nullptr) {
    return false;
  }
  list = bi_arg(stack, 1);
  own_cells(list.address());
  all_plain = true;
  for (end = list; is_cell(end); end = cell_tail(end))
    all_plain = all_plain && is_plain(cell_head(end));
  return true;
}

} // namespace

// The end of the list itself becomes a new cell, so whoever holds the list sees it grow.
int bi_tag(node **stack, int) {
  Root list;
  node *end = nullptr;
  bool all_plain = false;
  if (!list_to_grow(stack, list, end, all_plain))
    return 0;
  if ((stack[1]->flags & kStaticNode) == 0)
    stack[1]->val.a.a2 = list;
  ListBuilder added;
  added.add_copy(bi_arg(stack, 2));
  overwrite_node(end, added.finish());
  note_change();
  if (all_plain)
    grown.note(list, end);
  else
    grown.forget();
  return set_copy(stack[2], list);
}

} // namespace velora
