// The mouse in a picture: a state machine, one function a state.
//
//   state     down                      move                    up
//   idle      node: pressed             cursor                  -
//             lower rim of a node: pressed, to join
//             head of an arrow: pressed, to join anew
//             arrow: chosen; ground: pressed
//             tool: a node is placed, its label edited
//             tool 17: start or end is chosen; 32: lasso
//             middle, or after the space key: panning
//             double: labelling, or a name typed on the ground
//   pressed   -                         far enough: moving,     chosen, an arrow of a network
//                                       joining or banding      tells its calls; idle
//   moving    -                         the nodes' shadows go   nodes go there; idle
//   banding   -                         the rectangle grows     what lies in it is chosen; idle
//   joining   -                         the arrow follows       joined, or naming on the ground
//   lasso     -                         the rectangle grows     its inside gets a window; idle
//   panning   -                         the view follows        idle
//   keyjoin   as idle, after leaving
//   labelling outside: accepted         -                       -
//   naming    outside: left             -                       -
//
// In any state the lost mouse and Esc lead to idle without a trace.
#include <algorithm>
#include <array>
#include <cmath>

#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/hand/gesture_parts.h"
#include "editor/hand/hand.h"
#include "editor/hand/stubs.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "editor/needs.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

int greqMode = 0;
int greqNext = 0;
Hand gHand;

namespace {

constexpr int kDragStart = 4; // how far the pointer goes before a press becomes a drag
constexpr int kRim = 6;       // the height of the rim that arrows are drawn from
constexpr int kHeadReach = 9; // around the tip of an arrow
constexpr int kSnap = 5;

bool has_rim(const WinInfo *wi, int slot) {
  return slot != 0 && (slot != 1 || wi->wtype == kNetworkPicture);
}

// True on the lower rim of a node, outside of a small one's middle.
bool on_rim(const NodePlace &node, Point at) {
  const int rim = std::min(kRim, node.box.height() / 3);
  return node.box.contains(at) && at.y > node.box.bottom - rim;
}

// What lies under a point, or what a script aims at.
int hit_at(const WinInfo *wi, const PictureLayout &layout, Point at, bool nodes_only) {
  const Segm *aimed = wi->seg_ments[gHand.aimed];
  if (aimed != nullptr && (is_node(aimed) || !nodes_only))
    return gHand.aimed;
  return hit_picture(layout, at, nodes_only);
}

int arrow_head_at(const PictureLayout &layout, Point at) {
  for (const ArcPlace &arc : layout.arcs) {
    const Point tip = arc.path.back();
    if (std::hypot(at.x - tip.x, at.y - tip.y) <= kHeadReach)
      return arc.seg->segnum;
  }
  return 0;
}

void repaint(const WinInfo *wi) {
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
}

void enter(HandState state) {
  gHand.state = state;
  gHand.rim = 0;
}

// Snaps one coordinate of what is moved to the same of its neighbours, within reach.
void snap(int &offset, int own, const std::vector<int> &others, int &line) {
  int best = kSnap + 1;
  for (const int other : others)
    if (std::abs(other - own - offset) < std::abs(best))
      best = other - own - offset;
  if (std::abs(best) > kSnap)
    return;
  offset += best;
  line = own + offset;
}

// How far the grabbed node goes, with the rows and columns of its neighbours drawing it in.
void follow_with_nodes(WinInfo *wi, const MouseEvent &event) {
  gHand.moved = {event.at.x - gHand.from.x, event.at.y - gHand.from.y};
  gHand.guides.clear();
  const Segm *grabbed = wi->seg_ments[gHand.grabbed];
  if (event.held.alt || grabbed == nullptr)
    return;
  std::vector<int> columns;
  std::vector<int> rows;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (seg == nullptr || !is_node(seg) || (seg->status & kSelected) != 0)
      continue;
    columns.push_back(seg->box().centre().x);
    rows.push_back(seg->box().centre().y);
  }
  const Point centre = grabbed->box().centre();
  int column = -1;
  int row = -1;
  if (std::abs(gHand.moved.x) > 0 || std::abs(gHand.moved.y) > 0) {
    snap(gHand.moved.x, centre.x, columns, column);
    snap(gHand.moved.y, centre.y, rows, row);
  }
  const Rect extent = layout_extent(lay_out_picture(wi));
  if (column != -1)
    gHand.guides.push_back({column, extent.top, column, extent.bottom});
  if (row != -1)
    gHand.guides.push_back({extent.left, row, extent.right, row});
}

// The arrow that a single node without arrows of its own lies on, when it is moved there.
int arrow_under(const WinInfo *wi, int slot) {
  const Segm *node = wi->seg_ments[slot];
  if (node == nullptr || !node->segb_ptr.empty() || !node->segf_ptr.empty() || slot == 1)
    return 0;
  const Point centre = node->box().centre();
  const PictureLayout layout = lay_out_picture(wi);
  for (const ArcPlace &arc : layout.arcs)
    for (std::size_t i = 1; i < arc.path.size(); ++i) {
      const Rect line{arc.path[i - 1].x, arc.path[i - 1].y, arc.path[i].x, arc.path[i].y};
      if (line_is_hit(line, centre.x, centre.y))
        return arc.seg->segnum;
    }
  return 0;
}

void place_by_tool(WinInfo *wi, const MouseEvent &event) {
  const int hit = hit_at(wi, lay_out_picture(wi), event.at, false);
  const Segm *below = wi->seg_ments[hit];
  place_with_tool(wi, event.at, below != nullptr && is_arc(below) ? hit : 0, event.held.shift);
}

// Joining by the tool: the first node is the start, the second the end.
void join_by_tool(WinInfo *wi, const MouseEvent &event, int node) {
  if (node == 0)
    return;
  if (greqNext == 0 || wi->seg_ments[greqNext] == nullptr) {
    greqNext = node;
    gHand.start = node;
    gHand.rejoined = 0;
    gHand.grabbed = node;
    gHand.target = 0;
    gHand.from = event.at;
    enter(HandState::joining);
    return;
  }
  const int from = greqNext;
  greqNext = 0;
  greqMode = event.held.shift ? static_cast<int>(kModeJoin) : 0;
  run_gesture([wi, from, node] {
    edit_picture(wi, "Join", [&] {
      if (may_join(wi, from, node))
        put_arc_between(wi, from, node, kArc);
    });
  });
}

void press_tool(WinInfo *wi, const MouseEvent &event, int node) {
  if (places_nodes(greqMode)) {
    place_by_tool(wi, event);
  } else if (greqMode == kModeJoin) {
    join_by_tool(wi, event, node);
  } else if (greqMode == kModeLasso) {
    greqMode = event.held.shift ? static_cast<int>(kModeLasso) : 0;
    enter(HandState::lasso);
  }
}

void double_clicked(WinInfo *wi, int hit) {
  const Segm *seg = wi->seg_ments[hit];
  if (seg != nullptr && is_node(seg)) {
    if (wi->wtype == kNetworkPicture)
      run_gesture([name = seg->label] { open_function(name); });
    else
      edit_label(wi, hit);
  } else if (seg == nullptr) {
    Insertion where;
    where.placed = true;
    where.at = gHand.at;
    begin_naming(wi, where, "");
  }
}

// A press without a tool: what is under the pointer is chosen, and what a drag would do is noted.
void press_plain(WinInfo *wi, const MouseEvent &event, const PictureLayout &layout) {
  const int node = hit_at(wi, layout, event.at, true);
  const int hit = hit_at(wi, layout, event.at, false);
  if (event.kind == MouseKind::double_click) {
    double_clicked(wi, node != 0 ? node : hit);
    return;
  }
  const int head = node == 0 ? arrow_head_at(layout, event.at) : 0;
  // Nodes lie over arrows.
  gHand.grabbed = head != 0 ? head : node != 0 ? node : hit;
  gHand.rejoined = head;
  gHand.start = 0;
  gHand.target = 0;
  for (const NodePlace &place : layout.nodes)
    if (place.seg->segnum == gHand.grabbed && greqMode != kModeMove && on_rim(place, event.at) &&
        has_rim(wi, gHand.grabbed))
      gHand.start = gHand.grabbed;
  const Segm *seg = wi->seg_ments[gHand.grabbed];
  if (seg != nullptr && event.held.shift)
    toggle_selected(wi, gHand.grabbed);
  else if (seg != nullptr && (seg->status & kSelected) == 0)
    select_only(wi, gHand.grabbed);
  enter(HandState::pressed);
}

// The node on whose lower rim a point lies, where an arrow may begin; 0 for none.
int rim_at(const WinInfo *wi, const PictureLayout &layout, Point at) {
  for (const NodePlace &place : layout.nodes)
    if (on_rim(place, at) && has_rim(wi, place.seg->segnum))
      return place.seg->segnum;
  return 0;
}

// What the menu of the right button will act on: what is chosen, if the pointer is on that.
void choose_under(WinInfo *wi, const PictureLayout &layout, Point at) {
  const int hit = hit_at(wi, layout, at, false);
  const Segm *seg = wi->seg_ments[hit];
  if (seg != nullptr && (seg->status & kSelected) == 0)
    select_only(wi, hit);
}

void idle_mouse(WinInfo *wi, const MouseEvent &event) {
  if (event.kind == MouseKind::move)
    gHand.rim = greqMode == 0 ? rim_at(wi, lay_out_picture(wi), event.at) : 0;
  if (event.kind != MouseKind::down && event.kind != MouseKind::double_click)
    return;
  const PictureLayout layout = lay_out_picture(wi);
  gHand.from = event.at;
  gHand.stub = -1;
  if (event.button == MouseButton::middle || gHand.pan_next) {
    gHand.pan_next = false;
    enter(HandState::panning);
  } else if (event.button == MouseButton::left && greqMode != 0 && greqMode != kModeMove) {
    press_tool(wi, event, hit_at(wi, layout, event.at, true));
  } else if (event.button == MouseButton::left) {
    press_plain(wi, event, layout);
  } else if (event.button == MouseButton::right) {
    choose_under(wi, layout, event.at);
    repaint(wi);
  }
}

void pressed_mouse(WinInfo *wi, const MouseEvent &event) {
  if (event.kind == MouseKind::up) {
    // A click that chose one of several chosen nodes chooses it alone; on the ground, nothing.
    if (!event.held.shift)
      select_these(wi, gHand.grabbed != 0 ? std::vector<int>{gHand.grabbed} : std::vector<int>{});
    if (greqMode == kModeMove && !event.held.shift)
      greqMode = 0;
    enter(HandState::idle);
    const Segm *arc = wi->seg_ments[gHand.grabbed];
    if (wi->wtype == kNetworkPicture && arc != nullptr && is_arc(arc) && !event.held.shift)
      run_gesture([wi, slot = gHand.grabbed] { show_calls(wi, slot); });
    return;
  }
  if (std::abs(event.at.x - gHand.from.x) < kDragStart &&
      std::abs(event.at.y - gHand.from.y) < kDragStart)
    return;
  const Segm *seg = wi->seg_ments[gHand.grabbed];
  if (seg == nullptr)
    enter(HandState::banding);
  else if (gHand.start != 0 || gHand.rejoined != 0)
    enter(HandState::joining);
  else if (is_node(seg))
    enter(HandState::moving);
  else
    enter(HandState::banding);
  if (gHand.state == HandState::moving && (seg->status & kSelected) == 0)
    select_only(wi, gHand.grabbed); // shift took it out of the selection
}

void moving_mouse(WinInfo *wi, const MouseEvent &event) {
  follow_with_nodes(wi, event);
  if (event.kind != MouseKind::up)
    return;
  const Point by = gHand.moved;
  const int slot = selected_node(wi);
  if (greqMode == kModeMove && !event.held.shift)
    greqMode = 0;
  enter(HandState::idle);
  run_gesture([wi, by, slot] {
    edit_picture(wi, "Move", [&] {
      move_selected(wi, by.x, by.y);
      if (const int arc = arrow_under(wi, slot); arc != 0)
        insert_into_arc(wi, slot, arc);
    });
  });
}

// What a rectangle chooses: nodes that lie in it, and arrows with both ends in it.
void banding_mouse(WinInfo *wi, const MouseEvent &event) {
  if (event.kind != MouseKind::up)
    return;
  enter(HandState::idle);
  select_in_band(wi, Rect{gHand.from.x, gHand.from.y, event.at.x, event.at.y}.normalised(),
                 event.held.shift);
}

void finish_join(WinInfo *wi, const MouseEvent &event) {
  const int arc = gHand.rejoined;
  const int stub = gHand.stub;
  gHand.stub = -1;
  const int from = gHand.start;
  const int to = gHand.target;
  const int input = gHand.target != 0 ? input_under(wi, to, event.at, arc) : -1;
  enter(HandState::idle);
  if (to == 0) {
    if (arc != 0)
      return; // a head that is dropped on nothing stays where it was
    Insertion where;
    where.fed_by = from;
    where.placed = true;
    where.at = event.at;
    begin_naming(wi, where, "");
    return;
  }
  run_gesture([=] {
    edit_picture(wi, arc != 0 ? "Join Anew" : "Join", [&] {
      if (arc != 0)
        rejoin_head(wi, arc, to, input);
      else if (stub >= 0)
        join_to_input(wi, from, to, stub);
      else if (may_join(wi, from, to))
        put_arc_between(wi, from, to, kArc);
    });
  });
}

void joining_mouse(WinInfo *wi, const MouseEvent &event) {
  const PictureLayout layout = lay_out_picture(wi);
  int node = hit_at(wi, layout, event.at, true);
  // A missing input is an end of its own, above the box that wants it.
  const StubAt waiting =
      node == 0 && gHand.rejoined == 0 ? stub_at(wi, layout, event.at) : StubAt{};
  node = waiting.slot != 0 ? waiting.slot : node;
  gHand.stub = waiting.input;
  const Segm *arc = wi->seg_ments[gHand.rejoined];
  const int from =
      arc != nullptr && arc_start(arc) != nullptr ? arc_start(arc)->segnum : gHand.start;
  gHand.target = may_join(wi, from, node) || (node != 0 && gHand.rejoined != 0) ? node : 0;
  if (event.kind != MouseKind::up)
    return;
  // By the tool a click chooses the start; the end may be dragged to or clicked.
  if (greqMode == kModeJoin && node == gHand.start) {
    enter(HandState::idle);
    return;
  }
  if (greqMode == kModeJoin) {
    greqNext = 0;
    greqMode = event.held.shift ? static_cast<int>(kModeJoin) : 0;
  } else if (node == gHand.start && wi->wtype != kNetworkPicture) {
    enter(HandState::idle); // back where it began
    return;
  }
  finish_join(wi, event);
}

void lasso_mouse(WinInfo *wi, const MouseEvent &event) {
  if (event.kind != MouseKind::up)
    return;
  const Rect rect{gHand.from.x, gHand.from.y, event.at.x, event.at.y};
  enter(HandState::idle);
  if (wi->wtype == kNetworkPicture)
    select_in_band(wi, rect.normalised(), event.held.shift);
  else
    run_gesture([wi, rect] { DoCopyNodes(wi, rect); });
}

void panning_mouse(WinInfo *wi, const MouseEvent &event) {
  if (event.kind == MouseKind::up)
    enter(HandState::idle);
  else
    pan_view(wi, gHand.from.x - event.at.x, gHand.from.y - event.at.y);
}

using StateFunction = void (*)(WinInfo *, const MouseEvent &);

StateFunction function_of(HandState state) {
  switch (state) {
  case HandState::pressed:
    return pressed_mouse;
  case HandState::moving:
    return moving_mouse;
  case HandState::banding:
    return banding_mouse;
  case HandState::joining:
    return joining_mouse;
  case HandState::lasso:
    return lasso_mouse;
  case HandState::panning:
    return panning_mouse;
  case HandState::labelling:
    return labelling_mouse;
  case HandState::naming:
    return naming_mouse;
  default:
    return idle_mouse;
  }
}

} // namespace

void place_with_tool(WinInfo *wi, Point at, int arc, bool keep_tool) {
  const int tool = greqMode;
  if (!keep_tool)
    greqMode = 0;
  run_gesture([wi, tool, arc, at] {
    int slot = 0;
    const std::string merge = fresh_merge();
    edit_picture(wi, tool_name(tool), [&] { slot = place_node_at(wi, tool, at, arc); },
                 {.merge = merge});
    if (slot != 0)
      edit_label(wi, slot, merge);
  });
}

bool hand_mouse(WinInfo *wi, const MouseEvent &event) {
  if (gHand.wi != wi && event.kind == MouseKind::move && gHand.state != HandState::idle)
    return false; // over another picture meanwhile
  if (event.kind == MouseKind::wheel) {
    if (event.held.control)
      zoom_view(wi, event.at, event.notches);
    return event.held.control;
  }
  drop_dead_hand();
  if (event.kind == MouseKind::lost) {
    escape_hand();
    return true;
  }
  if (gHand.wi != wi)
    settle_hand();
  gHand.wi = wi;
  gHand.aimed = event.segment;
  gHand.at = event.at;
  gHand.over = true;
  gHand.held = event.held;
  const bool resting = event.kind == MouseKind::move && gHand.state == HandState::idle;
  if (!gHand.bubble.empty() && event.kind == MouseKind::down)
    gHand.bubble.clear();
  // A press in the middle of a drag: the release was lost on the way.
  const bool dragging = gHand.state != HandState::idle && gHand.state != HandState::labelling &&
                        gHand.state != HandState::naming;
  if (event.kind == MouseKind::down && dragging) {
    const int mode = greqMode;
    escape_hand();
    gHand.aimed = event.segment;
    greqMode = mode;
  }
  function_of(gHand.state)(wi, event);
  show_cursor(wi);
  if (!resting || greqMode != 0)
    repaint(wi);
  return true;
}

} // namespace velora
