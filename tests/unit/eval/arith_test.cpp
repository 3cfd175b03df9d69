// Arithmetic and comparison against plain models, over the values where they could go wrong.
#include "eval/builtins/bi_maths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace velora {
namespace {

node integer(std::int32_t i) {
  node n{};
  n.type = kInteger;
  n.val.i = i;
  return n;
}

node real(float r) {
  node n{};
  n.type = kReal;
  n.val.r = r;
  return n;
}

node character(char c) {
  node n{};
  n.type = kCharacter;
  n.val.c = c;
  return n;
}

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

// The values at the ends and around zero, and some from everywhere.
std::vector<std::int32_t> integers() {
  std::vector<std::int32_t> values = {kLeast, kLeast + 1, -65536, -2, -1,       0,
                                      1,      2,          3,      7,  16777217, kMost};
  std::mt19937 random(7);
  for (int i = 0; i < 40; ++i)
    values.push_back(static_cast<std::int32_t>(random()));
  return values;
}

std::int64_t exact(int op, std::int64_t a, std::int64_t b) {
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
    return std::max(a, b);
  default:
    return std::min(a, b);
  }
}

TEST(Arithmetic, OfIntegersIsExactModulo32Bits) {
  for (int op : {kPlusOp, kMinusOp, kTimesOp, kDivideOp, kGreaterOp, kLesserOp})
    for (std::int32_t a : integers())
      for (std::int32_t b : integers()) {
        if (op == kDivideOp && b == 0)
          continue;
        const node n1 = integer(a);
        node n2 = integer(b);
        bi_arith(op, &n1, &n2, &n2);
        ASSERT_EQ(n2.type, kInteger);
        ASSERT_EQ(static_cast<std::uint32_t>(n2.val.i),
                  static_cast<std::uint32_t>(exact(op, a, b) & 0xFFFFFFFF))
            << op << ' ' << a << ' ' << b;
      }
}

TEST(Arithmetic, WithARealIsRealAndRoundedOnce) {
  std::mt19937 random(11);
  std::uniform_real_distribution<float> any(-1e6F, 1e6F);
  for (int i = 0; i < 1000; ++i) {
    const float a = any(random);
    const float b = any(random);
    const node n1 = real(a);
    const node n2 = real(b);
    const struct {
      int op;
      long double value;
    } wanted[] = {{kPlusOp, static_cast<long double>(a) + b},
                  {kMinusOp, static_cast<long double>(a) - b},
                  {kTimesOp, static_cast<long double>(a) * b},
                  {kDivideOp, static_cast<long double>(a) / b},
                  {kGreaterOp, std::max(a, b)},
                  {kLesserOp, std::min(a, b)}};
    for (const auto &[op, value] : wanted) {
      node result{};
      bi_arith(op, &n1, &n2, &result);
      ASSERT_EQ(result.type, kReal);
      ASSERT_EQ(result.val.r, static_cast<float>(value)) << op << ' ' << a << ' ' << b;
    }
  }
}

TEST(Arithmetic, TakesAnIntegerIntoSinglePrecisionBesideAReal) {
  const node big = integer(16777217);
  const node zero = real(0);
  node result{};
  bi_arith(kPlusOp, &big, &zero, &result);
  EXPECT_EQ(result.val.r, 16777216.0F);
  bi_arith(kGreaterOp, &big, &zero, &result);
  EXPECT_EQ(result.type, kReal);
  EXPECT_EQ(result.val.r, 16777216.0F);
}

TEST(Arithmetic, TruncationSaturates) {
  EXPECT_EQ(truncate_to_int(2.9), 2);
  EXPECT_EQ(truncate_to_int(-2.9), -2);
  EXPECT_EQ(truncate_to_int(2147483646.9), 2147483646);
  EXPECT_EQ(truncate_to_int(2147483648.0), kMost);
  EXPECT_EQ(truncate_to_int(-2147483648.9), kLeast);
  EXPECT_EQ(truncate_to_int(INFINITY), kMost);
  EXPECT_EQ(truncate_to_int(-INFINITY), kLeast);
  EXPECT_EQ(truncate_to_int(NAN), 0);
}

TEST(Comparison, HoldsBetweenAllMeasures) {
  const std::vector<std::pair<node, float>> values = {{integer(kLeast), -2147483648.0F},
                                                      {character(static_cast<char>(200)), -56.0F},
                                                      {real(-0.0F), 0.0F},
                                                      {integer(0), 0.0F},
                                                      {real(96.5F), 96.5F},
                                                      {character('a'), 97.0F},
                                                      {integer(97), 97.0F},
                                                      {real(INFINITY), INFINITY}};
  for (const auto &[n1, a] : values)
    for (const auto &[n2, b] : values) {
      EXPECT_EQ(bi_compare(kLessOp, &n1, &n2), a < b) << a << ' ' << b;
      EXPECT_EQ(bi_compare(kMoreOp, &n1, &n2), a > b) << a << ' ' << b;
      EXPECT_EQ(bi_compare(kAtMostOp, &n1, &n2), a <= b) << a << ' ' << b;
      EXPECT_EQ(bi_compare(kAtLeastOp, &n1, &n2), a >= b) << a << ' ' << b;
    }
}

TEST(Comparison, OfNotANumberNeverHolds) {
  const node nan = real(NAN);
  const node one = integer(1);
  for (int op : {kLessOp, kMoreOp, kAtMostOp, kAtLeastOp}) {
    EXPECT_EQ(bi_compare(op, &nan, &one), 0);
    EXPECT_EQ(bi_compare(op, &nan, &nan), 0);
  }
}

TEST(Comparison, OfStringsGoesByUnsignedBytes) {
  char low[] = "az";
  char high[] = "a\xC3\xA9";
  node n1{}, n2{};
  n1.type = n2.type = kString;
  n1.val.s = {2, low};
  n2.val.s = {3, high};
  EXPECT_EQ(bi_compare(kLessOp, &n1, &n2), 1);
  EXPECT_EQ(bi_compare(kAtLeastOp, &n1, &n2), 0);
  const node number = integer(1);
  EXPECT_EQ(bi_compare(kLessOp, &n1, &number), 0);
  EXPECT_EQ(bi_compare(kAtLeastOp, &n1, &number), 0);
}

} // namespace
} // namespace velora
