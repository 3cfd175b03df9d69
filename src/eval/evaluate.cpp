// The reducer. A step unwinds the left spine of its expression onto the stack of spines, looks at
// the head, and lets the rule of that head write its result over the application that it covers;
// the spine above that application stays on the stack for the next step.
#include "eval/evaluate.h"

#include "core/events.h"
#include "core/space.h"
#include "core/text.h"
#include "eval/clause_code.h"
#include "eval/combinators.h"
#include "eval/matcher.h"
#include "eval/registry.h"
#include "eval/spine.h"
#include "platform/response.h"

namespace velora {

int Evaluates = 0;
int gNestingLimit = kDefaultNesting;
int stack_trace = 0;
std::uint64_t gReductions = 0;

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

// One evaluation: its part of the stack of spines and the count of nesting.
class Evaluation {
public:
  explicit Evaluation(node *root)
      : root_(root), mark_(gSpines.next), at_(mark_), top_(mark_), chunks_(gSpines.chunks) {
    if (++Evaluates >= gNestingLimit) {
      Evaluates = 0;
      error_exit("Too many nested calls within the Query\n");
    }
  }

  int run() {
    const int result = reduce();
    if (gSpines.chunks != chunks_) [[unlikely]]
      release_spines(mark_, chunks_);
    gSpines.next = mark_;
    --Evaluates;
    return result;
  }

private:
  void push(node *n) {
    if (at_ == gSpines.low) [[unlikely]]
      grow_spines(&at_, &top_);
    *--at_ = n;
  }

  // Builds an argument whose abstraction has all its variables. False when it lacks some.
  bool build_template(const node *n) {
    const template_code &code = template_of(n);
    const std::uint32_t count = code.nargs;
    if (static_cast<std::uint32_t>(top_ - at_) < count)
      return false;
    node *few[8];
    std::vector<node *> many;
    node **bindings = few;
    if (count > 8) {
      many.resize(count);
      bindings = many.data();
    }
    for (std::uint32_t i = 0; i < count; ++i)
      bindings[i] = at_[i]->val.a.a2;
    node *const target = at_[count - 1];
    build_body(code.body, bindings, target);
    at_ += count;
    return true;
  }

  // Unwinds from `n` to the head. False when the head's application is bare shared code.
  bool unwind(node *n) {
    while (is_apply(n)) {
      if ((n->flags & kTemplateNode) != 0) [[unlikely]] {
        if (build_template(n)) {
          ++gReductions;
          if (root_->quote != 0)
            return true;
          n = at_[-1];
          continue;
        }
        if (at_ == top_)
          return false;
        n = own_code(n);
      }
      push(n);
      n = n->val.a.a1;
    }
    push(n);
    return true;
  }

  // Shared code that lacks arguments becomes a term of its own.
  node *own_code(const node *n) {
    node *copy = take_node();
    LCopy_whole(copy, n, 0);
    (*at_)->val.a.a1 = copy;
    return copy;
  }

  int reduce() {
    node *n = root_;
    for (;;) {
      CheckForUserEvents(800);
      if (gTextBytes > kTextBytesBetweenCollections) [[unlikely]]
        garbage_collect();
      if (root_->quote != 0) {
        root_->quote = 0;
        return 1;
      }
      if (!unwind(n))
        return 0;
      if (root_->quote != 0)
        continue;
      const int spine_len = static_cast<int>(top_ - at_) - 1;
      const node *const head = at_[0];
      if (head->type == kConstructorNode)
        return spine_len == head->val.cs->arity;
      if (head->type > kFunctionNode && head->type < kCombI)
        return spine_len == 0;
      if (head->type == kVariable)
        return spine_len == 0;
      gSpines.next = at_;
      const int place = reduce_head(at_, spine_len);
      if (place == kNoRule)
        return 0;
      ++gReductions;
      if (place == kRestart) {
        at_ = top_;
        n = root_;
      } else {
        n = at_[place];
        at_ += place + 1;
      }
    }
  }

  node *root_;
  node **mark_;
  node **at_;
  node **top_;
  int chunks_;
};

} // namespace

void reset_reducer() {
  Evaluates = 0;
  reset_spines();
}

int evaluate(node *root) {
  check_stack();
  return Evaluation(root).run();
}

} // namespace velora
