// Soft shapes: what they cover adds up to their area, dots at their edges take a share of the
// colour, and nothing is touched outside the clip.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "platform/soft_shapes.h"

using namespace velora;

namespace {

constexpr Colour kInk{0, 0, 0};
constexpr int kSide = 64;

struct Paper {
  std::vector<std::uint32_t> dots =
      std::vector<std::uint32_t>(std::size_t{kSide} * kSide, 0xFFFFFF);
  SoftShapes shapes{{dots.data(), kSide, kSide}};

  [[nodiscard]] int grey(int x, int y) const {
    return static_cast<int>(
        dots[static_cast<std::size_t>(y) * kSide + static_cast<std::size_t>(x)] & 0xFF);
  }
  // The inked area in dots.
  [[nodiscard]] double ink() const {
    double sum = 0;
    for (const std::uint32_t dot : dots)
      sum += (255 - static_cast<int>(dot & 0xFF)) / 255.0;
    return sum;
  }
};

double area_of(const std::vector<SoftPoint> &corners) {
  double sum = 0;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const SoftPoint a = corners[i];
    const SoftPoint b = corners[(i + 1) % corners.size()];
    sum += a.x * b.y - b.x * a.y;
  }
  return std::fabs(sum) / 2;
}

TEST(SoftShapes, WhatIsCoveredIsTheAreaOfTheShape) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> radius(1, 30);
  for (int i = 0; i < 200; ++i) {
    const double across = radius(random);
    const double down = radius(random);
    std::vector<SoftPoint> corners;
    const int count = 3 + i % 40;
    for (int c = 0; c < count; ++c) {
      const double angle = 2 * std::numbers::pi * (c + 0.3) / count;
      corners.push_back({32 + across * std::cos(angle), 31.5 + down * std::sin(angle)});
    }
    Paper paper;
    paper.shapes.fill(corners, kInk);
    // A dot holds its share in 256ths, so a little is lost at each dot of the edge.
    EXPECT_NEAR(paper.ink(), area_of(corners), 1.5)
        << count << " corners, " << across << ' ' << down;
  }
}

TEST(SoftShapes, EdgesAreSoftAndLinesAlongTheDotsSharp) {
  Paper paper;
  paper.shapes.fill(std::array<SoftPoint, 4>{{{10.25, 10}, {20.5, 10}, {20.5, 20}, {10.25, 20}}},
                    kInk);
  EXPECT_NEAR(paper.grey(10, 15), 64, 2);
  EXPECT_EQ(paper.grey(15, 15), 0);
  EXPECT_NEAR(paper.grey(20, 15), 128, 2);
  EXPECT_EQ(paper.grey(21, 15), 255);
  Paper lines;
  lines.shapes.stroke({5.75, 10.75}, {40.75, 10.75}, 1.5, kInk);
  lines.shapes.stroke({50.2, 5}, {50.2, 45}, 1, kInk);
  for (const std::uint32_t dot : lines.dots)
    EXPECT_TRUE(dot == 0xFFFFFF || dot == 0) << dot;
  EXPECT_EQ(lines.ink(), 35 * 2 + 40);
  Paper slanted;
  slanted.shapes.stroke({5.5, 5.5}, {55.5, 30.5}, 1, kInk);
  EXPECT_NEAR(slanted.ink(), std::hypot(50, 25), 1);
  int soft = 0;
  for (const std::uint32_t dot : slanted.dots)
    soft += dot != 0xFFFFFF && dot != 0 ? 1 : 0;
  EXPECT_GT(soft, 60);
}

TEST(SoftShapes, NothingIsDrawnOutsideTheClipAndWhatCrossesItIsTheSameInside) {
  const std::vector<SoftPoint> big{{-500, -300}, {900, 20.3}, {40.7, 700}};
  Paper whole;
  whole.shapes.fill(big, kInk);
  Paper part;
  part.shapes.set_clip({20, 10, 44, 30});
  part.shapes.fill(big, kInk);
  part.shapes.stroke({-1e9, -5e8}, {1e9, 7e8}, 3, kInk);
  part.shapes.fill_dots({-9, 28, 999, 99}, kInk);
  for (int y = 0; y < kSide; ++y)
    for (int x = 0; x < kSide; ++x) {
      const bool inside = x >= 20 && x < 44 && y >= 10 && y < 30;
      if (!inside)
        ASSERT_EQ(part.grey(x, y), 255) << x << ' ' << y;
      else
        ASSERT_LE(part.grey(x, y), whole.grey(x, y) + 1) << x << ' ' << y;
    }
  Paper after; // what one shape leaves behind does not show in the next
  after.shapes.fill(big, {255, 255, 255});
  after.shapes.fill(std::array<SoftPoint, 3>{{{10, 10}, {20, 10}, {10, 20}}}, kInk);
  EXPECT_NEAR(after.ink(), 50, 1);
}

} // namespace
