// Looking at a picture for a script. Nothing is changed.
#include "shell/events/event_state.h"

#include "editor/hand/hand.h"
#include "platform/response.h"
#include "shell/picture_windows.h"
#include "shell/x_menus.h"

namespace velora {

namespace {

const char *cursor_name(CursorShape shape) {
  switch (shape) {
  case CursorShape::arrow:
    return "ArrowCursor";
  case CursorShape::busy:
    return "BusyCursor";
  case CursorShape::box:
    return "BoxCursor";
  case CursorShape::bold_box:
    return "BBoxCursor";
  case CursorShape::double_box:
    return "DBoxCursor";
  case CursorShape::hexagon:
    return "HexCursor";
  case CursorShape::bold_hexagon:
    return "BHexCursor";
  case CursorShape::double_hexagon:
    return "DHexCursor";
  case CursorShape::junction:
    return "JctCursor";
  case CursorShape::hand:
    return "HandCursor";
  case CursorShape::finger:
    return "FingerCursor";
  case CursorShape::start_join:
    return "SjnCursor";
  case CursorShape::end_join:
    return "EjnCursor";
  case CursorShape::ibeam:
    return "IbeamCursor";
  case CursorShape::cross:
    return "CrossCursor";
  }
  return "-";
}

const Segm *segment_meant(const WinInfo *wi, const EventPoint &point) {
  if (point.slot != 0)
    return wi->seg_ments[point.slot];
  for (int i = 1; i < wi->seg_ments.slots(); ++i)
    if (const Segm *seg = wi->seg_ments[i]; seg != nullptr && seg->label == point.label)
      return seg;
  return nullptr;
}

// An arc's corners are its ends; a node's are those of its box.
Point part_of(const Segm *seg, EventPoint::Part part) {
  using Part = EventPoint::Part;
  const Rect box = seg->box();
  const Point middle = box.centre();
  switch (part) {
  case Part::middle:
    return middle;
  case Part::top:
    return {middle.x, box.top};
  case Part::bottom:
    return {middle.x, box.bottom};
  case Part::left:
    return {box.left, middle.y};
  case Part::right:
    return {box.right, middle.y};
  case Part::start:
    return {box.left, box.top};
  case Part::end:
    return {box.right, box.bottom};
  }
  return middle;
}

// The slots whose status has a bit, or "-".
std::string slots_with(const WinInfo *wi, unsigned bit) {
  std::string list;
  for (int i = 1; wi != nullptr && i < wi->seg_ments.slots(); ++i)
    if (const Segm *seg = wi->seg_ments[i]; seg != nullptr && (seg->status & bit) != 0)
      list += (list.empty() ? "" : " ") + std::to_string(i);
  return list.empty() ? "-" : list;
}

} // namespace

bool find_point(WindowId win, const EventPoint &point, AimedPoint &aimed) {
  if (point.by_place) {
    aimed = {point.at, 0};
    return true;
  }
  const WinInfo *wi = picture_of(win);
  const Segm *seg = wi == nullptr ? nullptr : segment_meant(wi, point);
  if (seg == nullptr)
    return false;
  const Point part = part_of(seg, point.part);
  const Point at{part.x + point.at.x, part.y + point.at.y};
  const bool meant = at == part || (is_node(seg) && seg->box().contains(at));
  aimed = {at, meant ? seg->segnum : 0};
  return true;
}

std::string state_line(WindowId win, CursorShape cursor) {
  const WinInfo *wi = picture_of(win);
  return format_text("selected %s; mode %d; cursor %s; saved %d; clean %d; highlighted %s\n",
                     slots_with(wi, kSelected).c_str(), greqMode, cursor_name(cursor),
                     wi == nullptr ? 1 : wi->saved, wi == nullptr ? 1 : wi->clean,
                     slots_with(wi, kHighlighted).c_str());
}

} // namespace velora
