// Where the short lines of missing inputs stand, clear of the arrows that arrive at the same box,
// and which of them the pointer is at.
#include "editor/hand/stubs.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "editor/draw_layout.h"
#include "editor/hand/names.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "platform/text_measures.h"

namespace velora {

namespace {

constexpr int kHeight = 7;      // of a stub
constexpr int kRing = 2;        // half the ring at its tip
constexpr int kLeastApart = 16; // room for the number

// A stretch above the upper side of a box that something stands in.
struct Taken {
  int left;
  int right;
};

// What a stub whose tip is at `tip` covers: its ring and, on the right of that, its number.
Rect ink_at(Point tip, int input) {
  const std::string number = std::to_string(input + 1);
  return {tip.x - kRing, tip.y - 6, tip.x + 3 + measured_width(number, stub_font()),
          tip.y + kHeight};
}

// Where the tip goes when nothing is in its way: the stubs spread like a fan over a narrow box.
Point natural_tip(const Rect &box, int input, int count) {
  const int apart = std::max(box.width() / (count + 1), kLeastApart);
  return {box.centre().x + (2 * input - (count - 1)) * apart / 2, box.top - kHeight};
}

// The free place nearest to `wanted` for something that reaches so far to its left and right.
int nearest_free(int wanted, int to_left, int to_right, const std::vector<Taken> &taken) {
  const auto is_free = [&](int x) {
    return std::none_of(taken.begin(), taken.end(), [&](const Taken &other) {
      return x - to_left <= other.right && other.left <= x + to_right;
    });
  };
  std::optional<int> best;
  const auto consider = [&](int x) {
    if (is_free(x) && (!best || std::abs(x - wanted) < std::abs(*best - wanted)))
      best = x;
  };
  // Only beside what is in the way can the nearest free place be.
  consider(wanted);
  for (const Taken &other : taken) {
    consider(other.left - to_right - 1);
    consider(other.right + to_left + 1);
  }
  return *best; // left of everything it is free
}

} // namespace

Font stub_font() {
  return Font{8, false, false};
}

std::vector<Stub> stubs_of(const WinInfo *wi, const PictureLayout &layout, const NodePlace &node) {
  if (wi->wtype != kFunctionPicture || node.seg->type != kBox)
    return {};
  const std::vector<int> missing = missing_inputs(wi, node.seg);
  if (missing.empty())
    return {};
  const Rect &box = node.box;
  std::vector<Taken> taken;
  const int above = box.top - ink_at(natural_tip(box, 0, 1), 0).top;
  for (const ArcPlace &arc : layout.arcs) {
    if (arc_end(arc.seg) != node.seg)
      continue;
    const int height = arc.path.back().y - box.top + above;
    if (const Rect end = arrow_end_box(arc, picture_font(wi), height); end.top < box.top)
      taken.push_back({end.left - 1, end.right + 1});
  }
  const auto count = static_cast<int>(wanted_inputs(wi, node.seg).size());
  std::vector<Stub> stubs;
  for (const int input : missing) {
    Point tip = natural_tip(box, input, count);
    const Rect ink = ink_at(tip, input);
    tip.x = nearest_free(tip.x, tip.x - ink.left, ink.right - tip.x, taken);
    const Rect placed = ink_at(tip, input);
    taken.push_back({placed.left, placed.right});
    stubs.push_back({input, {std::clamp(tip.x, box.left, box.right), box.top}, tip, placed});
  }
  return stubs;
}

StubAt stub_at(const WinInfo *wi, const PictureLayout &layout, Point at) {
  constexpr int kReach = 8;
  for (const NodePlace &node : layout.nodes) {
    if (at.y >= node.box.top || at.y < node.box.top - kHeight - kReach)
      continue;
    // Stubs may stand nearer to each other than the pointer reaches: the nearest is meant.
    std::optional<StubAt> best;
    int least = kReach + 1;
    for (const Stub &stub : stubs_of(wi, layout, node)) {
      const int away = std::max(std::abs(at.x - stub.tip.x), std::abs(at.y - stub.tip.y));
      if (away >= least)
        continue;
      least = away;
      best = StubAt{node.seg->segnum, stub.input};
    }
    if (best)
      return *best;
  }
  return {};
}

} // namespace velora
