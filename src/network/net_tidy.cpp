// Hands a network picture to the layered layout and takes the places over.
#include "network/net_tidy.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "editor/model/layered_layout.h"
#include "network/net_view.h"

namespace velora {

namespace {

struct Nodes {
  std::vector<Segm *> list;
  std::unordered_map<const Segm *, int> number;
};

Nodes visible_nodes(const WinInfo *wi) {
  Nodes nodes;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr || !is_node(seg) || is_hidden(seg))
      continue;
    nodes.number.emplace(seg, static_cast<int>(nodes.list.size()));
    nodes.list.push_back(seg);
  }
  return nodes;
}

// Arcs between visible nodes, and ways over hidden ones.
std::vector<LayeredArrow> arrows_among(const WinInfo *wi, const Nodes &nodes) {
  std::vector<LayeredArrow> arrows;
  const auto add = [&](const Segm *from, const Segm *to) {
    const auto start = nodes.number.find(from);
    const auto end = nodes.number.find(to);
    if (start != nodes.number.end() && end != nodes.number.end())
      arrows.push_back({start->second, end->second});
  };
  for (const Segm *node : nodes.list)
    for (const Segm *arc : node->segf_ptr)
      add(node, arc_end(arc));
  for (const auto &[from, to] : look_at_network(wi).skipped)
    add(from, to);
  return arrows;
}

void move_to(Segm *seg, Point corner) {
  const int dx = corner.x - seg->lx;
  const int dy = corner.y - seg->ly;
  seg->lx += dx;
  seg->ux += dx;
  seg->ly += dy;
  seg->uy += dy;
}

} // namespace

int tidy_network(WinInfo *wi) {
  const Nodes nodes = visible_nodes(wi);
  std::vector<LayeredBox> boxes;
  for (const Segm *seg : nodes.list)
    boxes.push_back({std::max(1, seg->ux - seg->lx), std::max(1, seg->uy - seg->ly), -1,
                     is_pinned(seg), Point{seg->lx, seg->ly}});
  LayeredOptions options;
  options.keep_places = true;
  options.wrap_width = wrap_width_for(boxes, options);
  const LayeredResult result = lay_out_layers(boxes, arrows_among(wi, nodes), options);
  int moved = 0;
  for (std::size_t i = 0; i < nodes.list.size(); ++i) {
    if (result.corners[i] == Point{nodes.list[i]->lx, nodes.list[i]->ly})
      continue;
    move_to(nodes.list[i], result.corners[i]);
    ++moved;
  }
  return moved;
}

bool boxes_overlap(const WinInfo *wi) {
  const Nodes nodes = visible_nodes(wi);
  std::vector<LayeredBox> boxes;
  std::vector<Point> corners;
  for (const Segm *seg : nodes.list) {
    boxes.push_back({seg->ux - seg->lx, seg->uy - seg->ly, -1, false, {}});
    corners.push_back({seg->lx, seg->ly});
  }
  return layered_faults(boxes, {}, corners).overlaps != 0;
}

} // namespace velora
