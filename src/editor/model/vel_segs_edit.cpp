// Finding, removing, compacting and copying the segments of one picture.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <unordered_map>

#include "editor/model/vel_segs.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

namespace {

// How near to an arc a click must be.
constexpr int kReach = 6;

// True when the point lies between the two corners, taken in either order.
bool in_span(const Rect &box, int x, int y) {
  return box.normalised().contains({x, y});
}

// Distance from the line through an arc's ends, truncated: |(y-ly)dx - (x-lx)dy| / length.
long long distance_from(const Rect &line, int x, int y) {
  const double dx = static_cast<double>(line.right) - line.left;
  const double dy = static_cast<double>(line.bottom) - line.top;
  const double px = static_cast<double>(x) - line.left;
  const double py = static_cast<double>(y) - line.top;
  return static_cast<long long>(std::fabs(py * dx - px * dy) / std::sqrt(dx * dx + dy * dy));
}

// Hidden nodes, and the arcs of hidden nodes.
bool is_out_of_sight(const Segm *seg) {
  const auto hidden = [](const Segm *node) {
    return node != nullptr && (node->style & kHidden) != 0;
  };
  return is_arc(seg) ? hidden(arc_start(seg)) || hidden(arc_end(seg)) : hidden(seg);
}

void redraw(const WinInfo *wi) {
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
}

// By address, not by number: after a collapse a number may be shared.
void remove_relptr_from_node(const Segm *seg, std::vector<Segm *> &list) {
  std::erase(list, seg);
}

int middle(int low, int high) {
  return static_cast<int>((static_cast<long long>(low) + high) / 2);
}

} // namespace

bool line_is_hit(const Rect &line, int x, int y) {
  if (line.left == line.right && line.top == line.bottom)
    return false;
  if (distance_from(line, x, y) > kReach)
    return false;
  const Rect span = line.normalised();
  // An upright or level line spans no area of its own.
  if (line.left == line.right)
    return std::abs(static_cast<long long>(x) - line.left) <= kReach && y >= span.top &&
           y <= span.bottom;
  if (line.top == line.bottom)
    return std::abs(static_cast<long long>(y) - line.top) <= kReach && x >= span.left &&
           x <= span.right;
  return in_span(span, x, y);
}

int search_for_segment(int x, int y, int nodeonly, const WinInfo *wi) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr)
      continue;
    if (is_out_of_sight(seg))
      continue;
    bool hit = false;
    if (nodeonly != 0)
      hit = is_node(seg) && seg->lx <= x && x <= seg->ux && seg->ly <= y && y <= seg->uy;
    else
      hit = is_arc(seg) ? line_is_hit(seg->box(), x, y) : in_span(seg->box(), x, y);
    if (hit)
      return slot;
  }
  return 0;
}

int NamedFunInWin(const WinInfo *wi, const std::string &name) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && seg->type == kBox && seg->label == name)
      return slot;
  }
  return 0;
}

std::vector<Segm *> cyclic_order_types_of(const Segm *node) {
  std::vector<Segm *> arcs = node->segb_ptr;
  std::erase_if(arcs, [](const Segm *arc) { return arc_start(arc) == nullptr; });
  std::stable_sort(arcs.begin(), arcs.end(), [](const Segm *a, const Segm *b) {
    const Segm *from = arc_start(a);
    const Segm *other = arc_start(b);
    const int x = middle(from->lx, from->ux);
    const int other_x = middle(other->lx, other->ux);
    if (x != other_x)
      return x < other_x;
    const int y = middle(from->ly, from->uy);
    const int other_y = middle(other->ly, other->uy);
    if (y != other_y)
      return y < other_y;
    return from->segnum < other->segnum;
  });
  return arcs;
}

void remove_arc(int segi, WinInfo *wi) {
  Segm *arc = wi->seg_ments[segi];
  if (arc == nullptr)
    return;
  for (Segm *start : arc->segb_ptr)
    remove_relptr_from_node(arc, start->segf_ptr);
  for (Segm *end : arc->segf_ptr)
    remove_relptr_from_node(arc, end->segb_ptr);
  redraw(wi);
  wi->seg_ments.drop(segi);
}

void remove_node(int segi, WinInfo *wi) {
  Segm *node = wi->seg_ments[segi];
  if (node == nullptr)
    return;
  // Arcs that still hang on the node lose that end.
  for (Segm *arc : node->segf_ptr)
    remove_relptr_from_node(node, arc->segb_ptr);
  for (Segm *arc : node->segb_ptr)
    remove_relptr_from_node(node, arc->segf_ptr);
  redraw(wi);
  wi->seg_ments.drop(segi);
}

namespace {

int slot_of(const WinInfo *wi, const Segm *seg) {
  if (wi->seg_ments[seg->segnum] == seg)
    return seg->segnum;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (wi->seg_ments[slot] == seg)
      return slot;
  return 0;
}

} // namespace

void remove_segment(int segi, WinInfo *wi) {
  const Segm *seg = wi->seg_ments[segi];
  if (seg == nullptr)
    return;
  if (is_arc(seg)) {
    remove_arc(segi, wi);
    return;
  }
  std::vector<int> arcs;
  for (const std::vector<Segm *> &list : {seg->segf_ptr, seg->segb_ptr})
    for (const Segm *arc : list)
      arcs.push_back(slot_of(wi, arc));
  for (const int arc : arcs)
    remove_arc(arc, wi); // an arc from a node to itself stands here twice
  remove_node(segi, wi);
}

void deleteSelectedItems(WinInfo *wi) {
  for (int slot = 2; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && (seg->status & kSelected) != 0)
      remove_segment(slot, wi);
  }
}

void CleanUpSegments(WinInfo *wi) {
  int filled = 0;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    if (wi->seg_ments[slot] == nullptr)
      continue;
    ++filled;
    if (filled != slot)
      wi->seg_ments.put(filled, wi->seg_ments.take(slot));
    // Also where nothing moved: files refer to segments by these numbers.
    wi->seg_ments[filled]->segnum = filled;
  }
  wi->seg_ct = filled;
  wi->seg_ments.resize(filled + 1);
}

void CopySegInfo(Segm *to, const Segm *from) {
  to->type = from->type;
  to->segnum = from->segnum;
  to->style = from->style;
  to->status = from->status;
  to->lx = from->lx;
  to->ly = from->ly;
  to->ux = from->ux;
  to->uy = from->uy;
  to->label = from->label;
  to->annot = from->annot;
}

int CopySegments(const SegmArray &fromsegs, int fn, SegmArray &tosegs, int *tn) {
  SegmArray copies;
  copies.resize(fn);
  std::unordered_map<const Segm *, Segm *> copy_of;
  for (int slot = 1; slot < fn; ++slot) {
    if (fromsegs[slot] == nullptr)
      continue;
    copies.put(slot, std::make_unique<Segm>());
    CopySegInfo(copies[slot], fromsegs[slot]);
    copy_of.emplace(fromsegs[slot], copies[slot]);
  }
  const auto copy_links = [&](const std::vector<Segm *> &links, std::vector<Segm *> &into) {
    for (const Segm *linked : links)
      if (const auto found = copy_of.find(linked); found != copy_of.end())
        into.push_back(found->second);
  };
  for (int slot = 1; slot < fn; ++slot) {
    if (fromsegs[slot] == nullptr)
      continue;
    copy_links(fromsegs[slot]->segb_ptr, copies[slot]->segb_ptr);
    copy_links(fromsegs[slot]->segf_ptr, copies[slot]->segf_ptr);
  }
  tosegs = std::move(copies);
  *tn = fn;
  return 1;
}

} // namespace velora
