// Writing out combinators in a private copy of a term. Called by the built-ins that look at terms
// without reducing them; takes nodes of the query space, all of which hang off one Root.
#include "eval/as_written.h"

#include <unordered_set>
#include <vector>

#include "core/events.h"
#include "core/space.h"

namespace velora {

namespace {

// Terms from clause bodies need a few steps a node; a term that applies itself to itself would go
// on for ever, and is left as it is from here on.
constexpr int kMostSteps = 1000000;

// Fills `spine` with the applications from `top` down to the head, which is answered.
const node *unwind(node *top, std::vector<node *> &spine) {
  spine.clear();
  node *n = top;
  for (; n != nullptr && is_apply(n); n = n->val.a.a1)
    spine.push_back(n);
  return n;
}

int arguments_needed(const node *head) {
  if (head == nullptr)
    return 0;
  switch (head->type) {
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

// One combinator step at `head`, whose spine holds the applications from the outside in; answers
// false when the head is no combinator, lacks arguments, or the node to write over is shared code.
bool combinator_step(const node *head, const std::vector<node *> &spine) {
  const int needed = arguments_needed(head);
  const int length = static_cast<int>(spine.size());
  if (needed == 0 || length < needed)
    return false;
  node *target = spine[static_cast<std::size_t>(length - needed)];
  if ((target->flags & kStaticNode) != 0)
    return false;
  reserve_nodes(2);
  const auto arg = [&](int i) { return spine[static_cast<std::size_t>(length - i)]->val.a.a2; };
  switch (head->type) {
  case kCombI: // I x = x
  case kCombK: // K x y = x
    overwrite_node(target, arg(1));
    return true;
  case kCombS: { // S f g z = (f z) (g z)
    node *left = LMakeApplyNode(arg(1), arg(3));
    node *right = LMakeApplyNode(arg(2), arg(3));
    target->val.a = {left, right};
    return true;
  }
  case kCombB: // B f g z = f (g z)
    target->val.a = {arg(1), LMakeApplyNode(arg(2), arg(3))};
    return true;
  default: // C f g z = (f z) g
    target->val.a = {LMakeApplyNode(arg(1), arg(3)), arg(2)};
    return true;
  }
}

// Writes out every combinator below `root`, whose nodes may all be written; answers whether there
// was one.
bool write_out(node *root) {
  int steps = 0;
  std::unordered_set<node *> seen;
  std::vector<node *> pending{root};
  std::vector<node *> spine;
  while (!pending.empty()) {
    CheckForUserEvents(80);
    node *top = pending.back();
    pending.pop_back();
    if (top == nullptr || !is_apply(top) || !seen.insert(top).second)
      continue;
    while (steps < kMostSteps && combinator_step(unwind(top, spine), spine))
      ++steps;
    unwind(top, spine);
    for (const node *n : spine)
      pending.push_back(n->val.a.a2);
  }
  return steps != 0;
}

node *copy_whole(const node *term, std::uint8_t quote) {
  Root copy(LMakeInteger(0));
  LCopy_whole(copy, term, quote);
  return copy;
}

} // namespace

void write_out_head(node *term) {
  std::vector<node *> spine;
  int steps = 0;
  while (term->quote == 0 && steps < kMostSteps && combinator_step(unwind(term, spine), spine)) {
    CheckForUserEvents(80);
    ++steps;
  }
}

node *copy_as_written(const node *term, std::uint8_t quote) {
  Root copy(copy_whole(term, 0));
  const bool changed = write_out(copy);
  // Writing out S makes its argument shared, and a guard serves one reader only.
  return changed || quote != 0 ? copy_whole(copy, quote) : copy.get();
}

} // namespace velora
