// List built-ins that compare the elements of a list: sort, mkset and member.
#include <algorithm>
#include <functional>
#include <unordered_map>
#include <vector>

#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/bi_maths.h"
#include "eval/builtins/families.h"
#include "eval/evaluate.h"

namespace velora {

// --- sort --------------------------------------------------------------------------------------

namespace {

// The elements of a list under sorting. Its cells are new and kept reachable, and an element is
// exchanged by exchanging what the cells hold, so every element is reachable at every moment.
class Elements {
public:
  explicit Elements(const node *list) {
    ListBuilder builder;
    for (; is_cell(list); list = cell_tail(list))
      builder.add_shared(cell_head(list));
    list_ = builder.finish();
    for (node *cell = list_; is_cell(cell); cell = cell_tail(cell))
      holders_.push_back(cell->val.a.a1);
  }
  [[nodiscard]] std::size_t size() const { return holders_.size(); }
  node *&operator[](std::size_t i) { return holders_[i]->val.a.a2; }
  node *list() const { return list_.get(); }

private:
  Root list_;
  std::vector<node *> holders_;
};

// What one application of the comparison says.
enum Order { kNoOrder, kInOrder, kOutOfOrder };

Order compare(node *cmp, bool special, node *first, node *second) {
  CheckForUserEvents(800);
  Root application(special ? LCopy(cmp) : cmp);
  application = LMakeApplyNode(application, first);
  application = LMakeApplyNode(application, second);
  evaluate(application);
  if (application->type != kConstructorNode)
    return kNoOrder;
  return is_true(application) ? kInOrder : kOutOfOrder;
}

// From the second-to-last element back to the first, each element moves towards the end past every
// one that it is not in order with. The comparisons and their order can be seen by the program.
int insertion_sort(node *cmp, Elements &elements) {
  const bool special = ContainVarParFun(cmp) != 0;
  for (std::size_t start = elements.size(); start-- > 0;) {
    for (std::size_t i = start; i + 1 < elements.size(); ++i) {
      const Order order = compare(cmp, special, elements[i], elements[i + 1]);
      if (order == kNoOrder)
        return 0;
      if (order == kInOrder)
        break;
      std::swap(elements[i], elements[i + 1]);
    }
  }
  return 1;
}

// The operation when `cmp` is one of the comparison built-ins by itself and every element is of the
// sort it compares without fail: then nothing can be seen of the way the order is found. 0 if not.
int plain_comparison(const node *cmp, Elements &elements) {
  if (cmp->type != kBuiltin || stack_trace != 0)
    return 0;
  const int op = cmp->val.bi.id;
  if (op != kLessOp && op != kMoreOp && op != kAtMostOp && op != kAtLeastOp)
    return 0;
  const bool strings = elements.size() > 0 && elements[0]->type == kString;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const node *e = elements[i];
    const bool plain = strings ? e->type == kString : is_measure(e);
    if (!plain || e->quote != 0 || (e->type == kReal && std::isnan(e->val.r)))
      return 0;
  }
  return op;
}

// The same order in less time. A comparison that is false of equal elements ends with them in
// reversed order, so the elements are taken from the last to the first.
void merge_sort(int op, Elements &elements) {
  std::vector<node *> order(elements.size());
  for (std::size_t i = 0; i < order.size(); ++i)
    order[i] = elements[i];
  const bool strict = op == kLessOp || op == kMoreOp;
  if (strict)
    std::reverse(order.begin(), order.end());
  const int before = op == kLessOp || op == kAtMostOp ? kLessOp : kMoreOp;
  std::stable_sort(order.begin(), order.end(), [before](const node *a, const node *b) {
    return bi_compare(before, a, b) != 0;
  });
  for (std::size_t i = 0; i < order.size(); ++i)
    elements[i] = order[i];
}

} // namespace

int bi_sort(node **stack, int) {
  if (force_list(stack, 2) == nullptr)
    return 0;
  const Root cmp(bi_arg(stack, 1));
  Elements elements(bi_arg(stack, 2));
  const int op = plain_comparison(cmp, elements);
  if (op != 0)
    merge_sort(op, elements);
  else if (insertion_sort(cmp, elements) == 0)
    return 0;
  return set_copy(stack[2], elements.list());
}

// --- mkset and member --------------------------------------------------------------------------

namespace {

// Adds the hash of a finished value to `hash`; false when the term may still change when it is
// compared, since only a constructor with values is sure to stay.
bool hash_value(const node *n, std::size_t &hash) {
  check_stack();
  for (; is_apply(n); n = n->val.a.a2) {
    hash = hash * 31 + 1;
    if (n->quote != 0 || !hash_value(n->val.a.a1, hash))
      return false;
  }
  std::size_t value = n->type;
  switch (n->type) {
  case kInteger:
    value += std::hash<std::int32_t>{}(n->val.i);
    break;
  case kCharacter:
    value += std::hash<char>{}(n->val.c);
    break;
  case kReal:
    value += std::hash<float>{}(n->val.r);
    break;
  case kString:
    value += std::hash<std::string_view>{}(text_of(n));
    break;
  case kConstructorNode:
    value += std::hash<const void *>{}(n->val.cs);
    break;
  default:
    return false;
  }
  hash = hash * 31 + value;
  return true;
}

// True when the head of the term, and of every term in it, is not a function.
bool hash_of(const node *n, std::size_t &hash) {
  hash = 17;
  return hash_value(n, hash);
}

// Whether some node of `kept` equals `element`; comparing may evaluate.
bool is_among(const std::vector<node *> &kept, node *element) {
  return std::any_of(kept.begin(), kept.end(),
                     [element](node *other) { return bi_equal_node(other, element) != 0; });
}

// The hashes of all elements, or nothing when one of them is not a finished value.
std::vector<std::size_t> hashes_of(const node *list) {
  std::vector<std::size_t> hashes;
  for (; is_cell(list); list = cell_tail(list)) {
    std::size_t hash = 0;
    if (!hash_of(cell_head(list), hash))
      return {};
    hashes.push_back(hash);
  }
  return hashes;
}

} // namespace

// Among finished values only those of equal hash are compared.
int bi_mkset(node **stack, int) {
  if (force_list(stack, 1) == nullptr)
    return 0;
  const Root list(bi_arg(stack, 1));
  const std::vector<std::size_t> hashes = hashes_of(list);
  std::unordered_map<std::size_t, std::vector<node *>> kept;
  ListBuilder set;
  std::size_t i = 0;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell), ++i) {
    std::vector<node *> &rivals = kept[i < hashes.size() ? hashes[i] : 0];
    if (is_among(rivals, cell_head(cell)))
      continue;
    rivals.push_back(cell_head(cell));
    set.add_shared(cell_head(cell));
  }
  return set.write_over(stack[1]);
}

int bi_member(node **stack, int) {
  evaluate(bi_arg(stack, 1));
  evaluate(bi_arg(stack, 2));
  if (!is_list(bi_arg(stack, 2)))
    full_evaluate(bi_arg(stack, 2));
  if (!is_list(bi_arg(stack, 2)))
    return 0;
  const Root list(bi_arg(stack, 2));
  const Root x(bi_arg(stack, 1));
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell))
    if (bi_equal_node(x, cell_head(cell)) != 0)
      return set_bool(stack[2], true);
  return set_bool(stack[2], false);
}

} // namespace velora
