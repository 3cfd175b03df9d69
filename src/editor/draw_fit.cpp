// Fitting nodes to their labels. A node grows around its centre as far as its label needs, but
// never into a node that it did not overlap before; where that leaves too little room, the label
// is set smaller.
#include <algorithm>
#include <numeric>

#include "editor/draw_layout.h"
#include "editor/model/vel_segs.h"
#include "editor/picture_walk.h"
#include "platform/text_measures.h"

namespace velora {

namespace {

constexpr int kPadding = 4; // between a label and the sides of its box
constexpr int kSmallestFont = 5;
constexpr int kNodeGap = 2;       // kept between nodes that grew towards each other
constexpr int kFarthest = 100000; // no picture is drawn farther out, whatever a file says

int near_enough(int coordinate) {
  return std::clamp(coordinate, -kFarthest, kFarthest);
}

// The box of a node itself, before it grows.
Rect own_box(const Segm *node) {
  return {near_enough(node->lx), near_enough(node->ly), near_enough(node->ux),
          near_enough(node->uy)};
}

// Room that a shape takes from its inside at the left and right, and at the top and bottom.
int side_room(const Segm *node, const Rect &box, int text_height) {
  const int border = shape_style(node) == kDouble ? kDoubleGap : 0;
  if (node->type == kBox)
    return kPadding + border;
  if (node->type == kJunction)
    return box.height() / 5 + 1;
  // The text needs the slanted end only as far in as its own height reaches.
  const int slant =
      hexagon_slant(box) * std::min(text_height, box.height()) / std::max(1, box.height());
  return slant + 2 + border + (node->type == kHoldValue ? 3 : 0);
}

int end_room(const Segm *node) {
  if (node->type == kJunction)
    return 3;
  return shape_style(node) == kDouble ? 1 + kDoubleGap : 2;
}

Rect grown(const Rect &box, int width, int height) {
  const int dx = std::max(0, (width - box.width() + 1) / 2);
  const int dy = std::max(0, (height - box.height() + 1) / 2);
  return {box.left - dx, box.top - dy, box.right + dx, box.bottom + dy};
}

bool overlap(const Rect &a, const Rect &b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// Takes back the growth of two nodes that met each other: to the middle of the gap there was.
void part(NodePlace &a, NodePlace &b) {
  const Rect first = own_box(a.seg);
  const Rect second = own_box(b.seg);
  if (overlap(first, second) ||
      !overlap(grown(a.box, a.box.width() + kNodeGap, a.box.height() + kNodeGap), b.box))
    return;
  const auto cut = [](int &low_end, int low_own, int &high_start, int high_own) {
    const int middle = low_own + (high_own - low_own) / 2;
    low_end = std::max(low_own, std::min(low_end, middle - kNodeGap / 2));
    high_start = std::min(high_own, std::max(high_start, middle + kNodeGap / 2));
  };
  if (first.right <= second.left)
    cut(a.box.right, first.right, b.box.left, second.left);
  else if (second.right <= first.left)
    cut(b.box.right, second.right, a.box.left, first.left);
  else if (first.bottom <= second.top)
    cut(a.box.bottom, first.bottom, b.box.top, second.top);
  else
    cut(b.box.bottom, second.bottom, a.box.top, first.top);
}

// Both sides grow alike, so that the centre stays.
void keep_centre(NodePlace &place, const Rect &own) {
  const int dx = std::min(own.left - place.box.left, place.box.right - own.right);
  const int dy = std::min(own.top - place.box.top, place.box.bottom - own.bottom);
  place.box = {own.left - dx, own.top - dy, own.right + dx, own.bottom + dy};
}

void part_all(std::vector<NodePlace> &nodes) {
  std::vector<std::size_t> order(nodes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&](std::size_t a, std::size_t b) { return nodes[a].box.left < nodes[b].box.left; });
  for (std::size_t i = 0; i < order.size(); ++i) {
    NodePlace &place = nodes[order[i]];
    for (std::size_t j = i + 1; j < order.size(); ++j) {
      if (nodes[order[j]].box.left > place.box.right + kNodeGap)
        break;
      part(place, nodes[order[j]]);
    }
  }
}

void choose_font(NodePlace &place) {
  const std::string_view label = label_of(place.seg);
  for (; place.font.size > kSmallestFont; --place.font.size) {
    const int height = measured_height(place.font);
    const int room = place.box.width() - 2 * side_room(place.seg, place.box, height) + 2;
    if (measured_width(label, place.font) <= room && height <= place.box.height())
      return;
  }
}

} // namespace

int hexagon_slant(const Rect &box) {
  return std::max(1, std::min(box.height() / 3, box.width() / 4));
}

namespace {

// True when an arrow that arrives is too short to carry its number.
bool short_arrows(const Segm *node, const Font &font) {
  return std::any_of(node->segb_ptr.begin(), node->segb_ptr.end(), [&](const Segm *arc) {
    const Segm *start = arc_start(arc);
    return start != nullptr && node->ly - start->uy < number_stretch(font);
  });
}

} // namespace

Rect fit_node(const Segm *node, int inputs, const Font &font) {
  const Rect own = own_box(node);
  const std::string_view label = label_of(node);
  int width = 0;
  int height = 0;
  if (!label.empty()) {
    const int text_height = measured_height(font);
    height = text_height + 2 * end_room(node);
    // The slant is that of the box as it will be: wide enough for a third of its height.
    const Rect high = grown(own, 2 * height, height);
    width = measured_width(label, font) + 2 * side_room(node, high, text_height);
  }
  if (inputs > 1) {
    const int number = measured_width(std::to_string(inputs), number_font(font));
    const int pitch = short_arrows(node, font) ? 2 * number + 10 : number + 8;
    width = std::max(width, (inputs + 1) * pitch);
  }
  return grown(own, width, height);
}

std::vector<NodePlace> place_nodes(const WinInfo *wi, const Font &font) {
  std::vector<NodePlace> nodes;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr || !is_node(seg) || (seg->style & kHidden) != 0)
      continue;
    const bool numbered = seg->type == kBox && wi->wtype != kNetworkPicture;
    const int inputs = numbered ? static_cast<int>(seg->segb_ptr.size()) : 0;
    NodePlace place;
    place.seg = seg;
    place.font = font;
    place.box = fit_node(seg, std::min(inputs, 100), place.font);
    nodes.push_back(place);
  }
  part_all(nodes);
  for (NodePlace &place : nodes) {
    keep_centre(place, own_box(place.seg));
    place.slant = hexagon_slant(place.box);
    choose_font(place);
  }
  return nodes;
}

} // namespace velora
