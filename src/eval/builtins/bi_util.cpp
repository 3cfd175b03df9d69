// Evaluation under the program's own control: quoting, forcing, sequencing, application, leaving a
// query early. Called by the dispatcher; touches the query space only, and the console for `print`.
#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"

namespace velora {

namespace {

// Forces the arguments from..to completely, in order.
void force_all(node **stack, int from, int to) {
  for (int i = from; i <= to; ++i)
    full_evaluate(bi_arg(stack, i));
}

// An application of a `depth`-fold chain: the copies of arguments `first`.. in order.
node *apply_arguments(node *head, node **stack, int first, int count, int rotation) {
  Root term(head);
  for (int i = 0; i < count; ++i) {
    Root arg(LCopy(bi_arg(stack, first + (i + rotation) % count)));
    term = LMakeApplyNode(term, arg);
  }
  return term;
}

} // namespace

// quote x = a copy of x in which every node is guarded; the engine takes the guard off the top.
int bi_quote(node **stack, int) {
  Root copy(take_node());
  copy->type = kInteger;
  LCopy_whole(copy, bi_arg(stack, 1), 1);
  return set_copy(stack[1], copy);
}

// eval x = x in head normal form, copied without guards, and so reduced once more.
int bi_eval(node **stack, int) {
  evaluate(bi_arg(stack, 1));
  Root copy(take_node());
  copy->type = kInteger;
  LCopy_whole(copy, bi_arg(stack, 1), 0);
  return set_copy(stack[1], copy);
}

// argeval (f a b ...) = f a b ... with b, a, ... in head normal form: from the outside in.
int bi_argeval(node **stack, int) {
  node *term = bi_arg(stack, 1);
  for (node *n = term; is_apply(n); n = own_function_part(n))
    evaluate(n->val.a.a2);
  return set_copy(stack[1], term);
}

// f @ x = f x with f in head normal form and x untouched.
int bi_apply(node **stack, int) {
  evaluate(bi_arg(stack, 1));
  return set_apply(stack[2], bi_arg(stack, 1), bi_arg(stack, 2));
}

// a @! b = a, after a and then b are forced completely.
int bi_seq_left(node **stack, int) {
  force_all(stack, 1, 2);
  return set_copy(stack[2], bi_arg(stack, 1));
}

// a !@ b = a, after b and then a are forced completely.
int bi_seq_right(node **stack, int) {
  full_evaluate(bi_arg(stack, 2));
  full_evaluate(bi_arg(stack, 1));
  return set_copy(stack[2], bi_arg(stack, 1));
}

// prog k e0 ... em = ek, after every e is forced completely, in order.
int bi_prog(node **stack, int spine_len) {
  const node *which = force_arg(stack, 1, kInteger);
  if (which == nullptr)
    return 0;
  const int k = which->val.i;
  if (k < 0 || k > spine_len - 2)
    return 0;
  force_all(stack, 2, spine_len);
  return set_copy(stack[spine_len], bi_arg(stack, 2 + k));
}

int bi_prog1(node **stack, int spine_len) {
  force_all(stack, 1, spine_len);
  return set_copy(stack[spine_len], bi_arg(stack, 1));
}

int bi_progN(node **stack, int spine_len) {
  force_all(stack, 1, spine_len);
  return set_copy(stack[spine_len], bi_arg(stack, spine_len));
}

// compose a1 a2 ... an = a1 (a2 (... (a(n-1) an)))
int bi_compose(node **stack, int spine_len) {
  Root term(LCopy(bi_arg(stack, spine_len)));
  for (int i = spine_len - 1; i >= 1; --i) {
    CheckForUserEvents(800);
    Root fun(LCopy(bi_arg(stack, i)));
    term = LMakeApplyNode(fun, term);
  }
  return set_copy(stack[spine_len], term);
}

// permuteN n f a0 a1 ... = f an a(n+1) ... a0 a1 ...: the arguments rotated to the left n times.
int bi_permuteN(node **stack, int spine_len) {
  const node *times = force_arg(stack, 1, kInteger);
  if (times == nullptr || times->val.i < 0)
    return 0;
  const int count = spine_len - 2;
  const int rotation = times->val.i % count;
  Root fun(LCopy(bi_arg(stack, 2)));
  Root term(apply_arguments(fun, stack, 3, count, rotation));
  return set_copy(stack[spine_len], term);
}

// catch a b = b, whatever becomes of a.
int bi_catch(node **stack, int) {
  evaluate(bi_arg(stack, 1));
  return set_copy(stack[2], bi_arg(stack, 2));
}

// throw "exit" v ends the query with v as its answer; other tags are refused.
int bi_throw(node **stack, int) {
  const node *tag = force_arg(stack, 1, kString);
  if (tag == nullptr || text_of(tag) != "exit")
    return 0;
  if (Query_root == nullptr || (Query_root->flags & kStaticNode) != 0)
    Query_root = bi_arg(stack, 2);
  else
    overwrite_node(Query_root, bi_arg(stack, 2));
  error_exit("throw\n");
}

int bi_print(node **stack, int) {
  print(bi_arg(stack, 1));
  return set_bool(stack[1], true);
}

} // namespace velora
