// The marks of networks.
#include "editor/draw_network.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

#include "editor/model/vel_segs.h"
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

Rect grown(const Rect &box, int by) {
  return {box.left - by, box.top - by, box.right + by, box.bottom + by};
}

bool overlap(const Rect &a, const Rect &b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// The functions of one circle, with the boxes that are shown of them.
class Circle {
public:
  Circle(const std::vector<const Segm *> &members, const Boxes &boxes) {
    for (const Segm *member : members)
      if (const auto found = boxes.find(member); found != boxes.end())
        boxes_.insert(*found);
  }
  [[nodiscard]] bool empty() const { return boxes_.empty(); }
  [[nodiscard]] const Boxes &boxes() const { return boxes_; }
  [[nodiscard]] bool holds(const Segm *node) const { return boxes_.contains(node); }

  [[nodiscard]] Rect frame() const {
    Rect frame = boxes_.begin()->second;
    for (const auto &[member, box] : boxes_)
      frame = {std::min(frame.left, box.left), std::min(frame.top, box.top),
               std::max(frame.right, box.right), std::max(frame.bottom, box.bottom)};
    return grown(frame, kFrame);
  }

  // True when a box stands in the frame that is none of the circle.
  [[nodiscard]] bool frames_strangers(const PictureLayout &layout) const {
    return std::any_of(layout.nodes.begin(), layout.nodes.end(), [&](const NodePlace &node) {
      return !holds(node.seg) && overlap(frame(), node.box);
    });
  }

private:
  Boxes boxes_;
};

// The strip along a line, as wide on either side.
std::array<Point, 4> strip(Point from, Point to, int half) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double length = std::max(1.0, std::sqrt(dx * dx + dy * dy));
  const int across = static_cast<int>(std::lround(half * dy / length));
  const int along = static_cast<int>(std::lround(half * dx / length));
  return {Point{from.x + across, from.y - along},
          {to.x + across, to.y - along},
          {to.x - across, to.y + along},
          {from.x - across, from.y + along}};
}

// Around the boxes of a circle and along its arrows, where a frame around all of it would hold
// strangers. What is drawn first as outlines is drawn again a little smaller as paper: that leaves
// the outline of the whole.
void draw_close_frame(const Circle &circle, const PictureLayout &layout, Canvas &canvas) {
  constexpr int kStrip = 5;
  struct Pass {
    int smaller;
    Pen pen;
  };
  const Brush paper{kPalette[kWhite], true};
  for (const Pass &pass : {Pass{0, Pen{kGrey, 1, PenStyle::dotted}},
                           Pass{1, Pen{kPalette[kWhite], 1, PenStyle::none}}}) {
    for (const auto &[member, box] : circle.boxes())
      canvas.rectangle(grown(box, kFrame - pass.smaller), pass.pen, paper);
    for (const ArcPlace &arc : layout.arcs) {
      if (!circle.holds(arc_start(arc.seg)) || !circle.holds(arc_end(arc.seg)))
        continue;
      for (std::size_t i = 1; i < arc.path.size(); ++i)
        canvas.polygon(strip(arc.path[i - 1], arc.path[i], kStrip - pass.smaller), pass.pen, paper);
    }
  }
}

// One frame around the functions that call each other in a circle.
void draw_circle(const Circle &circle, const PictureLayout &layout, Canvas &canvas) {
  if (circle.empty())
    return;
  if (circle.frames_strangers(layout))
    draw_close_frame(circle, layout, canvas);
  else
    canvas.rectangle(circle.frame(), Pen{kGrey, 1, PenStyle::dotted},
                     Brush{kPalette[kWhite], false});
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
  for (const std::vector<const Segm *> &members : view.circles)
    draw_circle(Circle(members, boxes), layout, canvas);
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
      canvas.rectangle(node.box, Pen{kPalette[kRed], 2, PenStyle::dashed},
                       Brush{kPalette[kWhite], false});
    if (calls_itself(node.seg->label) && !joins_itself(node.seg))
      draw_loop(node.box, canvas);
  }
}

} // namespace velora
