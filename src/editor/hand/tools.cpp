// Placing, choosing, moving, removing and resizing nodes.
#include "editor/hand/tools.h"

#include <algorithm>
#include <array>

#include "editor/edit.h"
#include "editor/hand/hand.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"

namespace velora {

namespace {

struct ToolName {
  int mode;
  const char *name;
};
constexpr ToolName kToolNames[] = {
    {kToolHexagon, "Add Constant"},  {kToolConstructor, "Add Constructor"},
    {kToolFunction, "Add Function"}, {kToolRecursive, "Add Recursive Function"},
    {kToolType, "Add Type"},         {kToolRecursiveToo, "Add Import List"},
    {kToolParameter, "Add Input"},   {kToolJunction, "Add Junction"},
    {kToolHold, "Add Hold Value"},
};

// The smallest side that shrinking leaves.
constexpr int kSmallestSide = 8;
constexpr int kLargestSide = 2000;

void scale(int &low, int &high, int times, int parts) {
  const int size = std::clamp((high - low) * times / parts, kSmallestSide, kLargestSide);
  const int middle = low + (high - low) / 2;
  low = middle - size / 2;
  high = low + size;
}

} // namespace

bool places_nodes(int mode) {
  return tool_name(mode)[0] != '\0';
}

const char *tool_name(int mode) {
  for (const ToolName &row : kToolNames)
    if (row.mode == mode)
      return row.name;
  return "";
}

void set_up_fresh(WinInfo *wi) {
  if (wi->seg_ct != 0)
    return;
  if (wi->wtype == kNetworkPicture)
    wi->name = kNetworkName;
  else
    setup_for_fdef(wi);
  wi->saved = 0;
}

std::vector<int> selected_slots(const WinInfo *wi, bool nodes_only) {
  std::vector<int> slots;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && (seg->status & kSelected) != 0 && (!nodes_only || is_node(seg)))
      slots.push_back(slot);
  }
  return slots;
}

int selected_node(const WinInfo *wi) {
  const std::vector<int> nodes = selected_slots(wi, true);
  return nodes.size() == 1 ? nodes.front() : 0;
}

void select_these(WinInfo *wi, const std::vector<int> &slots) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr)
      seg->status &= ~kSelected;
  for (const int slot : slots)
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr)
      seg->status |= kSelected;
}

void select_only(WinInfo *wi, int slot) {
  select_these(wi, {slot});
}

void toggle_selected(WinInfo *wi, int slot) {
  if (Segm *seg = wi->seg_ments[slot]; seg != nullptr)
    seg->status ^= kSelected;
}

bool may_remove(const WinInfo *wi, int slot) {
  return slot != 1 || wi->wtype == kNetworkPicture;
}

int place_node_at(WinInfo *wi, int tool, Point at, int arc_below) {
  set_up_fresh(wi);
  const int slot = add_node(wi, tool, at.x, std::max(at.y, NodeHeight(wi) / 2));
  if (slot == 0)
    return 0;
  Segm *node = wi->seg_ments[slot];
  keep_below_band(wi, node);
  const Segm *arc = wi->seg_ments[arc_below];
  if (arc != nullptr && is_arc(arc) && tool != kToolParameter)
    insert_into_arc(wi, slot, arc_below);
  select_only(wi, slot);
  return slot;
}

void insert_into_arc(WinInfo *wi, int node, int arc) {
  const Segm *seg = wi->seg_ments[arc];
  if (seg == nullptr || !is_arc(seg) || arc_start(seg) == nullptr || arc_end(seg) == nullptr)
    return;
  const int from = arc_start(seg)->segnum;
  const int to = arc_end(seg)->segnum;
  if (from == node || to == node)
    return;
  remove_arc(arc, wi);
  put_arc_between(wi, from, node, kArc);
  put_arc_between(wi, node, to, kArc);
}

void move_selected(WinInfo *wi, int dx, int dy) {
  const std::vector<int> nodes = selected_slots(wi, true);
  // The whole selection stops at the upper edge, so that its nodes keep their distances.
  int highest = 0;
  for (const int slot : nodes)
    highest = std::min(highest, wi->seg_ments[slot]->ly + dy);
  for (const int slot : nodes) {
    Segm *node = wi->seg_ments[slot];
    const bool was_above = node->ly < 0;
    move_node(node, dx, was_above ? std::max(dy, 0) : dy - highest);
    keep_below_band(wi, node);
  }
}

void remove_slots(WinInfo *wi, const std::vector<int> &slots) {
  for (const int slot : slots)
    if (may_remove(wi, slot))
      remove_segment(slot, wi);
}

void remove_and_join(WinInfo *wi, const std::vector<int> &slots) {
  for (const int slot : slots) {
    const Segm *node = wi->seg_ments[slot];
    if (node == nullptr || !is_node(node) || !may_remove(wi, slot))
      continue;
    std::vector<int> fed;
    for (const Segm *arc : node->segf_ptr)
      if (arc_end(arc) != node)
        fed.push_back(arc_end(arc)->segnum);
    // Only one feeder says what is to run on; among several any choice would be a guess.
    const bool one = node->segb_ptr.size() == 1 && arc_start(node->segb_ptr[0]) != node;
    const int feeder = one ? arc_start(node->segb_ptr[0])->segnum : 0;
    remove_segment(slot, wi);
    for (const int to : fed)
      if (feeder != 0)
        put_arc_between(wi, feeder, to, kArc);
  }
  remove_slots(wi, slots);
}

void ResizeSelectedItems(WinInfo *wi, int which) {
  const int times = which == 2 ? 4 : 3;
  const int parts = which == 2 ? 3 : 4;
  for (const int slot : selected_slots(wi, true)) {
    Segm *node = wi->seg_ments[slot];
    const bool argument = node->ly < NodeHeight(wi);
    const int top = node->ly;
    scale(node->lx, node->ux, times, parts);
    scale(node->ly, node->uy, times, parts);
    // Growing makes no argument of a node, and shrinking makes none of an argument.
    if (argument != (node->ly < NodeHeight(wi)))
      move_node(node, 0, top - node->ly);
  }
}

std::vector<int> walking_order(const WinInfo *wi, bool nodes_only) {
  std::vector<int> nodes;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (wi->seg_ments[slot] != nullptr && is_node(wi->seg_ments[slot]))
      nodes.push_back(slot);
  // Rows are as high as a node: what stands a little higher does not come before its neighbours.
  const int row = std::max(1, NodeHeight(wi));
  std::sort(nodes.begin(), nodes.end(), [&](int a, int b) {
    const Point first = wi->seg_ments[a]->box().centre();
    const Point second = wi->seg_ments[b]->box().centre();
    const std::array one{first.y / row, first.x, first.y, a};
    const std::array other{second.y / row, second.x, second.y, b};
    return one < other;
  });
  if (nodes_only)
    return nodes;
  std::vector<int> order;
  for (const int slot : nodes) {
    order.push_back(slot);
    for (const Segm *arc : wi->seg_ments[slot]->segf_ptr)
      order.push_back(arc->segnum);
  }
  return order;
}

int node_towards(const PictureLayout &layout, int from, int dx, int dy) {
  const NodePlace *start = nullptr;
  for (const NodePlace &node : layout.nodes)
    if (node.seg->segnum == from)
      start = &node;
  if (start == nullptr)
    return layout.nodes.empty() ? 0 : layout.nodes.front().seg->segnum;
  const Point centre = start->box.centre();
  int best = 0;
  long long least = 0;
  for (const NodePlace &node : layout.nodes) {
    const Point other = node.box.centre();
    const long long along = static_cast<long long>(other.x - centre.x) * dx +
                            static_cast<long long>(other.y - centre.y) * dy;
    const long long aside = std::abs(static_cast<long long>(other.x - centre.x) * dy) +
                            std::abs(static_cast<long long>(other.y - centre.y) * dx);
    // What lies more aside than ahead is not in that direction.
    if (&node == start || along <= 0 || aside > 2 * along)
      continue;
    const long long distance = along + 2 * aside;
    if (best == 0 || distance < least) {
      best = node.seg->segnum;
      least = distance;
    }
  }
  return best;
}

} // namespace velora
