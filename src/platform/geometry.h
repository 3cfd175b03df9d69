// Points, rectangles and colours: the plain values that pictures, windows and the canvas share.
// Used by every level; depends on nothing.
#pragma once

#include <algorithm>
#include <cstdint>

namespace velora {

struct Point {
  int x = 0;
  int y = 0;
  friend bool operator==(const Point &, const Point &) = default;
};

// A rectangle given by two corners; `left <= right` and `top <= bottom` after normalised().
struct Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  [[nodiscard]] int width() const { return right - left; }
  [[nodiscard]] int height() const { return bottom - top; }
  [[nodiscard]] Point centre() const { return {left + width() / 2, top + height() / 2}; }
  [[nodiscard]] bool contains(Point p) const {
    return left <= p.x && p.x <= right && top <= p.y && p.y <= bottom;
  }
  [[nodiscard]] Rect normalised() const {
    return {std::min(left, right), std::min(top, bottom), std::max(left, right),
            std::max(top, bottom)};
  }
  friend bool operator==(const Rect &, const Rect &) = default;
};

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Colour &, const Colour &) = default;
};

// The palette of eight colours, in the order of the colour commands and drawing objects.
enum PaletteIndex {
  kBlack = 0,
  kBlue = 1,
  kWhite = 2,
  kRed = 3,
  kGreen = 4,
  kCyan = 5,
  kMagenta = 6,
  kYellow = 7
};

inline constexpr Colour kPalette[8] = {{0, 0, 0},   {0, 0, 255},   {255, 255, 255}, {255, 0, 0},
                                       {0, 255, 0}, {0, 255, 255}, {255, 0, 255},   {255, 255, 0}};

} // namespace velora
