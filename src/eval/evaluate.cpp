// The reducer. A step unwinds the left spine of its expression onto the stack of spines, looks at
// the head, and lets the rule of that head write its result over the application that it covers;
// the spine above that application stays on the stack for the next step.
#include "eval/evaluate.h"

#include "core/clock.h"
#include "core/events.h"
#include "core/space.h"
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
constexpr int kValue = -3;   // the head is a value: nothing is to be rewritten

void trace_call(const char *name) {
  DisplayResponse(std::string(static_cast<std::size_t>(Evaluates), '-') + name + "\n");
}

inline void push(Frame &frame, node *n) {
  if (frame.at == gSpines.low) [[unlikely]]
    frame = grow_spines(frame);
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
inline bool unwind(const node *root, node *n, Frame &frame) {
  while (is_apply(n)) {
    if ((n->flags & kTemplateNode) != 0) [[unlikely]] {
      if (build_template(n, frame)) {
        ++gReductions;
        if (root->quote != 0)
          return true;
        n = frame.at[-1];
        continue;
      }
      if (frame.at == frame.top)
        return false;
      n = own_code(n, frame);
    }
    push(frame, n);
    n = n->val.a.a1;
  }
  push(frame, n);
  return true;
}

// A head that is neither a function nor a built-in: a value, which ends the evaluation (`result`
// then says whether it has just the arguments it takes), or a combinator or lambda.
[[gnu::noinline]] int reduce_other(node **stack, int spine_len, int &result) {
  const node *const head = stack[0];
  // The order of the kinds decides: below kCombI stand the terms that are values as they are
  // (functions and built-ins have been dealt with, and lambda, which stands among the leaves, has a
  // rule); from kCombI on there are combinators only.
  if (head->type == kConstructorNode) {
    result = spine_len == head->val.cs->arity;
    return kValue;
  }
  if (head->type < kCombI && head->type != kLambda) {
    result = spine_len == 0;
    return kValue;
  }
  result = 0;
  if (head->type == kLambda)
    return bi_lambda(stack, spine_len) != 0 ? kRestart : kNoRule;
  return comb_redex(stack, spine_len) != 0 ? comb_arguments(head->type) : kNoRule;
}

// Reduces `root` to head normal form, step by step. It is part of each evaluation and made one
// function with it: entering and leaving is a good part of short evaluations.
[[gnu::always_inline]] inline int reduce(node *root, node **mark) {
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
    // A template that unwinding built over the root may have brought a guard: back to its test.
    if (root->quote != 0)
      continue;
    // The whole spine stands on the stack now, and nested evaluations go on below it.
    node **const stack = frame.at;
    const int spine_len = static_cast<int>(frame.top - stack) - 1;
    const node *const head = stack[0];
    gSpines.next = stack;
    int place = kNoRule;
    if (head->type == kFunctionNode) {
      if (stack_trace != 0) [[unlikely]]
        trace_call(head->val.fc->name);
      place = reduce_function(stack, spine_len);
    } else if (head->type == kBuiltin) {
      if (stack_trace != 0) [[unlikely]]
        trace_call(head->val.bi.fc->name);
      place = built_in_redex(stack, spine_len) != 0 ? kRestart : kNoRule;
    } else {
      int result = 0;
      place = reduce_other(stack, spine_len, result);
      if (place == kValue)
        return result;
    }
    // No rule fits the head with these arguments: the term stays as it stands.
    if (place == kNoRule)
      return 0;
    ++gReductions;
    // The place is known: the spine above it is as it was, so only what was written is unwound.
    if (place != kRestart) {
      n = stack[place];
      frame.at = stack + place + 1;
      continue;
    }
    // A built-in has written somewhere on the spine; most often a plain value over the root, which
    // needs no further step. From kInteger up to kCombI stand literals and names, the kinds that
    // are values without arguments and take none; variables, constructors and all that has a rule
    // lie outside.
    if (root->type >= kInteger && root->type < kCombI && root->quote == 0)
      return 1;
    frame.at = frame.top;
    n = root;
  }
}

// One evaluation: its place on the stack of spines and the count of nesting.
[[gnu::always_inline]] inline int run_evaluation(node *root) {
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
[[gnu::noinline]] int evaluate_again(node *root) {
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
