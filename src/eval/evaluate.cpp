// The reducer. A step unwinds the left spine of its expression onto the stack of spines, looks at
// the head, and lets the rule of that head write its result over the application that it covers;
// the spine above that application stays on the stack for the next step.
#include "eval/evaluate.h"

#include "core/clock.h"
#include "core/events.h"
#include "core/space.h"
#include "core/text.h"
#include "eval/clause_code.h"
#include "eval/combinators.h"
#include "eval/failed_runs.h"
#include "eval/matcher.h"
#include "eval/registry.h"
#include "eval/spine.h"
#include "platform/response.h"

namespace velora {

int Evaluates = 0;
int gNestingLimit = kDefaultNesting;
int gUserErrors = 0;
int stack_trace = 0;

namespace {

// What a step answers: the place on the spine that was rewritten, or one of these.
constexpr int kNoRule = -1;
constexpr int kRestart = -2; // rewritten at a place that the rule does not tell

void trace_call(const char *name) {
  DisplayResponse(std::string(static_cast<std::size_t>(Evaluates), '-') + name + "\n");
}

int reduce_head(node **stack, int spine_len) {
  node *const head = stack[0];
  switch (head->type) {
  case kFunctionNode:
    if (stack_trace != 0)
      trace_call(head->val.fc->name);
    return reduce_function(stack, spine_len);
  case kBuiltin:
    if (stack_trace != 0)
      trace_call(head->val.bi.fc->name);
    return built_in_redex(stack, spine_len) != 0 ? kRestart : kNoRule;
  case kLambda:
    return bi_lambda(stack, spine_len) != 0 ? kRestart : kNoRule;
  default:
    return comb_redex(stack, spine_len) != 0 ? comb_arguments(head->type) : kNoRule;
  }
}

// The part of the stack of spines that one evaluation uses: [at, top) is the spine of the step, the
// head first. It lies below everything that enclosing evaluations use.
struct Frame {
  node **at;
  node **top;
};

inline void push(Frame &frame, node *n) {
  if (frame.at == gSpines.low) [[unlikely]]
    grow_spines(&frame.at, &frame.top);
  *--frame.at = n;
}

// Builds an argument whose abstraction has all its variables, over the application that completes
// it. False when it lacks some.
bool build_template(const node *n, Frame &frame) {
  const template_code &code = template_of(n);
  const std::uint32_t count = code.nargs;
  node **const at = frame.at;
  if (static_cast<std::uint32_t>(frame.top - at) < count)
    return false;
  node *const target = at[count - 1];
  if (count <= 8) [[likely]] {
    node *bindings[8];
    for (std::uint32_t i = 0; i < count; ++i)
      bindings[i] = at[i]->val.a.a2;
    build_body(code.body, bindings, target);
  } else {
    std::vector<node *> bindings(count);
    for (std::uint32_t i = 0; i < count; ++i)
      bindings[i] = at[i]->val.a.a2;
    build_body(code.body, bindings.data(), target);
  }
  frame.at += count;
  return true;
}

// Shared code that lacks arguments becomes a term of its own.
node *own_code(const node *n, const Frame &frame) {
  node *copy = take_node();
  LCopy_whole(copy, n, 0);
  (*frame.at)->val.a.a1 = copy;
  return copy;
}

// Unwinds from `n` to the head. False when the head's application is bare shared code. A building
// may have written a guard over the root; then the unwinding ends early.
bool unwind(const node *root, node *n, Frame &frame) {
  node **at = frame.at;
  while (is_apply(n)) {
    if ((n->flags & kTemplateNode) != 0) [[unlikely]] {
      frame.at = at;
      if (build_template(n, frame)) {
        ++gReductions;
        if (root->quote != 0)
          return true;
        at = frame.at;
        n = at[-1];
        continue;
      }
      if (at == frame.top)
        return false;
      n = own_code(n, frame);
    }
    if (at == gSpines.low) [[unlikely]] {
      grow_spines(&at, &frame.top);
    }
    *--at = n;
    n = n->val.a.a1;
  }
  frame.at = at;
  push(frame, n);
  return true;
}

// Reduces `root` to head normal form, step by step.
int reduce(node *root, node **mark) {
  Frame frame{mark, mark};
  node *n = root;
  for (;;) {
    CheckForUserEvents(800);
    // A result that was copied over the root may be guarded: that ends the evaluation once.
    if (root->quote != 0) {
      root->quote = 0;
      note_change();
      return 1;
    }
    if (!unwind(root, n, frame))
      return 0;
    if (root->quote != 0)
      continue;
    node **const stack = frame.at;
    const int spine_len = static_cast<int>(frame.top - stack) - 1;
    const node *const head = stack[0];
    // The codes of the kinds stand in this order: what is reduced by clauses or a table, the
    // values, the combinators.
    if (head->type == kConstructorNode)
      return spine_len == head->val.cs->arity;
    if (head->type > kFunctionNode && head->type < kCombI)
      return spine_len == 0;
    if (head->type == kVariable)
      return spine_len == 0;
    gSpines.next = stack; // nested evaluations go on below
    const int place = reduce_head(stack, spine_len);
    if (place == kNoRule)
      return 0;
    ++gReductions;
    if (place == kRestart) {
      // A built-in has written somewhere on the spine, and it may have made long texts.
      if (gTextBytes > kTextBytesBetweenCollections) [[unlikely]]
        garbage_collect();
      frame.at = frame.top;
      n = root;
    } else {
      n = stack[place];
      frame.at = stack + place + 1;
    }
  }
}

// One evaluation: its place on the stack of spines and the count of nesting.
int run_evaluation(node *root) {
  if (++Evaluates >= gNestingLimit) [[unlikely]] {
    Evaluates = 0;
    error_exit(kTooNested);
  }
  if (Evaluates > gDeepest) [[unlikely]]
    gDeepest = Evaluates;
  node **const mark = gSpines.next;
  const int chunks = gSpines.chunks;
  const int result = reduce(root, mark);
  if (gSpines.chunks != chunks) [[unlikely]]
    release_spines(mark, chunks);
  gSpines.next = mark;
  --Evaluates;
  return result;
}

} // namespace

void reset_reducer() {
  Evaluates = 0;
  reset_spines();
}

namespace {

// An evaluation of a node that has failed before.
int evaluate_again(node *root) {
  if (fails_again(root, Evaluates + 1))
    return 0;
  WatchedRun run(Evaluates + 1);
  const int result = run_evaluation(root);
  run.settle(root, result);
  return result;
}

} // namespace

int evaluate(node *root) {
  check_stack();
  const bool may_remember = (root->flags & kStaticNode) == 0;
  if (root->aux != 0 && may_remember) [[unlikely]]
    return evaluate_again(root);
  const int result = run_evaluation(root);
  if (result == 0 && may_remember)
    root->aux = kFailedOnce;
  return result;
}

} // namespace velora
