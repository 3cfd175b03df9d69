// Laying out arrows: on which side of its box an arrow arrives, and at which point of that side, so
// that the arguments of a box arrive side by side in their order.
#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "editor/draw_layout.h"
#include "editor/model/vel_segs.h"

namespace velora {

namespace {

// The least distance between boxes that an arrow runs up or down; nearer ones are joined sideways.
constexpr int kLeastDrop = 6;

// An arrow is led to the end of a box when it runs more than this much farther across than down.
constexpr int kSteepness = 2;
// In larger pictures no way is looked for around other nodes.
constexpr std::size_t kMostForEnds = 300;

enum class Side { top, bottom, left, right };

// Arrows run downwards where they can: they leave below and arrive above.
Side arrival_side(const Rect &from, const Rect &to) {
  if (from.bottom + kLeastDrop <= to.top)
    return Side::top;
  if (from.top >= to.bottom + kLeastDrop)
    return Side::bottom;
  return from.centre().x <= to.centre().x ? Side::left : Side::right;
}

// The point on the border of a junction that lies towards `other`.
Point towards(const Rect &circle, Point other) {
  const Point centre = circle.centre();
  const double dx = other.x - centre.x;
  const double dy = other.y - centre.y;
  const double length = std::max(1.0, std::sqrt(dx * dx + dy * dy));
  return {centre.x + static_cast<int>(std::lround(dx / length * circle.width() / 2)),
          centre.y + static_cast<int>(std::lround(dy / length * circle.height() / 2))};
}

// Where the slanted end of a hexagon stands at height `y`.
int end_inset(const NodePlace &node, int y) {
  if (node.seg->type == kBox)
    return 0;
  const int half = std::max(1, node.box.height() / 2);
  return node.slant * std::abs(y - node.box.centre().y) / half;
}

// The `index`-th of `count` points, evenly spread between two ends.
int spread(int low, int high, int index, int count) {
  return low + (high - low) * (index + 1) / (count + 1);
}

Point arrival(const NodePlace &node, Side side, int index, int count) {
  const Rect &box = node.box;
  const int inset = node.seg->type == kBox ? 0 : node.slant;
  const int y = spread(box.top, box.bottom, index, count);
  switch (side) {
  case Side::top:
    return {spread(box.left + inset, box.right - inset, index, count), box.top};
  case Side::bottom: // the right half, beside what leaves in the middle
    return {spread(box.centre().x, box.right - inset, index, count), box.bottom};
  case Side::left:
    return {box.left + end_inset(node, y), y};
  case Side::right:
    break;
  }
  return {box.right - end_inset(node, y), y};
}

// Where an arrow leaves `node`, whose target lies on the other side of `direction`.
Point departure(const NodePlace &node, Side direction, Point end) {
  const Rect &box = node.box;
  if (node.seg->type == kJunction)
    return towards(box, end);
  switch (direction) {
  case Side::top:
    return {box.centre().x, box.bottom};
  case Side::bottom: // to the right of what arrives in the middle
    return {box.left + 3 * box.width() / 4, box.top};
  case Side::left:
    return {box.right, box.centre().y};
  case Side::right:
    break;
  }
  return {box.left, box.centre().y};
}

// True when the straight line from `a` to `b` runs through the inside of a box.
bool runs_through(const Rect &box, Point a, Point b) {
  // Clip the line to the box, side by side; what is left of it lies inside.
  double first = 0;
  double last = 1;
  const auto clip = [&](double from, double by, double low, double high) {
    if (by == 0)
      return low < from && from < high;
    const double at_low = (low - from) / by;
    const double at_high = (high - from) / by;
    first = std::max(first, std::min(at_low, at_high));
    last = std::min(last, std::max(at_low, at_high));
    return true;
  };
  return clip(a.x, b.x - a.x, box.left, box.right) && clip(a.y, b.y - a.y, box.top, box.bottom) &&
         first < last;
}

// From a node around its upper right corner to itself.
std::vector<Point> loop_path(const NodePlace &node) {
  const Rect &box = node.box;
  const int out = 2 * head_length(node.font.size);
  const int x = node.seg->type == kJunction
                    ? box.centre().x
                    : std::max(box.centre().x, box.right - box.width() / 8 - node.slant);
  const int y = box.centre().y;
  return {{box.right - end_inset(node, y), y},
          {box.right + out, y},
          {box.right + out, box.top - out},
          {x, box.top - out},
          {x, box.top}};
}

// How an arrow runs: the direction its ends lie in, and the side it arrives at.
struct Route {
  const Segm *arc;
  Side direction;
  Side side;
};

class ArcLayout {
public:
  ArcLayout(const WinInfo *wi, const std::vector<NodePlace> &nodes) : wi_(wi), nodes_(nodes) {
    for (const NodePlace &node : nodes)
      place_.emplace(node.seg, &node);
  }

  // The arrows that arrive at a node.
  void arrive_at(const NodePlace &node, std::vector<ArcPlace> &arcs) {
    std::vector<Route> routes;
    int counts[4] = {0, 0, 0, 0};
    for (const Segm *arc : cyclic_order_types_of(node.seg)) {
      if (place_.count(arc_start(arc)) == 0)
        continue; // it comes from a hidden node
      routes.push_back(route_of(arc, node));
      ++counts[static_cast<std::size_t>(routes.back().side)];
    }
    const bool numbered =
        routes.size() > 1 && node.seg->type == kBox && wi_->wtype != kNetworkPicture;
    int reached[4] = {0, 0, 0, 0};
    int number = 0;
    for (const Route &route : routes) {
      const auto side = static_cast<std::size_t>(route.side);
      const int index = reached[side]++;
      // Seen from the left the farthest node comes first: it arrives lowest, so that no arrow
      // crosses another.
      const int place = route.side == Side::left ? counts[side] - 1 - index : index;
      arcs.push_back({route.arc, path_of(route, node, place, counts[side]), numbered ? ++number : 0,
                      route.side == Side::left || route.side == Side::right});
    }
  }

private:
  const NodePlace &start_of(const Segm *arc) const { return *place_.at(arc_start(arc)); }

  // An arrow that would creep along the top of its box arrives at the box's end instead, where no
  // other node stands in its way.
  Route route_of(const Segm *arc, const NodePlace &node) const {
    const NodePlace &start = start_of(arc);
    Route route{arc, arrival_side(start.box, node.box), Side::top};
    route.side = route.direction;
    if (route.direction != Side::top || nodes_.size() > kMostForEnds || node.seg->type == kJunction)
      return route;
    const Point from{start.box.centre().x, start.box.bottom};
    const bool from_left = from.x < node.box.left;
    const Point end{from_left ? node.box.left : node.box.right, node.box.centre().y};
    const int away = from_left ? node.box.left - from.x : from.x - node.box.right;
    if (away + node.box.width() / 4 > kSteepness * (node.box.top - from.y) &&
        is_clear(start, node, from, end))
      route.side = from_left ? Side::left : Side::right;
    return route;
  }

  bool is_clear(const NodePlace &start, const NodePlace &node, Point from, Point end) const {
    return std::none_of(nodes_.begin(), nodes_.end(), [&](const NodePlace &other) {
      return &other != &start && &other != &node && runs_through(other.box, from, end);
    });
  }

  std::vector<Point> path_of(const Route &route, const NodePlace &node, int index,
                             int count) const {
    const NodePlace &start = start_of(route.arc);
    if (start.seg == node.seg)
      return loop_path(node);
    const Point end = node.seg->type == kJunction ? towards(node.box, start.box.centre())
                                                  : arrival(node, route.side, index, count);
    return {departure(start, route.direction, end), end};
  }

  const WinInfo *wi_;
  const std::vector<NodePlace> &nodes_;
  std::unordered_map<const Segm *, const NodePlace *> place_;
};

} // namespace

int hit_picture(const PictureLayout &layout, Point at, bool nodes_only) {
  int lowest = 0;
  const auto hit = [&lowest](const Segm *seg) {
    if (lowest == 0 || seg->segnum < lowest)
      lowest = seg->segnum;
  };
  for (const NodePlace &node : layout.nodes)
    if (node.box.contains(at))
      hit(node.seg);
  if (nodes_only)
    return lowest;
  for (const ArcPlace &arc : layout.arcs)
    for (std::size_t i = 1; i < arc.path.size(); ++i) {
      const Point from = arc.path[i - 1];
      const Point to = arc.path[i];
      if (line_is_hit({from.x, from.y, to.x, to.y}, at.x, at.y))
        hit(arc.seg);
    }
  return lowest;
}

PictureLayout lay_out_picture(const WinInfo *wi) {
  PictureLayout layout;
  layout.nodes = place_nodes(wi, picture_font(wi));
  ArcLayout arrows(wi, layout.nodes);
  for (const NodePlace &node : layout.nodes)
    arrows.arrive_at(node, layout.arcs);
  return layout;
}

} // namespace velora
