// Where the short lines of missing inputs end, and which of them the pointer is at.
#include <algorithm>
#include <cmath>

#include "editor/hand/gesture_parts.h"

namespace velora {

Point stub_tip(const Rect &box, int input, int count) {
  constexpr int kHeight = 7;
  constexpr int kLeastApart = 16; // room for the number
  const int apart = std::max(box.width() / (count + 1), kLeastApart);
  return {box.centre().x + (2 * input - (count - 1)) * apart / 2, box.top - kHeight};
}

int stub_at(const WinInfo *wi, int slot, Point at) {
  constexpr int kReach = 8;
  const Segm *node = wi->seg_ments[slot];
  if (node == nullptr || node->type != kBox || at.y >= node->ly ||
      at.y < stub_tip(node->box(), 0, 1).y - kReach)
    return -1;
  const auto count = static_cast<int>(wanted_inputs(wi, node).size());
  for (const int input : missing_inputs(wi, node)) {
    const Point tip = stub_tip(node->box(), input, count);
    if (std::abs(at.x - tip.x) <= kReach && std::abs(at.y - tip.y) <= kReach)
      return input;
  }
  return -1;
}

int box_with_stub_at(const WinInfo *wi, Point at) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (stub_at(wi, slot, at) >= 0)
      return slot;
  return 0;
}

} // namespace velora
