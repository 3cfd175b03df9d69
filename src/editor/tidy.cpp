// The layout of one picture on the engine for layered layouts. What a picture means lies in two
// orders, that of the arguments and that of each node's inputs; both are noted before and compared
// afterwards, and a layout that would change one is not taken.
//
// In a function picture the arguments make the first row, in the band; the rest stands below, each
// node as far above the result as its longest way to it. Other pictures have no band.
#include "editor/tidy.h"

#include <algorithm>
#include <map>

#include "core/events.h"
#include "editor/model/layered_layout.h"
#include "editor/model/vel_segs.h"
#include "editor/picture_walk.h"
#include "platform/response.h"
#include "platform/utf8.h"

namespace velora {

namespace {

constexpr int kGap = 16;         // between boxes of a row
constexpr int kRowDistance = 24; // between rows
constexpr int kMargin = 20;
constexpr int kLetter = 7; // about what a character takes when it is shown
constexpr int kLetterRoom = 8;

std::vector<Segm *> nodes_of(const WinInfo *wi) {
  std::vector<Segm *> nodes;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr && is_node(seg))
      nodes.push_back(seg);
  return nodes;
}

bool in_band(const WinInfo *wi, const Segm *node) {
  return wi->wtype == kFunctionPicture && node->segnum > 1 && node->ly < NodeHeight(wi);
}

// The box of a node with room for its label.
Rect shown_box(const Segm *node) {
  Rect box = node->box();
  const int label = static_cast<int>(count_characters(node->label)) * kLetter + kLetterRoom;
  const int more = node->type == kJunction ? 0 : std::max(0, label - box.width());
  box.left -= more / 2;
  box.right += more - more / 2;
  return box;
}

bool overlap(const Rect &a, const Rect &b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// What a picture means by its places: the order of the arguments, and of the inputs of each node.
struct Meaning {
  std::vector<int> arguments;
  std::vector<std::vector<int>> inputs;
  friend bool operator==(const Meaning &, const Meaning &) = default;
};

Meaning meaning_of(const WinInfo *wi) {
  Meaning meaning;
  for (const Segm *node : argument_nodes(wi))
    meaning.arguments.push_back(node->segnum);
  for (const Segm *node : nodes_of(wi)) {
    std::vector<int> &inputs = meaning.inputs.emplace_back();
    for (const Segm *arc : cyclic_order_types_of(node))
      inputs.push_back(arc->segnum);
  }
  return meaning;
}

void move_by(Segm *node, int dx, int dy) {
  node->lx += dx;
  node->ux += dx;
  node->ly += dy;
  node->uy += dy;
}

// Moves a node so that the box it is shown with has its upper left corner there.
void move_shown(Segm *node, int left, int top) {
  const Rect box = shown_box(node);
  move_by(node, left - box.left, top - box.top);
}

// Pinned nodes stay, and all that are not selected when some are.
bool may_move(const Segm *node, bool part) {
  return (node->style & kPinned) == 0 && (!part || (node->status & kSelected) != 0);
}

// The nodes of a picture with their numbers, arrows and rows. Arguments come first.
struct Graph {
  WinInfo *wi;
  std::vector<Segm *> nodes;
  std::size_t arguments = 0; // how many of them
  std::vector<LayeredArrow> arrows;
  std::vector<int> rows;

  explicit Graph(WinInfo *picture) : wi(picture), nodes(argument_nodes(picture)) {
    arguments = nodes.size();
    for (Segm *node : nodes_of(wi))
      if (!in_band(wi, node))
        nodes.push_back(node);
    std::map<const Segm *, int> number;
    for (std::size_t i = 0; i < nodes.size(); ++i)
      number.emplace(nodes[i], static_cast<int>(i));
    for (const Segm *node : nodes)
      for (const Segm *arc : cyclic_order_types_of(node))
        arrows.push_back({number.at(arc_start(arc)), number.at(node)});
    find_rows();
  }

  [[nodiscard]] bool is_argument(std::size_t i) const { return i < arguments; }

  // Every node stands as many rows above the lowest as its longest way down; the arguments make
  // the row above all. Nodes in a circle have no row, -1.
  void find_rows() {
    std::vector<int> depth(nodes.size());
    std::vector<int> waiting(nodes.size());
    std::vector<std::vector<std::size_t>> feeders(nodes.size());
    for (const LayeredArrow &arrow : arrows) {
      feeders[static_cast<std::size_t>(arrow.to)].push_back(static_cast<std::size_t>(arrow.from));
      ++waiting[static_cast<std::size_t>(arrow.from)];
    }
    // A node is taken when all that it feeds have been: then its longest way down is known.
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < nodes.size(); ++i)
      if (waiting[i] == 0)
        open.push_back(i);
    int deepest = 0;
    while (!open.empty()) {
      const std::size_t at = open.back();
      open.pop_back();
      if (!is_argument(at))
        deepest = std::max(deepest, depth[at]);
      for (const std::size_t above : feeders[at]) {
        depth[above] = std::max(depth[above], depth[at] + 1);
        if (--waiting[above] == 0)
          open.push_back(above);
      }
    }
    const int first = arguments == 0 ? 0 : 1;
    for (std::size_t i = 0; i < nodes.size(); ++i)
      rows.push_back(is_argument(i) ? 0 : waiting[i] == 0 ? first + deepest - depth[i] : -1);
  }

  [[nodiscard]] bool arguments_feed() const {
    return std::any_of(nodes.begin(), nodes.begin() + static_cast<std::ptrdiff_t>(arguments),
                       [](const Segm *node) { return !node->segf_ptr.empty(); });
  }

  // The height below which the rows under the arguments begin.
  [[nodiscard]] int band_bottom() const {
    int bottom = wi->wtype == kFunctionPicture ? NodeHeight(wi) : 0;
    for (std::size_t i = 0; i < arguments; ++i)
      bottom = std::max(bottom, nodes[i]->uy);
    return bottom;
  }
};

// Puts arguments that feed nothing side by side over the middle of the rest.
void centre_arguments(const Graph &graph) {
  int width = -kGap;
  for (std::size_t i = 0; i < graph.arguments; ++i)
    width += shown_box(graph.nodes[i]).width() + kGap;
  int left = kMargin;
  int right = kMargin;
  for (std::size_t i = graph.arguments; i < graph.nodes.size(); ++i) {
    left = i == graph.arguments ? shown_box(graph.nodes[i]).left
                                : std::min(left, shown_box(graph.nodes[i]).left);
    right = std::max(right, shown_box(graph.nodes[i]).right);
  }
  int x = left + (right - left - width) / 2;
  int back = 0;
  if (x < kMargin) { // the arguments are wider: the rest moves under their middle
    back = kMargin - x;
    x = kMargin;
  }
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    Segm *node = graph.nodes[i];
    const Rect box = shown_box(node);
    move_shown(node, graph.is_argument(i) ? x : box.left + back, box.top);
    if (graph.is_argument(i))
      x += box.width() + kGap;
  }
}

// The layout by the engine. The order of the arguments is made that of the inputs of one more box
// below all others, which nobody sees.
void lay_out_by_engine(const Graph &graph, bool selected, bool part) {
  std::vector<LayeredBox> boxes;
  const auto moves = [&](const Segm *node) { return may_move(node, selected); };
  int lowest = 0;
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    const Rect box = shown_box(graph.nodes[i]);
    boxes.push_back({box.width(), box.height(), graph.rows[i], !moves(graph.nodes[i]),
                     Point{box.left, box.top}});
    lowest = std::max(lowest, graph.rows[i]);
  }
  std::vector<LayeredArrow> arrows = graph.arrows;
  if (graph.arguments > 1) {
    for (std::size_t i = 0; i < graph.arguments; ++i)
      arrows.push_back({static_cast<int>(i), static_cast<int>(boxes.size())});
    boxes.push_back({1, 1, lowest + 1, false, std::nullopt});
  }
  LayeredOptions options;
  options.gap = kGap;
  options.row_distance = kRowDistance;
  options.keep_input_order = true;
  options.origin = {kMargin, graph.arguments == 0 ? graph.band_bottom() + kMargin : 0};
  const LayeredResult result = lay_out_layers(boxes, arrows, options);
  // The first row of the engine is that of the arguments, which keep their own height.
  int shift = 0;
  for (std::size_t i = graph.arguments; i < graph.nodes.size() && graph.arguments > 0; ++i)
    if (moves(graph.nodes[i]))
      shift = std::max(shift, graph.band_bottom() + kMargin - result.corners[i].y);
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    Segm *node = graph.nodes[i];
    if (moves(node))
      move_shown(node, result.corners[i].x,
                 graph.is_argument(i) ? shown_box(node).top
                                      : result.corners[i].y + (part ? 0 : shift));
  }
  if (!part && !graph.arguments_feed())
    centre_arguments(graph);
}

// The layout that always keeps every order: from left to right as the nodes stand now, each with
// its middle right of the one before, in its row behind what stands there.
void lay_out_in_line(const Graph &graph) {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < graph.nodes.size(); ++i)
    order.push_back(i);
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    const Segm *one = graph.nodes[a];
    const Segm *other = graph.nodes[b];
    const int x = one->box().centre().x;
    const int other_x = other->box().centre().x;
    return x != other_x           ? x < other_x
           : one->ly != other->ly ? one->ly < other->ly
                                  : one->segnum < other->segnum;
  });
  std::map<int, int> row_end;
  int middle = kMargin;
  const int top = graph.band_bottom() + kMargin;
  int tallest = 0;
  for (const Segm *node : graph.nodes)
    tallest = std::max(tallest, shown_box(node).height());
  for (const std::size_t i : order) {
    Segm *node = graph.nodes[i];
    const Rect box = shown_box(node);
    const int row = std::max(0, graph.rows[i] - (graph.arguments == 0 ? 0 : 1));
    int &end = row_end.try_emplace(graph.is_argument(i) ? -1 : row, 0).first->second;
    const int left = std::max(end + kGap, middle + 2 - box.width() / 2);
    move_shown(node, left, graph.is_argument(i) ? box.top : top + row * (tallest + kRowDistance));
    end = left + box.width();
    middle = node->box().centre().x;
  }
}

std::vector<Rect> places_of(const WinInfo *wi) {
  std::vector<Rect> places;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    places.push_back(wi->seg_ments[slot] == nullptr ? Rect{} : wi->seg_ments[slot]->box());
  return places;
}

void put_back(WinInfo *wi, const std::vector<Rect> &places) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr) {
      const Rect &place = places[static_cast<std::size_t>(slot) - 1];
      seg->lx = place.left;
      seg->ly = place.top;
      seg->ux = place.right;
      seg->uy = place.bottom;
    }
}

} // namespace

std::vector<Segm *> argument_nodes(const WinInfo *wi) {
  std::vector<Segm *> arguments;
  if (wi->wtype == kFunctionPicture)
    for (const int slot : make_input_numbers(wi))
      arguments.push_back(wi->seg_ments[slot]);
  return arguments;
}

std::string layout_fault(const WinInfo *wi) {
  std::vector<Segm *> nodes = nodes_of(wi);
  for (const Segm *node : nodes)
    if (in_band(wi, node) && !node->segb_ptr.empty())
      return format_text("%s stands among the arguments", node->label.c_str());
  // Only nodes that begin before one ends can lie on it.
  std::sort(nodes.begin(), nodes.end(),
            [](const Segm *a, const Segm *b) { return shown_box(a).left < shown_box(b).left; });
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    CheckForUserEvents(0);
    const Rect box = shown_box(nodes[i]);
    for (std::size_t j = i + 1; j < nodes.size() && shown_box(nodes[j]).left < box.right; ++j)
      if (overlap(box, shown_box(nodes[j])))
        return format_text("%s and %s lie on each other", nodes[i]->label.c_str(),
                           nodes[j]->label.c_str());
  }
  return {};
}

void arcs_follow(WinInfo *wi) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *arc = wi->seg_ments[slot];
    if (arc == nullptr || !is_arc(arc))
      continue;
    const Segm *start = arc_start(arc);
    const Segm *end = arc_end(arc);
    if (start == nullptr || end == nullptr)
      continue;
    const bool down = start->ly < end->uy;
    arc->lx = start->box().centre().x;
    arc->ly = down ? start->uy : start->ly;
    arc->ux = end->box().centre().x;
    arc->uy = down ? end->ly : end->uy;
  }
}

bool tidy_picture(WinInfo *wi) {
  const std::vector<Segm *> nodes = nodes_of(wi);
  const bool selected = std::any_of(
      nodes.begin(), nodes.end(), [](const Segm *node) { return (node->status & kSelected) != 0; });
  // What must stay where it is leaves no room for moving the whole about.
  const bool part = selected || std::any_of(nodes.begin(), nodes.end(), [](const Segm *node) {
                      return (node->style & kPinned) != 0;
                    });
  const Meaning before = meaning_of(wi);
  const std::vector<Rect> places = places_of(wi);
  const Graph graph(wi);
  lay_out_by_engine(graph, selected, part);
  if (meaning_of(wi) != before && !part) {
    put_back(wi, places);
    lay_out_in_line(graph);
  }
  const bool kept = meaning_of(wi) == before;
  if (!kept)
    put_back(wi, places);
  arcs_follow(wi);
  return kept;
}

} // namespace velora
