// Copying a selection into a new window, and collapse: copying what a dragged rectangle holds.
#include <algorithm>
#include <unordered_map>

#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

namespace {

// The smallest rectangle that a collapse accepts: higher and wider than this.
constexpr int kSmallestDrag = 20;

Point node_centre(const Segm *node) {
  const Point centre = node->box().centre();
  return node->type == kJunction ? Point{node->lx + (node->uy - node->ly) / 4, centre.y} : centre;
}

// A window for copies: functions and types get their result node, a network its name.
WinInfo *window_for_copies(int wtype) {
  WinInfo *wi = NewWindow(wtype);
  if (wi == nullptr)
    return nullptr;
  if (wtype != kNetworkPicture)
    return setup_for_fdef(wi) != 0 ? wi : nullptr;
  wi->name = kNetworkName;
  wi->saved = 0;
  return wi;
}

using SlotMap = std::unordered_map<const Segm *, int>;

// The copy of an arc's end; for an end that was not copied a new type node at the arc's own end
// point, shifted as the first segments of the two windows are.
int copied_end(const WinInfo *wi, WinInfo *to, const SlotMap &copy_of, const Segm *end, Point at) {
  if (const auto found = copy_of.find(end); end != nullptr && found != copy_of.end())
    return found->second;
  const Segm *old_first = wi->seg_ments[1];
  const Segm *new_first = to->seg_ments[1];
  if (old_first != nullptr && new_first != nullptr) {
    at.x += new_first->lx - old_first->lx;
    at.y += new_first->ly - old_first->ly;
  }
  return add_node(to, kToolType, at.x, at.y);
}

void copy_arc(const WinInfo *wi, WinInfo *to, const SlotMap &copy_of, const Segm *arc) {
  const bool whole = copy_of.contains(arc_start(arc)) && copy_of.contains(arc_end(arc));
  if (!whole && (arc->status & kSelected) == 0)
    return;
  const int from = copied_end(wi, to, copy_of, arc_start(arc), {arc->lx, arc->ly});
  const int into = copied_end(wi, to, copy_of, arc_end(arc), {arc->ux, arc->uy});
  put_arc_between(to, from, into, kArc);
}

// The collapse as it runs.
struct Collapse {
  WinInfo *from;
  WinInfo *to;
  const RectContents &contents;
};

// Copies a node, noting the copy's number in the node itself.
int copy_marked(Collapse &run, Segm *node) {
  const int copy = transfer_add_node(run.to, node);
  node->segnum = copy;
  node->status |= kCopiedBit;
  return copy;
}

// Copies what feeds `node`, a copied node, through the arcs inside the rectangle, depth first. The
// nodes still to be fed stand on a stack of their own, since pictures may be deep.
void StepBack(Collapse &run, Segm *first) {
  struct Step {
    Segm *node;
    std::size_t next_arc;
  };
  std::vector<Step> path{{first, 0}};
  while (!path.empty()) {
    Segm *node = path.back().node;
    if (path.back().next_arc >= node->segb_ptr.size()) {
      path.pop_back();
      continue;
    }
    const Segm *arc = node->segb_ptr[path.back().next_arc++];
    Segm *start = arc_start(arc);
    if (start == nullptr || find_seg_in_array(arc->segnum, run.contents.inside) == 0 ||
        find_seg_in_array(arc->segnum, run.contents.inputs) != 0)
      continue;
    const bool fresh = (start->status & kCopiedBit) == 0;
    if (fresh)
      copy_marked(run, start);
    put_arc_between(run.to, start->segnum, node->segnum, kArc);
    if (fresh)
      path.push_back({start, 0});
  }
}

// Clears the marks of a collapse and restores the numbers of slots 1 to `last`.
void clear_marks(WinInfo *wi, int last) {
  for (int slot = 1; slot <= last; ++slot) {
    if (Segm *seg = wi->seg_ments[slot]; seg != nullptr) {
      seg->status &= ~kCopiedBit;
      seg->segnum = slot;
    }
  }
}

// Takes the marks of a collapse away when it ends, also when it is abandoned. Kept: the last slot
// stays marked, with the number of its copy, until the next collapse or save.
struct MarkGuard {
  WinInfo *wi;
  ~MarkGuard() { clear_marks(wi, wi->seg_ct - 1); }
};

} // namespace

int transfer_add_node(WinInfo *to, const Segm *node) {
  Segm *copy = extra_segment(to);
  if (copy == nullptr)
    return 0;
  copy->type = node->type;
  copy->style = node->style;
  const Point centre = node_centre(node);
  initialise_segment(to, copy, to->seg_ct, kToolCopied, centre.x, centre.y);
  copy->label = node->label;
  return to->seg_ct;
}

WinInfo *CopySelectedNodes(WinInfo *wi) {
  WinInfo *to = window_for_copies(wi->wtype);
  if (to == nullptr)
    return nullptr;
  SlotMap copy_of;
  for (int slot = wi->wtype == kNetworkPicture ? 1 : 2; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && is_node(seg) && (seg->status & kSelected) != 0)
      copy_of.emplace(seg, transfer_add_node(to, seg));
  }
  for (int slot = 2; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && is_arc(seg))
      copy_arc(wi, to, copy_of, seg);
  }
  gDesktop->invalidate(to->win);
  return to;
}

RectContents search_for_segment_in_rect(const WinInfo *wi, const Rect &rect) {
  RectContents contents;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr)
      continue;
    const bool start = rect.contains({seg->lx, seg->ly});
    const bool end = rect.contains({seg->ux, seg->uy});
    if (start && end)
      contents.inside.push_back(slot);
    else if (end && is_arc(seg))
      contents.inputs.push_back(slot);
    else if (start && is_arc(seg))
      contents.outputs.push_back(slot);
  }
  return contents;
}

int find_seg_in_array(int segi, std::span<const int> list) {
  return std::binary_search(list.begin(), list.end(), segi) ? 1 : 0;
}

WinInfo *DoCopyNodes(WinInfo *wi, const Rect &drag) {
  if (wi->wtype == kNetworkPicture)
    return nullptr;
  const Rect rect = drag.normalised();
  if (rect.height() <= kSmallestDrag || rect.width() <= kSmallestDrag) {
    DisplayResponse("Please redrag for function collapse\n");
    return nullptr;
  }
  const RectContents contents = search_for_segment_in_rect(wi, rect);
  if (contents.inside.empty()) {
    DisplayResponse("No nodes selected\n");
    return nullptr;
  }
  Segm *last = contents.outputs.empty() ? nullptr : arc_start(wi->seg_ments[contents.outputs[0]]);
  if (last == nullptr) {
    DisplayResponse("Please ensure drag rectangle base cuts arrow\n");
    if (wi->win != 0)
      gDesktop->invalidate(wi->win);
    return nullptr;
  }
  WinInfo *to = window_for_copies(wi->wtype);
  if (to == nullptr)
    return nullptr;
  clear_marks(wi, wi->seg_ct);
  const MarkGuard guard{wi};
  Collapse run{wi, to, contents};
  put_arc_between(to, copy_marked(run, last), fdef_res, kArc);
  StepBack(run, last);
  gDesktop->invalidate(to->win);
  return to;
}

} // namespace velora
