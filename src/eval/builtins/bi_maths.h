// The arithmetic, the comparison and the equality that other families use too.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "core/builtin_ids.h"
#include "core/records.h"

namespace velora {

// Operations on two numbers by the number of their built-in.
enum ArithOp {
  kPlusOp = kBiPlus,
  kMinusOp = kBiMinus,
  kTimesOp = kBiTimes,
  kDivideOp = kBiDivide,
  kGreaterOp = kBiGreater,
  kLesserOp = kBiLesser
};
enum CompareOp {
  kLessOp = kBiLess,
  kMoreOp = kBiMore,
  kAtMostOp = kBiAtMost,
  kAtLeastOp = kBiAtLeast
};

inline bool is_number(const node *n) {
  return n->type == kInteger || n->type == kReal;
}
// The value of an integer or real in single precision.
inline float float_of(const node *number) {
  return number->type == kInteger ? static_cast<float>(number->val.i) : number->val.r;
}
// Truncates toward zero; a value beyond the integers gives the nearest one, not-a-number gives 0.
inline std::int32_t truncate_to_int(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (std::isnan(value))
    return 0;
  if (value >= static_cast<double>(Limits::max()))
    return Limits::max();
  if (value <= static_cast<double>(Limits::min()))
    return Limits::min();
  return static_cast<std::int32_t>(value);
}

// Writes `n1 op n2` over `result`, which may be one of the two: an integer when both are integers,
// else a real. Integer arithmetic wraps; an integer divisor must not be 0.
void bi_arith(int op, const node *n1, const node *n2, node *result);

// 1 when `n1 op n2` holds. Integers, characters and reals compare in single precision, strings by
// their bytes; any other pair gives 0.
int bi_compare(int op_id, const node *n1, const node *n2);
// 1 for the kinds that bi_compare compares with each other in single precision.
inline bool is_measure(const node *n) {
  return n->type == kInteger || n->type == kCharacter || n->type == kReal;
}

// Deep equality, evaluating both sides as far as needed. Keeps both sides reachable.
int bi_equal_node(node *n1, node *n2);

// The state of `rand`.
extern std::uint32_t gRandState;

} // namespace velora
