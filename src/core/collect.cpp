// The collector: marks what the roots reach. Marking keeps a bounded stack of arguments still to
// be visited and falls back to pointer reversal below a node that does not fit, so graphs of any
// depth are walked in fixed memory. There is no sweep: a node whose mark is not the current epoch
// is free.
#include "core/collect.h"

#include <array>
#include <cstring>
#include <vector>

#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "core/text.h"

namespace velora {

namespace {

constexpr std::size_t kMarkStack = 4096;
constexpr std::uint8_t kPoison = 0xEE;

// Number of the collection; the node's mark is its low part, never 0.
unsigned collection_number = 1;
std::int64_t reached = 0;
bool none_marked = false; // no node carries the epoch's mark
std::array<node *, kMarkStack> mark_stack;

std::uint8_t epoch_mark() {
  return gSpace.epoch;
}

// Notes a node that is not walked further: static code, or a leaf.
void mark_leaf(node *n) {
  n->mark = epoch_mark();
  ++reached;
  if (n->type == kString)
    mark_text(n->val.s.str, collection_number);
}

bool needs_walk(const node *n) {
  if (n == nullptr)
    return false;
  if ((n->flags & kStaticNode) != 0) {
    reached += mark_code(n, collection_number);
    return false;
  }
  return n->mark != epoch_mark();
}

// Pointer reversal: an application being walked keeps its parent in the part it is in (its type
// says which), so no memory is needed.
void mark_by_reversal(node *root) {
  node *parent = nullptr;
  node *current = root;
  for (;;) {
    // An interrupt, or an allocation that fails while the interface is served, may leave the walk
    // here with links still reversed. Nobody meets them: whatever is abandoned so ends with
    // init_free_list, which takes every root away before anything walks the space again.
    CheckForUserEvents(0);
    if (needs_walk(current)) {
      if (is_apply(current)) {
        current->mark = epoch_mark();
        ++reached;
        current->type = kApplyLeft;
        node *const fun = current->val.a.a1;
        current->val.a.a1 = parent;
        parent = current;
        current = fun;
        continue;
      }
      mark_leaf(current);
    }
    // `current` is done. Parents that it was the argument of are done with it: each gets its link
    // and its type back and becomes the part that its own parent waits for.
    while (parent != nullptr && parent->type == kApplyRight) {
      node *const up = parent->val.a.a2;
      parent->val.a.a2 = current;
      parent->type = kApply;
      current = parent;
      parent = up;
    }
    if (parent == nullptr)
      return;
    // It was a function part: the way up moves over to the argument, which is walked next.
    node *const up = parent->val.a.a1;
    parent->val.a.a1 = current;
    current = parent->val.a.a2;
    parent->val.a.a2 = up;
    parent->type = kApplyRight;
  }
}

void gc_mark(node *root) {
  std::size_t depth = 0;
  node *current = root;
  for (;;) {
    while (needs_walk(current)) {
      if (!is_apply(current)) {
        mark_leaf(current);
        break;
      }
      // Without room for its argument the node is still unmarked, so the reversal takes it whole
      // and comes back with everything below it marked.
      if (depth == kMarkStack) {
        mark_by_reversal(current);
        break;
      }
      CheckForUserEvents(0);
      // Marked before its parts are seen, so that a cycle ends at it.
      current->mark = epoch_mark();
      ++reached;
      mark_stack[depth++] = current->val.a.a2;
      current = current->val.a.a1;
    }
    if (depth == 0)
      return;
    current = mark_stack[--depth];
  }
}

void mark_roots() {
  for (node *root : {Copy_root, Query_root, Tn1, Tn2, Tn3})
    gc_mark(root);
  for (const Evalroot *cell = Eval_rootp; cell != nullptr; cell = cell->next)
    gc_mark(cell->root);
  for (const Root *r = gRootTop; r != nullptr; r = r->previous())
    gc_mark(r->get());
}

// Stress mode: whoever still reads a dead node sees that it is none.
void poison_dead() {
  for (std::size_t i = 0; i < gPool.count; ++i) {
    node &n = gPool.nodes[i];
    if (n.mark == epoch_mark())
      continue;
    std::memset(&n.val, kPoison, sizeof n.val);
    n.type = kPoison;
    n.quote = 0;
  }
}

} // namespace

void start_epoch() {
  ++collection_number;
  // Nothing carries the mark of a collection that reached nothing, so it serves once more: after
  // small queries the marks of a large pool are not worn out, and need no clearing.
  if (none_marked)
    return;
  if (++gSpace.epoch == 0) {
    for (std::size_t i = 0; i < gPool.count; ++i)
      gPool.nodes[i].mark = 0;
    gSpace.epoch = 1;
  }
}

void garbage_collect() {
  if (gPool.nodes == nullptr)
    return;
  start_epoch();
  reached = 0;
  none_marked = false; // also when the marking is abandoned
  mark_roots();
  none_marked = reached == 0;
  sweep_texts(collection_number);
  sweep_code(collection_number);
  if (collect_stress())
    poison_dead();
  note_collection(reached);
}

void forget_texts_and_code() {
  ++collection_number;
  sweep_texts(collection_number);
  sweep_code(collection_number);
}

namespace {

const char *fault_of(const node *n) {
  const bool in_pool = n >= gPool.nodes && n < gPool.nodes + gPool.count;
  if (!in_pool && (n->flags & kStaticNode) == 0)
    return "a reachable node lies outside the query space";
  // Only now may the node be read. The types of an application that is being walked stand nowhere
  // between two markings, so they are faults like any unknown number.
  switch (n->type) {
  case kApply:
    return nullptr;
  case kVariable:
  case kLambda:
  case kInteger:
  case kCharacter:
  case kReal:
    return nullptr;
  case kBuiltin:
    return n->val.bi.fc == nullptr ? "a built-in without a record" : nullptr;
  case kFunctionNode:
    return n->val.fc == nullptr ? "a function without a record" : nullptr;
  case kConstructorNode:
    return n->val.cs == nullptr ? "a constructor without a record" : nullptr;
  case kString:
    return n->val.s.str == nullptr ? "a string without a text" : nullptr;
  case kName:
    return n->val.sym == nullptr ? "a name without a symbol" : nullptr;
  default:
    return n->type >= kCombI && n->type <= kCombC ? nullptr : "a node of no known type";
  }
}

// Walks like the collector, but looks at each node before anything else does.
const char *check_graph(node *root, std::size_t limit) {
  std::vector<node *> open;
  if (root != nullptr)
    open.push_back(root);
  std::size_t seen = 0;
  while (!open.empty()) {
    node *const n = open.back();
    open.pop_back();
    if (const char *fault = fault_of(n))
      return fault;
    if ((n->flags & kStaticNode) != 0 || n->mark == epoch_mark())
      continue;
    // Each node is counted once, so a sound graph never counts more than the space holds.
    n->mark = epoch_mark();
    if (++seen > limit)
      return "more nodes are reachable than there are";
    if (is_apply(n))
      for (node *part : {n->val.a.a1, n->val.a.a2})
        if (part != nullptr)
          open.push_back(part);
  }
  return nullptr;
}

} // namespace

int check_pool(const char **what) {
  if (gPool.nodes == nullptr)
    return 1;
  start_epoch();
  none_marked = false;
  const char *fault = nullptr;
  for (node *root : {Copy_root, Query_root, Tn1, Tn2, Tn3})
    if (fault == nullptr)
      fault = check_graph(root, gPool.count);
  for (const Evalroot *cell = Eval_rootp; cell != nullptr && fault == nullptr; cell = cell->next)
    fault = check_graph(cell->root, gPool.count);
  for (const Root *r = gRootTop; r != nullptr && fault == nullptr; r = r->previous())
    fault = check_graph(r->get(), gPool.count);
  if (what != nullptr)
    *what = fault == nullptr ? "" : fault;
  if (fault == nullptr)
    garbage_collect();
  return fault == nullptr;
}

} // namespace velora
