// Beginning and ending what the hand does: tools, modes, Esc, cursors.
#include "editor/hand/hand.h"

#include <algorithm>

#include "editor/draw.h"
#include "editor/hand/gesture_parts.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

namespace {

struct ModeCursor {
  int mode;
  CursorShape cursor;
};
constexpr ModeCursor kModeCursors[] = {
    {kToolHexagon, CursorShape::hexagon},
    {kToolConstructor, CursorShape::double_box},
    {kToolFunction, CursorShape::box},
    {kToolRecursive, CursorShape::bold_box},
    {kToolType, CursorShape::double_hexagon},
    {kToolRecursiveToo, CursorShape::bold_box},
    {kToolParameter, CursorShape::bold_hexagon},
    {kToolJunction, CursorShape::junction},
    {kToolHold, CursorShape::hexagon},
    {kModeMove, CursorShape::hand},
    {kModeLasso, CursorShape::cross},
};

void repaint(const WinInfo *wi) {
  if (wi != nullptr && wi->win != 0)
    gDesktop->invalidate(wi->win);
}

// Everything of the gesture goes, the pointer stays.
void reset() {
  Hand fresh;
  fresh.wi = gHand.wi;
  fresh.at = gHand.at;
  fresh.over = gHand.over;
  gHand = std::move(fresh);
}

} // namespace

void drop_dead_hand() {
  const WinInfo *wi = gWinInfo;
  while (wi != nullptr && wi != gHand.wi)
    wi = wi->next;
  if (wi == nullptr)
    forget_hand(gHand.wi);
}

void escape_hand() {
  drop_dead_hand();
  repaint(gHand.wi);
  reset();
  greqMode = 0;
  greqNext = 0;
  if (gHand.wi != nullptr)
    show_cursor(gHand.wi);
}

void settle_hand() {
  drop_dead_hand();
  if (gHand.state == HandState::labelling && gHand.wi != nullptr)
    accept_label(gHand.wi);
  repaint(gHand.wi);
  reset();
}

void forget_hand(const WinInfo *wi) {
  if (gHand.wi != wi)
    return;
  gHand = Hand{};
  greqNext = 0;
}

void choose_tool(WinInfo *wi, int mode) {
  settle_hand();
  gHand.wi = wi;
  greqMode = mode;
  greqNext = 0;
  show_cursor(wi);
  repaint(wi);
}

void begin_join(WinInfo *wi) {
  const int start = selected_node(wi);
  if (start == 0 || !may_join(wi, start, start == 1 ? 2 : 1)) {
    choose_tool(wi, kModeJoin);
    return;
  }
  settle_hand();
  gHand.wi = wi;
  gHand.state = HandState::keyjoin;
  gHand.start = start;
  gHand.target = 0;
  repaint(wi);
}

void select_in_band(WinInfo *wi, const Rect &band, bool added) {
  std::vector<int> slots = added ? selected_slots(wi) : std::vector<int>{};
  const PictureLayout layout = lay_out_picture(wi);
  const auto inside = [&band](const Rect &box) {
    return band.contains({box.left, box.top}) && band.contains({box.right, box.bottom});
  };
  for (const NodePlace &node : layout.nodes)
    if (inside(node.box))
      slots.push_back(node.seg->segnum);
  for (const ArcPlace &arc : layout.arcs)
    if (band.contains(arc.path.front()) && band.contains(arc.path.back()))
      slots.push_back(arc.seg->segnum);
  select_these(wi, slots);
}

void show_bubble(WinInfo *wi, int slot, const std::string &text) {
  gHand.wi = wi;
  gHand.bubble_slot = slot;
  gHand.bubble = text;
  repaint(wi);
}

CursorShape hand_cursor(const WinInfo *) {
  if (gHand.state == HandState::moving || gHand.state == HandState::panning || gHand.pan_next)
    return CursorShape::hand;
  if (gHand.state == HandState::joining)
    return CursorShape::end_join;
  if (gHand.state == HandState::labelling || gHand.state == HandState::naming)
    return CursorShape::ibeam;
  if (greqMode == kModeJoin)
    return greqNext != 0 ? CursorShape::end_join : CursorShape::start_join;
  if (gHand.state == HandState::idle && greqMode == 0 && gHand.rim != 0)
    return CursorShape::start_join;
  for (const ModeCursor &row : kModeCursors)
    if (row.mode == greqMode)
      return row.cursor;
  return CursorShape::arrow;
}

const char *hand_hint(const WinInfo *wi) {
  switch (gHand.state) {
  case HandState::labelling:
    return "Enter takes the text, Esc leaves the old one";
  case HandState::naming:
    return "Enter, Tab or a blank takes the chosen name; Up and Down choose; Esc leaves";
  case HandState::joining:
    return "Let go over the box that the arrow shall lead to, or on nothing to add one there";
  case HandState::keyjoin:
    return "Tab or the arrow keys choose the end of the arrow, Enter joins, Esc leaves";
  case HandState::moving:
    return "Boxes snap to their neighbours, not with Alt; on an arrow a box goes in between";
  default:
    break;
  }
  if (greqMode == kModeJoin)
    return greqNext == 0 ? "Click the box that the arrow shall start at"
                         : "Click the box that the arrow shall lead to";
  if (greqMode == kModeLasso)
    return wi->wtype == kNetworkPicture
               ? "Draw a rectangle around what shall be chosen"
               : "Draw a rectangle whose base cuts the arrow of what shall be a function";
  if (greqMode == kModeMove)
    return "Drag a box to its new place";
  if (greqMode == kToolParameter)
    return "Click above the dotted line for an input; with Shift the tool stays, Esc leaves it";
  if (gHand.state == HandState::idle && greqMode == 0 && gHand.rim != 0)
    return "Drag from here to draw an arrow";
  return places_nodes(greqMode) ? "Click where it shall stand, or on an arrow; with Shift the tool "
                                  "stays, Esc leaves it"
                                : "";
}

void show_cursor(const WinInfo *wi) {
  static CursorShape shown = CursorShape::arrow;
  static const char *told = "";
  const CursorShape wanted = hand_cursor(wi);
  if (wanted != shown)
    gDesktop->set_cursor(wanted);
  shown = wanted;
  const char *hint = hand_hint(wi);
  if (hint != told)
    gDesktop->show_hint(hint);
  told = hint;
}

} // namespace velora
