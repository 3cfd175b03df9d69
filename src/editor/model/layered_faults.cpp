// Counting what makes a placing hard to read.
#include <algorithm>
#include <cstdint>

#include "editor/model/layered_layout.h"

namespace velora {

namespace {

struct Line {
  Point from;
  Point to;
  int upper;
  int lower;
  [[nodiscard]] Rect span() const { return Rect{from.x, from.y, to.x, to.y}.normalised(); }
};

std::int64_t side(Point a, Point b, Point p) {
  return static_cast<std::int64_t>(b.x - a.x) * (p.y - a.y) -
         static_cast<std::int64_t>(b.y - a.y) * (p.x - a.x);
}

bool apart(const Rect &a, const Rect &b) {
  return a.right < b.left || b.right < a.left || a.bottom < b.top || b.bottom < a.top;
}

int sign(std::int64_t value) {
  return value > 0 ? 1 : (value < 0 ? -1 : 0);
}

bool cross(const Line &a, const Line &b) {
  return sign(side(a.from, a.to, b.from)) * sign(side(a.from, a.to, b.to)) < 0 &&
         sign(side(b.from, b.to, a.from)) * sign(side(b.from, b.to, a.to)) < 0;
}

// A line runs through the inside of a box when it has an end there or parts two of its corners.
bool runs_through(const Line &line, const Rect &box) {
  const auto inside = [&box](Point p) {
    return box.left < p.x && p.x < box.right && box.top < p.y && p.y < box.bottom;
  };
  if (inside(line.from) || inside(line.to))
    return true;
  const Rect span = line.span();
  if (span.right <= box.left || box.right <= span.left || span.bottom <= box.top ||
      box.bottom <= span.top)
    return false;
  const Point corners[] = {
      {box.left, box.top}, {box.right, box.top}, {box.left, box.bottom}, {box.right, box.bottom}};
  bool left = false;
  bool right = false;
  for (const Point corner : corners) {
    const std::int64_t s = side(line.from, line.to, corner);
    left = left || s > 0;
    right = right || s < 0;
  }
  return left && right;
}

} // namespace

LayeredFaults layered_faults(std::span<const LayeredBox> boxes,
                             std::span<const LayeredArrow> arrows, std::span<const Point> corners) {
  std::vector<Rect> rects;
  for (std::size_t i = 0; i < boxes.size(); ++i)
    rects.push_back({corners[i].x, corners[i].y, corners[i].x + boxes[i].width,
                     corners[i].y + boxes[i].height});
  LayeredFaults faults;
  for (std::size_t i = 0; i < rects.size(); ++i)
    for (std::size_t j = i + 1; j < rects.size(); ++j)
      faults.overlaps += rects[i].left < rects[j].right && rects[j].left < rects[i].right &&
                                 rects[i].top < rects[j].bottom && rects[j].top < rects[i].bottom
                             ? 1
                             : 0;
  const auto count = static_cast<int>(boxes.size());
  std::vector<Line> lines;
  for (const LayeredArrow &arrow : arrows) {
    if (arrow.from < 0 || arrow.to < 0 || arrow.from >= count || arrow.to >= count ||
        arrow.from == arrow.to)
      continue;
    const Rect &from = rects[static_cast<std::size_t>(arrow.from)];
    const Rect &to = rects[static_cast<std::size_t>(arrow.to)];
    // An arrow that has to run upwards leaves above and arrives below.
    const bool down = from.bottom <= to.top || from.centre().y <= to.centre().y;
    lines.push_back({{from.centre().x, down ? from.bottom : from.top},
                     {to.centre().x, down ? to.top : to.bottom},
                     arrow.from,
                     arrow.to});
  }
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Line &a = lines[i];
    for (std::size_t j = i + 1; j < lines.size(); ++j) {
      const Line &b = lines[j];
      const bool meet =
          a.upper == b.upper || a.lower == b.lower || a.upper == b.lower || a.lower == b.upper;
      if (!meet && !apart(a.span(), b.span()) && cross(a, b))
        ++faults.crossings;
    }
    for (int box = 0; box < count; ++box)
      if (box != a.upper && box != a.lower && runs_through(a, rects[static_cast<std::size_t>(box)]))
        ++faults.boxes_crossed;
  }
  return faults;
}

} // namespace velora
