// List built-ins that apply a function of the program: map, the folds, the filters, until and
// iterate. A function argument that must not be forced in advance (ContainVarParFun) is copied
// afresh for each application; any other is shared.
#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"

namespace velora {

namespace {

// A function argument ready for use.
class FunctionArgument {
public:
  enum Forcing { kForced, kAsItStands };

  FunctionArgument(node **stack, int i, Forcing forcing)
      : special_(ContainVarParFun(bi_arg(stack, i))) {
    if (special_ == 0 && forcing == kForced)
      full_evaluate(bi_arg(stack, i));
    function_ = bi_arg(stack, i);
  }
  // The function for one application; the caller must make it reachable before taking a node.
  node *for_one_use() { return special_ != 0 ? LCopy(function_) : function_.get(); }
  node *as_given() const { return function_.get(); }

private:
  Root function_;
  int special_;
};

// The i-th argument as a list that may still be unevaluated inside; null when it is no list.
node *outlined_list(node **stack, int i) {
  evaluate(bi_arg(stack, i));
  if (!is_list(bi_arg(stack, i)))
    full_evaluate(bi_arg(stack, i));
  return is_list(bi_arg(stack, i)) ? bi_arg(stack, i) : nullptr;
}

} // namespace

// The applications are left unevaluated.
int bi_map(node **stack, int) {
  const FunctionArgument f(stack, 1, FunctionArgument::kForced);
  if (outlined_list(stack, 2) == nullptr)
    return 0;
  const Root list(bi_arg(stack, 2));
  ListBuilder results;
  Root application;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell)) {
    application = apply_copies(f.as_given(), cell_head(cell));
    results.add_shared(application);
  }
  return results.write_over(stack[2]);
}

// --- folds -------------------------------------------------------------------------------------

namespace {

// op x accumulator, evaluated.
void fold_step(FunctionArgument &op, node *x, Root &accumulator) {
  CheckForUserEvents(800);
  const Root partial(LMakeApplyNode(op.for_one_use(), x));
  accumulator = LMakeApplyNode(partial, accumulator);
  evaluate(accumulator);
}

// A list of the same elements from the last to the first.
node *reversed(const node *list) {
  Root result(LMakeConstructor(bi_cons_table[kNil].cs));
  Root work;
  for (; is_cell(list); list = cell_tail(list)) {
    work = LMakeConstructor(bi_cons_table[kCons].cs);
    work = LMakeApplyNode(work, cell_head(list));
    result = LMakeApplyNode(work, result);
  }
  return result;
}

// Kept: both folds give `op` the element first and the accumulator second.
int fold(node **stack, bool from_the_right) {
  if (force_list(stack, 3) == nullptr)
    return 0;
  const Root list(from_the_right ? reversed(bi_arg(stack, 3)) : bi_arg(stack, 3));
  FunctionArgument op(stack, 1, FunctionArgument::kAsItStands);
  Root accumulator(bi_arg(stack, 2));
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell))
    fold_step(op, cell_head(cell), accumulator);
  return set_copy(stack[3], accumulator);
}

} // namespace

int bi_foldr(node **stack, int) {
  return fold(stack, true);
}
int bi_foldl(node **stack, int) {
  return fold(stack, false);
}

// --- filters -----------------------------------------------------------------------------------

namespace {

enum Verdict { kNoAnswer, kHolds, kFails };

Verdict verdict_of(const node *answer) {
  if (answer->type != kConstructorNode)
    return kNoAnswer;
  return is_true(answer) ? kHolds : kFails;
}

int filter(node **stack, bool stop_at_first_failure) {
  FunctionArgument test(stack, 1, FunctionArgument::kForced);
  if (force_list(stack, 2) == nullptr)
    return 0;
  const Root list(bi_arg(stack, 2));
  ListBuilder kept;
  Root answer;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell)) {
    CheckForUserEvents(800);
    answer = test.for_one_use();
    answer = LMakeApplyNode(answer, cell_head(cell));
    evaluate(answer);
    const Verdict verdict = verdict_of(answer);
    if (verdict == kNoAnswer)
      return 0;
    if (verdict == kHolds)
      kept.add_shared(cell_head(cell));
    else if (stop_at_first_failure)
      break;
  }
  return kept.write_over(stack[2]);
}

} // namespace

int bi_filter(node **stack, int) {
  return filter(stack, false);
}
int bi_takewhile(node **stack, int) {
  return filter(stack, true);
}

// --- until and iterate -------------------------------------------------------------------------

namespace {

// Evaluates `p current` on fresh copies.
Verdict holds_for(const node *p, const node *current) {
  CheckForUserEvents(800);
  const Root answer(apply_copies(p, current));
  evaluate(answer);
  return verdict_of(answer);
}

// current = f current on fresh copies, forced completely.
void advance(const node *f, Root &current) {
  current = apply_copies(f, current);
  full_evaluate(current);
}

} // namespace

int bi_until(node **stack, int) {
  const FunctionArgument p(stack, 1, FunctionArgument::kForced);
  const FunctionArgument f(stack, 2, FunctionArgument::kForced);
  full_evaluate(bi_arg(stack, 3));
  Root current(bi_arg(stack, 3));
  for (;;) {
    const Verdict verdict = holds_for(p.as_given(), current);
    if (verdict == kNoAnswer)
      return 0;
    if (verdict == kHolds)
      return set_copy(stack[3], current);
    advance(f.as_given(), current);
  }
}

int bi_iterate(node **stack, int) {
  const Root p(bi_arg(stack, 1));
  const Root f(bi_arg(stack, 2));
  Root current(bi_arg(stack, 3));
  ListBuilder values;
  for (;;) {
    const Verdict verdict = holds_for(p, current);
    if (verdict == kNoAnswer)
      return 0;
    if (verdict == kFails)
      return values.write_over(stack[3]);
    values.add_copy(current);
    advance(f, current);
  }
}

} // namespace velora
