// The forcing of whole terms, as built-ins want their arguments.
#include "core/events.h"
#include "core/space.h"
#include "eval/evaluate.h"
#include "eval/failed_runs.h"

namespace velora {

namespace {

// Evaluates a term, then the arguments of its function part from left to right, then goes on with
// its last argument as with the term itself, so that a list is walked without nesting.
int force_along(node *root) {
  int result = evaluate(root);
  while (is_apply(root)) {
    CheckForUserEvents(0);
    eval_args(own_function_part(root));
    root = root->val.a.a2;
    if (root == nullptr)
      break;
    result = evaluate(root);
  }
  return result;
}

} // namespace

// A term that has failed before stands, with all its parts, in every term around it; so what its
// forcing has come to is remembered like a failed evaluation.
int full_evaluate(node *root) {
  if (root->aux == 0 || (root->flags & kStaticNode) != 0) [[likely]]
    return force_along(root);
  int result = 0;
  if (forced_before(root, Evaluates, result))
    return result;
  WatchedRun run(Evaluates);
  result = force_along(root);
  run.settle_forcing(root, result);
  return result;
}

void eval_args(node *root) {
  check_stack();
  if (root == nullptr || !is_apply(root))
    return;
  eval_args(own_function_part(root));
  if (root->val.a.a2 != nullptr)
    full_evaluate(root->val.a.a2);
}

} // namespace velora
