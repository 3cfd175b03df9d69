// Arithmetic and comparison of two numbers, and the mathematical built-ins of one number. A real is
// a single-precision float; work is done in double precision and stored in single, which for one
// operation gives the same value as any wider format.
#include "eval/builtins/bi_maths.h"

#include <cmath>
#include <ctime>

#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"

namespace velora {

std::uint32_t gRandState = 1;

namespace {

std::int32_t wrapped(std::uint32_t bits) {
  return static_cast<std::int32_t>(bits);
}

// The least integer divided by -1 wraps to itself.
std::int32_t divided(std::int32_t a, std::int32_t b) {
  return b == -1 ? wrapped(0U - static_cast<std::uint32_t>(a)) : a / b;
}

std::int32_t integer_arith(int op, std::int32_t a, std::int32_t b) {
  const auto ua = static_cast<std::uint32_t>(a);
  const auto ub = static_cast<std::uint32_t>(b);
  switch (op) {
  case kPlusOp:
    return wrapped(ua + ub);
  case kMinusOp:
    return wrapped(ua - ub);
  case kTimesOp:
    return wrapped(ua * ub);
  case kDivideOp:
    return divided(a, b);
  case kGreaterOp:
    return a > b ? a : b;
  default:
    return a < b ? a : b;
  }
}

double real_arith(int op, double a, double b) {
  switch (op) {
  case kPlusOp:
    return a + b;
  case kMinusOp:
    return a - b;
  case kTimesOp:
    return a * b;
  case kDivideOp:
    return a / b;
  case kGreaterOp:
    return a > b ? a : b;
  default:
    return a < b ? a : b;
  }
}

// A result beyond single precision becomes an infinity of its sign.
float to_single(double value) {
  return static_cast<float>(value);
}

float measure_of(const node *n) {
  return n->type == kCharacter ? static_cast<float>(static_cast<signed char>(n->val.c))
                               : float_of(n);
}

template <typename Value> int compare_values(int op_id, const Value &a, const Value &b) {
  switch (op_id) {
  case kLessOp:
    return a < b;
  case kMoreOp:
    return a > b;
  case kAtMostOp:
    return a <= b;
  case kAtLeastOp:
    return a >= b;
  default:
    return 0;
  }
}

} // namespace

void bi_arith(int op, const node *n1, const node *n2, node *result) {
  if (n1->type == kInteger && n2->type == kInteger)
    set_int(result, integer_arith(op, n1->val.i, n2->val.i));
  else
    set_real(result, to_single(real_arith(op, float_of(n1), float_of(n2))));
}

int bi_compare(int op_id, const node *n1, const node *n2) {
  if (is_measure(n1) && is_measure(n2))
    return compare_values(op_id, measure_of(n1), measure_of(n2));
  if (n1->type == kString && n2->type == kString)
    return compare_values(op_id, text_of(n1), text_of(n2));
  return 0;
}

// --- one number --------------------------------------------------------------------------------

namespace {

// An integer argument gives an integer, truncated toward zero; a real one gives a real.
int keep_kind(node **stack, double (*function)(double)) {
  const node *x = force_number(stack, 1);
  if (x == nullptr)
    return 0;
  if (x->type == kInteger)
    return set_int(stack[1], truncate_to_int(function(x->val.i)));
  return set_real(stack[1], to_single(function(x->val.r)));
}

constexpr double kRadiansPerDegree = 0.017453292519943295;
// Kept: single precision, so that angles come out slightly inexact.
constexpr float kDegreesPerRadian = 57.29578F;

int of_degrees(node **stack, double (*function)(double)) {
  const node *x = force_number(stack, 1);
  if (x == nullptr)
    return 0;
  const double angle = static_cast<double>(float_of(x)) * kRadiansPerDegree;
  return set_real(stack[1], to_single(function(angle)));
}

int to_degrees(node *target, double radians) {
  return set_real(target, to_single(radians * static_cast<double>(kDegreesPerRadian)));
}

} // namespace

int bi_sqrt(node **stack, int) {
  return keep_kind(stack, std::sqrt);
}
int bi_log10(node **stack, int) {
  return keep_kind(stack, std::log10);
}
int bi_exp(node **stack, int) {
  return keep_kind(stack, std::exp);
}
int bi_log(node **stack, int) {
  return keep_kind(stack, std::log);
}
int bi_sin(node **stack, int) {
  return of_degrees(stack, std::sin);
}
int bi_cos(node **stack, int) {
  return of_degrees(stack, std::cos);
}
int bi_tan(node **stack, int) {
  return of_degrees(stack, std::tan);
}

// Kept: only the whole part is checked, so 1.5 passes and gives not-a-number.
int bi_asin(node **stack, int) {
  const node *x = force_number(stack, 1);
  if (x == nullptr || std::fabs(std::trunc(float_of(x))) > 1)
    return 0;
  return to_degrees(stack[1], std::asin(static_cast<double>(float_of(x))));
}

int bi_acos(node **stack, int) {
  const node *x = force_number(stack, 1);
  if (x == nullptr || std::fabs(float_of(x)) > 1)
    return 0;
  return to_degrees(stack[1], std::acos(static_cast<double>(float_of(x))));
}

int bi_atan(node **stack, int) {
  const node *x = force_number(stack, 1);
  if (x == nullptr)
    return 0;
  return to_degrees(stack[1], std::atan(static_cast<double>(float_of(x))));
}

// --- random numbers ----------------------------------------------------------------------------

int bi_rand(node **stack, int) {
  gRandState = gRandState * 22695477U + 1U;
  return set_int(stack[0], static_cast<std::int32_t>((gRandState >> 16U) & 0x7FFFU));
}

// Kept: the seed is a product with the second, so it is 0 throughout the first of each minute.
int bi_srand(node **stack, int) {
  const std::time_t now = std::time(nullptr);
  const std::tm *local = std::localtime(&now);
  if (local != nullptr)
    gRandState = static_cast<std::uint32_t>(local->tm_year) *
                 static_cast<std::uint32_t>(local->tm_mday) *
                 static_cast<std::uint32_t>(local->tm_sec);
  return set_bool(stack[0], true);
}

// --- powers, parity, truth ---------------------------------------------------------------------

namespace {

// 1 * x * x ... with n factors in single precision; ends early once the product stays or swings
// between two values.
float repeated_product(float x, std::int32_t n) {
  float before = 0;
  float product = 1;
  for (std::int32_t i = 0; i < n; ++i) {
    CheckForUserEvents(800);
    const float next = product * x;
    if (next == product || std::isnan(next))
      return next;
    if (i > 0 && next == before)
      return (n - i) % 2 != 0 ? next : product;
    before = product;
    product = next;
  }
  return product;
}

} // namespace

int bi_power(node **stack, int) {
  const node *n = force_arg(stack, 2, kInteger);
  if (n == nullptr)
    return 0;
  const std::int32_t count = n->val.i;
  const node *x = force_number(stack, 1);
  if (x == nullptr)
    return 0;
  const float product = repeated_product(float_of(x), count);
  if (x->type == kInteger)
    return set_int(stack[2], truncate_to_int(product));
  return set_real(stack[2], product);
}

int bi_odd(node **stack, int) {
  const node *n = force_arg(stack, 1, kInteger);
  return n == nullptr ? 0 : set_bool(stack[1], n->val.i % 2 != 0);
}

int bi_even(node **stack, int) {
  const node *n = force_arg(stack, 1, kInteger);
  return n == nullptr ? 0 : set_bool(stack[1], n->val.i % 2 == 0);
}

int bi_not(node **stack, int) {
  evaluate(bi_arg(stack, 1));
  const node *truth = bi_arg(stack, 1);
  if (is_true(truth))
    return set_bool(stack[1], false);
  return is_cons_node(truth, kFalse) ? set_bool(stack[1], true) : 0;
}

} // namespace velora
