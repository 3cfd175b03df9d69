// Making segments: the growth of a picture's array, the geometry of new nodes, the result node and
// arcs. Called by the drawing tools, the builder, the network and the segment file.
#include "editor/model/vel_segs.h"

#include <algorithm>
#include <new>

#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/text_measures.h"

namespace velora {

int gNodeTextSize = 15;
int fdef_res = 1;

namespace {

struct ToolShape {
  int tool;
  int type;
  int style;
};

constexpr ToolShape kToolShapes[] = {
    {kToolHexagon, kHexagon, kPlain},  {kToolConstructor, kBox, kDouble},
    {kToolFunction, kBox, kPlain},     {kToolRecursive, kBox, kBold},
    {kToolType, kHexagon, kDouble},    {kToolRecursiveToo, kBox, kBold},
    {kToolParameter, kHexagon, kBold}, {kToolJunction, kJunction, kBold},
    {kToolHold, kHoldValue, kPlain},
};

// The size of a picture window, for pictures that no window shows.
constexpr int kPictureWidth = 450;
constexpr int kPictureHeight = 360;

std::unique_ptr<Segm> fresh_segment(const char *failure) {
  std::unique_ptr<Segm> seg(new (std::nothrow) Segm);
  if (seg == nullptr)
    orvek_error(failure);
  return seg;
}

void set_shape(Segm *seg, int tool) {
  for (const ToolShape &shape : kToolShapes) {
    if (shape.tool != tool)
      continue;
    seg->type = shape.type;
    seg->style = shape.style;
  }
}

// The provisional box of a node; drawing fits it to the label.
void set_box(Segm *seg, int h, int x, int y) {
  const bool box = seg->type == kBox;
  const bool junction = seg->type == kJunction;
  const int width = box ? 3 * h / 2 : h / 2;
  const int height = junction ? h / 2 : h;
  seg->lx = x - (box ? 3 * h / 2 : h / 4);
  seg->ly = y - (junction ? h / 4 : h / 2);
  seg->ux = seg->lx + width;
  seg->uy = seg->ly + height;
}

} // namespace

int text_size_of(const WinInfo *wi) {
  return std::clamp(wi->txtsze, 8, 22);
}

Font picture_font(const WinInfo *wi) {
  const int size = text_size_of(wi);
  const bool offered = size == 8 || size == 10 || size == 16 || size == 22;
  return Font{offered ? size : 12, false, false};
}

// h = height of the font, scaled by gNodeTextSize / txtsze: zooming leaves it nearly as it is.
int NodeHeight(const WinInfo *wi) {
  if (wi == nullptr)
    return measured_height(Font{});
  return measured_height(picture_font(wi)) * gNodeTextSize / text_size_of(wi);
}

Rect picture_area(const WinInfo *wi) {
  if (wi->win != 0)
    return gDesktop->client_rect(wi->win);
  if (wi->wth > 0 && wi->ht > 0)
    return {0, 0, wi->wth, wi->ht};
  return {0, 0, kPictureWidth, kPictureHeight};
}

Segm *extra_segment(WinInfo *wi) {
  std::unique_ptr<Segm> seg = fresh_segment("extra_segment: mMALLOC failed");
  if (seg == nullptr)
    return nullptr;
  const int slot = wi->seg_ct + 1;
  wi->seg_ments.resize(slot + 1);
  wi->seg_ments.put(slot, std::move(seg));
  wi->seg_ct = slot;
  return wi->seg_ments[slot];
}

int make_all_extra_segment(WinInfo *wi) {
  wi->seg_ments.resize(wi->seg_ct + 1);
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    std::unique_ptr<Segm> seg = fresh_segment("make_all_extra_segment: mMALLOC failed");
    if (seg == nullptr)
      return 0;
    wi->seg_ments.put(slot, std::move(seg));
  }
  return 1;
}

void initialise_segment(const WinInfo *wi, Segm *sptr, int id, int nodetype, int x, int y) {
  set_shape(sptr, nodetype);
  set_box(sptr, NodeHeight(wi), x, y);
  sptr->segnum = id;
  sptr->status = 0;
  sptr->label.assign(sptr->type == kJunction ? 1 : 0, ' ');
  sptr->annot.clear();
  sptr->segb_ptr.clear();
  sptr->segf_ptr.clear();
}

int add_node(WinInfo *wi, int nodetype, int x, int y) {
  Segm *seg = extra_segment(wi);
  if (seg == nullptr)
    return 0;
  // Parameters near the top belong to the band of inputs, all at one height.
  const int h = NodeHeight(wi);
  if (nodetype == kToolParameter && y < 2 * h)
    y = h;
  initialise_segment(wi, seg, wi->seg_ct, nodetype, x, y);
  return wi->seg_ct;
}

int setup_for_fdef(WinInfo *wi) {
  const Rect area = picture_area(wi);
  const int tool = wi->wtype == kConstructorsPicture ? kToolType : kToolParameter;
  fdef_res = add_node(wi, tool, area.width() / 2, area.height() - NodeHeight(wi));
  if (fdef_res == 0)
    return 0;
  wi->saved = 0;
  return 1;
}

void make_pointer_space(std::vector<Segm *> &list) {
  if (list.size() == list.capacity())
    list.reserve(2 * list.size() + 1);
}

int put_arc_between(WinInfo *wi, int from, int to, int connection) {
  Segm *start = wi->seg_ments[from];
  Segm *end = wi->seg_ments[to];
  if (start == nullptr || end == nullptr || !is_node(start) || !is_node(end))
    return 0;
  // All space is made before anything is linked, so that memory running out leaves no half link.
  make_pointer_space(start->segf_ptr);
  make_pointer_space(end->segb_ptr);
  std::vector<Segm *> from_start{start};
  std::vector<Segm *> to_end{end};
  Segm *arc = extra_segment(wi);
  if (arc == nullptr)
    return 0;
  arc->type = connection;
  arc->segnum = wi->seg_ct;
  const bool down = start->ly < end->uy;
  arc->lx = start->box().centre().x;
  arc->ly = down ? start->uy : start->ly;
  arc->ux = end->box().centre().x;
  arc->uy = down ? end->ly : end->uy;
  arc->segb_ptr = std::move(from_start);
  arc->segf_ptr = std::move(to_end);
  start->segf_ptr.push_back(arc);
  end->segb_ptr.push_back(arc);
  return arc->segnum;
}

} // namespace velora
