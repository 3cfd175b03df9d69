// The built-ins that the dispatcher carries out itself: arithmetic, comparison and equality of two
// values, character codes, the console and tracing. The first functions here are the hot path of
// every program, so two integers are dealt with before anything else is looked at.
#include <functional>

#include "core/clock.h"
#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/bi_maths.h"
#include "eval/builtins/families.h"
#include "eval/evaluate.h"
#include "platform/response.h"

namespace velora {

// --- arithmetic --------------------------------------------------------------------------------

namespace {

bool both_integers(const node *n1, const node *n2) {
  return n1->type == kInteger && n2->type == kInteger;
}

// A second operand all of whose bits are zero; the real -0.0 is not one.
bool is_zero(const node *n) {
  return n->val.i == 0;
}

// Forces the first operand, then the second; the first may have changed by then.
int arith(int op, node **stack) {
  if (force_number(stack, 1) == nullptr)
    return 0;
  const node *n2 = force_number(stack, 2);
  const node *n1 = bi_arg(stack, 1);
  if (n2 == nullptr || !is_number(n1) || (op == kDivideOp && is_zero(n2)))
    return 0;
  bi_arith(op, n1, n2, stack[2]);
  return 1;
}

// The same for sums: two integers, given or found by forcing, wrap around without a look at `op`.
template <typename Sum> int sum(int op, node **stack, Sum wrapped) {
  if (!is_number(bi_arg(stack, 1)) && force_number(stack, 1) == nullptr)
    return 0;
  if (!is_number(bi_arg(stack, 2)) && force_number(stack, 2) == nullptr)
    return 0;
  const node *n1 = bi_arg(stack, 1);
  const node *n2 = bi_arg(stack, 2);
  if (!is_number(n1))
    return 0;
  if (!both_integers(n1, n2)) {
    bi_arith(op, n1, n2, stack[2]);
    return 1;
  }
  return set_int(stack[2],
                 static_cast<std::int32_t>(wrapped(static_cast<std::uint32_t>(n1->val.i),
                                                   static_cast<std::uint32_t>(n2->val.i))));
}

} // namespace

int bi_plus(node **stack, int) {
  return sum(kPlusOp, stack, std::plus<std::uint32_t>());
}

int bi_minus(node **stack, int) {
  return sum(kMinusOp, stack, std::minus<std::uint32_t>());
}

int bi_times(node **stack, int) {
  return arith(kTimesOp, stack);
}
int bi_divide(node **stack, int) {
  return arith(kDivideOp, stack);
}
int bi_greater(node **stack, int) {
  return arith(kGreaterOp, stack);
}
int bi_lesser(node **stack, int) {
  return arith(kLesserOp, stack);
}

// The remainder has the sign of the dividend; by -1 it is 0 for every dividend.
int bi_remainder(node **stack, int) {
  if (force_arg(stack, 1, kInteger) == nullptr)
    return 0;
  const node *n2 = force_arg(stack, 2, kInteger);
  const node *n1 = bi_arg(stack, 1);
  if (n2 == nullptr || n1->type != kInteger || n2->val.i == 0)
    return 0;
  return set_int(stack[2], n2->val.i == -1 ? 0 : n1->val.i % n2->val.i);
}

// --- comparison --------------------------------------------------------------------------------

namespace {

bool is_comparable(const node *n) {
  return is_measure(n) || n->type == kString;
}

// Both sides are always evaluated, which takes the guard off a guarded number.
node *evaluated(node **stack, int i) {
  node *n = bi_arg(stack, i);
  if (n->quote == 0 && is_comparable(n))
    return n;
  evaluate(n);
  return bi_arg(stack, i);
}

// Kept: a comparison of numbers writes its truth value but reports that nothing was reduced, so
// the engine does not look at the rewritten node again; one of strings reports a reduction.
template <typename Holds> int comparison(int op_id, node **stack, Holds holds) {
  evaluated(stack, 1);
  const node *n2 = evaluated(stack, 2);
  const node *n1 = bi_arg(stack, 1);
  note_change();
  if (both_integers(n1, n2)) {
    set_bool(stack[2], holds(static_cast<float>(n1->val.i), static_cast<float>(n2->val.i)));
    return 0;
  }
  if (is_measure(n1) && is_measure(n2)) {
    set_bool(stack[2], bi_compare(op_id, n1, n2) != 0);
    return 0;
  }
  if (n1->type == kString && n2->type == kString)
    return set_bool(stack[2], bi_compare(op_id, n1, n2) != 0);
  return 0;
}

// 1 or 0 whether the arguments are equal. Applications are evaluated here and again by the
// comparison, which matters to a guarded term.
int equality(node **stack) {
  const node *n1 = bi_arg(stack, 1);
  const node *n2 = bi_arg(stack, 2);
  if (both_integers(n1, n2))
    return n1->val.i == n2->val.i;
  if (is_apply(n1))
    evaluate(bi_arg(stack, 1));
  if (is_apply(bi_arg(stack, 2)))
    evaluate(bi_arg(stack, 2));
  return bi_equal_node(bi_arg(stack, 1), bi_arg(stack, 2));
}

} // namespace

int bi_less(node **stack, int) {
  return comparison(kLessOp, stack, std::less<float>());
}
int bi_more(node **stack, int) {
  return comparison(kMoreOp, stack, std::greater<float>());
}
int bi_at_most(node **stack, int) {
  return comparison(kAtMostOp, stack, std::less_equal<float>());
}
int bi_at_least(node **stack, int) {
  return comparison(kAtLeastOp, stack, std::greater_equal<float>());
}
int bi_equals(node **stack, int) {
  return set_bool(stack[2], equality(stack) != 0);
}
int bi_unequal(node **stack, int) {
  return set_bool(stack[2], equality(stack) == 0);
}

// Kept: only an application is evaluated, so the bare name of a function is not "nil".
int bi_null(node **stack, int) {
  if (is_apply(bi_arg(stack, 1)))
    evaluate(bi_arg(stack, 1));
  return set_bool(stack[1], is_nil(bi_arg(stack, 1)));
}

// --- characters, the console, tracing ----------------------------------------------------------

// The code of a character counts as a signed byte.
int bi_encode(node **stack, int) {
  const node *c = force_arg(stack, 1, kCharacter);
  return c == nullptr ? 0 : set_int(stack[1], static_cast<signed char>(c->val.c));
}

int bi_decode(node **stack, int) {
  const node *n = force_arg(stack, 1, kInteger);
  if (n == nullptr)
    return 0;
  return set_char(stack[1], static_cast<char>(static_cast<unsigned char>(n->val.i & 0xFF)));
}

// Reports and leaves the expression as it is.
int bi_error(node **stack, int) {
  const node *text = force_arg(stack, 1, kString);
  if (text != nullptr) {
    ++gUserErrors;
    orvek_errorf("User error: %s\n", std::string(text_of(text)).c_str());
  }
  return 0;
}

int bi_putchar(node **stack, int) {
  const node *c = force_arg(stack, 1, kCharacter);
  if (c == nullptr)
    return 0;
  DisplayResponse(std::string_view(&c->val.c, 1));
  return set_bool(stack[1], true);
}

// At the end of the input nothing can be read and the expression stays as it is. An interrupt that
// came while the character was awaited ends the query at once.
int bi_getchar(node **stack, int) {
  const int c = gConsole->read_char();
  if (c < 0) {
    poll_user_events();
    return 0;
  }
  return set_char(stack[0], static_cast<char>(static_cast<unsigned char>(c)));
}

// The argument must stand there as a constructor; it is not evaluated.
int bi_trace(node **stack, int) {
  const node *choice = bi_arg(stack, 1);
  if (choice->type != kConstructorNode)
    return 0;
  stack_trace = is_true(choice) ? 1 : 0;
  return set_copy(stack[1], choice);
}

// --- held expressions --------------------------------------------------------------------------

// Held expressions have their meaning inside clause bodies; anywhere else they stay as written.
int bi_hold(node **, int) {
  return 0;
}
int bi_holdn(node **, int) {
  return 0;
}

} // namespace velora
