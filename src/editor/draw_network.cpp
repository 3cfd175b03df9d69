// The marks of networks.
#include "editor/draw_network.h"

#include <algorithm>
#include <unordered_map>

#include "network/net_view.h"

namespace velora {

namespace {

constexpr Colour kGrey{120, 120, 120};
constexpr int kFrame = 8; // between a frame and the boxes in it
constexpr int kLoop = 9;  // how far a loop stands out

using Boxes = std::unordered_map<const Segm *, Rect>;

Boxes boxes_of(const PictureLayout &layout) {
  Boxes boxes;
  for (const NodePlace &node : layout.nodes)
    boxes.emplace(node.seg, node.box);
  return boxes;
}

void draw_frame(const std::vector<const Segm *> &circle, const Boxes &boxes, Canvas &canvas) {
  Rect frame;
  bool first = true;
  for (const Segm *member : circle) {
    const auto found = boxes.find(member);
    if (found == boxes.end())
      continue;
    const Rect &box = found->second;
    frame = first ? box
                  : Rect{std::min(frame.left, box.left), std::min(frame.top, box.top),
                         std::max(frame.right, box.right), std::max(frame.bottom, box.bottom)};
    first = false;
  }
  if (!first)
    canvas.rectangle(
        {frame.left - kFrame, frame.top - kFrame, frame.right + kFrame, frame.bottom + kFrame},
        Pen{kGrey, 1, PenStyle::dotted}, Brush{kPalette[kWhite], false});
}

// From the middle of a lower rim to the middle of an upper one, with a small head.
void draw_skipped(const Rect &from, const Rect &to, Canvas &canvas) {
  const bool down = from.centre().y <= to.centre().y;
  const Point start{from.centre().x, down ? from.bottom : from.top};
  const Point end{to.centre().x, down ? to.top : to.bottom};
  canvas.line(start, end, Pen{kGrey, 1, PenStyle::dotted});
  const int back = down ? -6 : 6;
  const Point head[] = {end, {end.x - 3, end.y + back}, {end.x + 3, end.y + back}};
  canvas.polygon(head, Pen{kGrey}, Brush{kGrey});
}

// Around the upper right corner, with the head at the upper rim.
void draw_loop(const Rect &box, Canvas &canvas) {
  const Pen pen;
  const Point path[] = {{box.right, box.top + box.height() / 3},
                        {box.right + kLoop, box.top + box.height() / 3},
                        {box.right + kLoop, box.top - kLoop},
                        {box.right - kLoop, box.top - kLoop},
                        {box.right - kLoop, box.top}};
  for (std::size_t i = 1; i < std::size(path); ++i)
    canvas.line(path[i - 1], path[i], pen);
  const Point end = path[std::size(path) - 1];
  const Point head[] = {end, {end.x - 2, end.y - 4}, {end.x + 2, end.y - 4}};
  canvas.polygon(head, pen, Brush{kPalette[kBlack]});
}

bool joins_itself(const Segm *node) {
  return std::any_of(node->segf_ptr.begin(), node->segf_ptr.end(),
                     [node](const Segm *arc) { return arc_end(arc) == node; });
}

} // namespace

void draw_network_ground(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  const Boxes boxes = boxes_of(layout);
  const NetworkView view = look_at_network(wi);
  for (const std::vector<const Segm *> &circle : view.circles)
    draw_frame(circle, boxes, canvas);
  for (const auto &[from, to] : view.skipped)
    if (const auto start = boxes.find(from), end = boxes.find(to);
        start != boxes.end() && end != boxes.end())
      draw_skipped(start->second, end->second, canvas);
}

void draw_network_marks(const PictureLayout &layout, Canvas &canvas) {
  for (const NodePlace &node : layout.nodes) {
    if (node.seg->type != kBox)
      continue;
    if (is_defined_nowhere(node.seg->label))
      canvas.rectangle(node.box, Pen{kPalette[kRed], 2, PenStyle::dotted},
                       Brush{kPalette[kWhite], false});
    if (calls_itself(node.seg->label) && !joins_itself(node.seg))
      draw_loop(node.box, canvas);
  }
}

} // namespace velora
