// The keys in a picture: one table of what each does when no text is being edited, and the choosing
// of an arrow's end with the keys. The page of keys is made from this table and from the menus'.
#include "editor/hand/hand_keys.h"

#include <algorithm>

#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/hand/gesture_parts.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "editor/needs.h"
#include "platform/desktop.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr int kNudge = 5;
constexpr int kSmallNudge = 1;

void repaint(const WinInfo *wi) {
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
}

// Chooses what comes next, or before, in the visible order: nodes, their missing inputs, arrows.
void walk(WinInfo *wi, int step) {
  const std::vector<int> chosen = selected_slots(wi);
  const int at = chosen.empty() ? 0 : chosen.front();
  const Segm *node = wi->seg_ments[at];
  // The missing inputs of a node come right behind it.
  if (node != nullptr && is_node(node)) {
    const std::vector<int> missing = missing_inputs(wi, node);
    const auto chosen_stub = std::find(missing.begin(), missing.end(), gHand.stub);
    const bool on_stub = chosen_stub != missing.end();
    const long next = on_stub ? chosen_stub - missing.begin() + step : step > 0 ? 0 : -1;
    if (next >= 0 && next < static_cast<long>(missing.size())) {
      gHand.stub = missing[static_cast<std::size_t>(next)];
      return;
    }
    const bool back_to_node = on_stub && step < 0;
    gHand.stub = -1;
    if (back_to_node)
      return;
  }
  const std::vector<int> order = walking_order(wi, false);
  if (order.empty())
    return;
  const auto found = std::find(order.begin(), order.end(), at);
  const auto count = static_cast<long>(order.size());
  const long from = found == order.end() ? (step > 0 ? -1 : 0) : found - order.begin();
  select_only(wi, order[static_cast<std::size_t>((from + step + count) % count)]);
}

void walk_forth(WinInfo *wi, const KeyEvent &) {
  walk(wi, 1);
}
void walk_back(WinInfo *wi, const KeyEvent &) {
  walk(wi, -1);
}

void walk_to_first(WinInfo *wi, const KeyEvent &) {
  if (const std::vector<int> order = walking_order(wi, true); !order.empty())
    select_only(wi, order.front());
}
void walk_to_last(WinInfo *wi, const KeyEvent &) {
  if (const std::vector<int> order = walking_order(wi, true); !order.empty())
    select_only(wi, order.back());
}

Point direction_of(Key key) {
  switch (key) {
  case Key::left:
    return {-1, 0};
  case Key::right:
    return {1, 0};
  case Key::up:
    return {0, -1};
  default:
    return {0, 1};
  }
}

void walk_towards(WinInfo *wi, const KeyEvent &event) {
  const Point by = direction_of(event.key);
  const std::vector<int> chosen = selected_slots(wi, true);
  const int from = chosen.empty() ? 0 : chosen.front();
  if (const int next = node_towards(lay_out_picture(wi), from, by.x, by.y); next != 0)
    select_only(wi, next);
}

// The nodes that are chosen move; where none is, the key walks.
void nudge_or_walk(WinInfo *wi, const KeyEvent &event) {
  const std::vector<int> nodes = selected_slots(wi, true);
  if (nodes.empty()) {
    walk_towards(wi, event);
    return;
  }
  const int length = event.held.shift ? kSmallNudge : kNudge;
  const Point by = direction_of(event.key);
  std::string merge = "nudge";
  for (const int slot : nodes)
    merge += ' ' + std::to_string(slot);
  run_gesture([=] {
    edit_picture(wi, "Move", [&] { move_selected(wi, by.x * length, by.y * length); },
                 {.merge = merge});
  });
}

// Adds the nearest node in a direction to what is chosen.
void add_towards(WinInfo *wi, const KeyEvent &event) {
  const Point by = direction_of(event.key);
  std::vector<int> chosen = selected_slots(wi);
  const std::vector<int> nodes = selected_slots(wi, true);
  // From the node that lies farthest that way, so that the key goes on.
  int from = nodes.empty() ? 0 : nodes.front();
  for (const int slot : nodes) {
    const Point one = wi->seg_ments[slot]->box().centre();
    const Point other = wi->seg_ments[from]->box().centre();
    if ((one.x - other.x) * by.x + (one.y - other.y) * by.y > 0)
      from = slot;
  }
  const int next = node_towards(lay_out_picture(wi), from, by.x, by.y);
  if (next != 0)
    chosen.push_back(next);
  select_these(wi, chosen);
}

// Makes the chosen arrow the input before or behind; other keys move what is chosen.
void reorder_or_nudge(WinInfo *wi, const KeyEvent &event) {
  const std::vector<int> chosen = selected_slots(wi);
  const Segm *arc = chosen.size() == 1 ? wi->seg_ments[chosen.front()] : nullptr;
  if (arc == nullptr || !is_arc(arc)) {
    nudge_or_walk(wi, event);
    return;
  }
  const std::vector<Segm *> order = cyclic_order_types_of(arc_end(arc));
  const auto at = std::find(order.begin(), order.end(), arc) - order.begin();
  const long input = at + (event.key == Key::left ? -1 : 1);
  const auto count = static_cast<long>(order.size());
  if (input < 0 || input >= count || event.key == Key::up || event.key == Key::down)
    return;
  const int slot = chosen.front();
  const int to = arc_end(arc)->segnum;
  run_gesture([=] {
    edit_picture(wi, "Join Anew", [&] {
      if (const int made = rejoin_head(wi, slot, to, static_cast<int>(input)); made != 0)
        select_only(wi, made);
    });
  });
}

// The rectangle around what is chosen, cutting the arrows that leave it.
Rect around_chosen(const WinInfo *wi) {
  constexpr int kAround = 8;
  Rect around{};
  bool first = true;
  for (const int slot : selected_slots(wi, true)) {
    const Rect box = wi->seg_ments[slot]->box();
    around = first ? box
                   : Rect{std::min(around.left, box.left), std::min(around.top, box.top),
                          std::max(around.right, box.right), std::max(around.bottom, box.bottom)};
    first = false;
  }
  return {around.left - kAround, around.top - kAround, around.right + kAround,
          around.bottom + kAround};
}

// With a tool, Enter does what a click would: beside the chosen node, or into the chosen arrow, or
// in the middle of the window. True when a tool was chosen.
bool use_tool(WinInfo *wi) {
  if (greqMode == kModeLasso) {
    greqMode = 0;
    const Rect around = around_chosen(wi);
    run_gesture([wi, around] { DoCopyNodes(wi, around); });
    return true;
  }
  if (!places_nodes(greqMode))
    return false;
  const std::vector<int> chosen = selected_slots(wi);
  const Segm *seg = chosen.size() == 1 ? wi->seg_ments[chosen.front()] : nullptr;
  Point at = picture_area(wi).centre();
  if (seg != nullptr)
    at = is_arc(seg)
             ? seg->box().centre()
             : free_place(wi, {seg->ux + 2 * NodeHeight(wi), seg->box().centre().y}, greqMode, "");
  place_with_tool(wi, at, seg != nullptr && is_arc(seg) ? chosen.front() : 0, false);
  return true;
}

void edit_chosen(WinInfo *wi, const KeyEvent &) {
  if (use_tool(wi))
    return;
  const int slot = selected_node(wi);
  if (slot == 0)
    return;
  if (wi->wtype == kNetworkPicture)
    run_gesture([name = wi->seg_ments[slot]->label] { open_function(name); });
  else
    edit_label(wi, slot);
}

void name_in_network(WinInfo *wi, const KeyEvent &) {
  if (const int slot = selected_node(wi); slot != 0)
    edit_label(wi, slot);
}

// Removes what is chosen, in a network the first node too.
void remove_chosen(WinInfo *wi, const KeyEvent &) {
  run_gesture(
      [wi] { edit_picture(wi, "Clear Selection", [&] { remove_slots(wi, selected_slots(wi)); }); });
}

void take_chosen_out(WinInfo *wi, const KeyEvent &) {
  run_gesture(
      [wi] { edit_picture(wi, "Take Out", [&] { remove_and_join(wi, selected_slots(wi)); }); });
}

void escape(WinInfo *, const KeyEvent &) {
  escape_hand();
}

void select_all(WinInfo *wi, const KeyEvent &) {
  std::vector<int> all;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    if (wi->seg_ments[slot] != nullptr)
      all.push_back(slot);
  select_these(wi, all);
}

void pan_with_next_drag(WinInfo *, const KeyEvent &) {
  gHand.pan_next = true;
}

// clang-format off
constexpr HandKey kKeys[] = {
    {Key::tab, nullptr, 0, kWithout, "Tab", "choose the next box, missing input or arrow", walk_forth},
    {Key::tab, nullptr, 0, kWithShift, "Shift+Tab", "choose the one before", walk_back},
    {Key::home, nullptr, 0, kWithout, "Home", "choose the first box", walk_to_first},
    {Key::end, nullptr, 0, kWithout, "End", "choose the last box", walk_to_last},
    {Key::left, nullptr, 0, kWithAny, "Left", "move the chosen boxes, with Shift by one unit; with none chosen, choose one that way; with Shift and an arrow chosen, make it the input before", reorder_or_nudge},
    {Key::right, nullptr, 0, kWithAny, "Right", "the same to the right; the input behind", reorder_or_nudge},
    {Key::up, nullptr, 0, kWithAny, "Up", "the same upwards", nudge_or_walk},
    {Key::down, nullptr, 0, kWithAny, "Down", "the same downwards", nudge_or_walk},
    {Key::left, nullptr, 0, kWithControl, "Ctrl+Left", "choose the nearest box to the left", walk_towards},
    {Key::right, nullptr, 0, kWithControl, "Ctrl+Right", "to the right", walk_towards},
    {Key::up, nullptr, 0, kWithControl, "Ctrl+Up", "above", walk_towards},
    {Key::down, nullptr, 0, kWithControl, "Ctrl+Down", "below", walk_towards},
    {Key::left, nullptr, 0, kWithControlShift, "Ctrl+Shift+Left", "choose the nearest box to the left as well", add_towards},
    {Key::right, nullptr, 0, kWithControlShift, "Ctrl+Shift+Right", "to the right as well", add_towards},
    {Key::up, nullptr, 0, kWithControlShift, "Ctrl+Shift+Up", "above as well", add_towards},
    {Key::down, nullptr, 0, kWithControlShift, "Ctrl+Shift+Down", "below as well", add_towards},
    {Key::enter, nullptr, 0, kWithout, "Enter", "edit the label in place; in a network, open the function; with a tool, place beside the chosen box or into the chosen arrow; with Lasso SubGraph, collapse what is chosen", edit_chosen},
    {Key::enter, nullptr, 0, kWithShift, "Shift+Enter", "edit the label, in a network too", name_in_network},
    {Key::function, nullptr, 2, kWithout, "F2", "edit the label in place", name_in_network},
    {Key::del, nullptr, 0, kWithout, "Del", "remove what is chosen", remove_chosen},
    {Key::backspace, nullptr, 0, kWithout, "Backspace", "the same", remove_chosen},
    {Key::del, nullptr, 0, kWithShift, "Shift+Del", "take the chosen boxes out and join their neighbours", take_chosen_out},
    {Key::escape, nullptr, 0, kWithAny, "Esc", "leave a tool, a gesture or an editor without a trace", escape},
    {Key::space, nullptr, 0, kWithout, "Space", "the next drag moves the picture in its window", pan_with_next_drag},
    {Key::letter, "A", 0, kWithControl, "Ctrl+A", "choose everything", select_all},
};
// clang-format on

bool fits(const HandKey &row, const KeyEvent &event) {
  if (row.key != event.key || (row.letter != nullptr && event.text != row.letter) ||
      (row.key == Key::function && event.number != row.number) || event.held.alt)
    return false;
  switch (row.with) {
  case kWithout:
    return !event.held.shift && !event.held.control;
  case kWithShift:
    return event.held.shift && !event.held.control;
  case kWithControl:
    return event.held.control && !event.held.shift;
  case kWithControlShift:
    return event.held.control && event.held.shift;
  default:
    return !event.held.control;
  }
}

bool idle_key(WinInfo *wi, const KeyEvent &event) {
  for (const HandKey &row : kKeys)
    if (fits(row, event)) {
      row.run(wi, event);
      return true;
    }
  // Desktops differ in how they name these two; the menus have them as Ctrl+Plus and Ctrl+Minus.
  if (event.held.control && (event.text == "+" || event.text == "=" || event.text == "-")) {
    zoom_view(wi, picture_area(wi).centre(), event.text == "-" ? 1 : -1);
    return true;
  }
  if (event.key != Key::text || event.held.control || event.held.alt || event.text.empty() ||
      event.text == " ")
    return false;
  // Typing places by name: at the chosen box, or at the pointer when nothing is chosen.
  Insertion where = next_insertion(wi, gHand.stub);
  const std::vector<int> chosen = selected_slots(wi);
  if (const Segm *seg = chosen.size() == 1 ? wi->seg_ments[chosen.front()] : nullptr;
      seg != nullptr && is_arc(seg)) {
    where = Insertion{};
    where.arc = chosen.front();
    where.at = seg->box().centre();
    where.placed = true;
    begin_naming(wi, where, event.text);
    return true;
  }
  if (where.into == 0 && selected_node(wi) == 0) {
    const Rect area = picture_area(wi);
    where.at = gHand.over && gHand.wi == wi ? gHand.at : area.centre();
    where.placed = gHand.over && gHand.wi == wi;
  }
  begin_naming(wi, where, event.text);
  return true;
}

// The possible ends of the arrow, in the order that Tab walks them.
std::vector<int> possible_ends(const WinInfo *wi) {
  std::vector<int> ends = walking_order(wi, true);
  std::erase_if(ends, [wi](int slot) { return !may_join(wi, gHand.start, slot); });
  return ends;
}

} // namespace

std::span<const HandKey> hand_keys() {
  return kKeys;
}

bool keyjoin_key(WinInfo *wi, const KeyEvent &event) {
  const std::vector<int> ends = possible_ends(wi);
  const auto count = static_cast<long>(ends.size());
  if (event.key == Key::escape || count == 0) {
    escape_hand();
  } else if (event.key == Key::tab) {
    const auto found = std::find(ends.begin(), ends.end(), gHand.target);
    const long at = found == ends.end() ? -1 : found - ends.begin();
    const long step = event.held.shift ? -1 : 1;
    gHand.target = ends[static_cast<std::size_t>((at + step + count) % count)];
  } else if (event.key == Key::left || event.key == Key::right || event.key == Key::up ||
             event.key == Key::down) {
    const Point by = direction_of(event.key);
    const int from = gHand.target != 0 ? gHand.target : gHand.start;
    const int next = node_towards(lay_out_picture(wi), from, by.x, by.y);
    if (may_join(wi, gHand.start, next))
      gHand.target = next;
  } else if (event.key == Key::enter) {
    const int from = gHand.start;
    const int to = gHand.target;
    escape_hand();
    if (to != 0)
      run_gesture([=] {
        edit_picture(wi, "Join", [&] { put_arc_between(wi, from, to, kArc); });
        select_only(wi, to);
      });
  }
  return true;
}

bool hand_key(WinInfo *wi, const KeyEvent &event) {
  drop_dead_hand();
  if (gHand.wi != wi) {
    settle_hand();
    gHand.wi = wi;
    gHand.over = false;
  }
  gHand.held = event.held;
  const bool bubbled = !gHand.bubble.empty();
  gHand.bubble.clear();
  bool taken = false;
  switch (gHand.state) {
  case HandState::labelling:
    taken = labelling_key(wi, event);
    break;
  case HandState::naming:
    taken = naming_key(wi, event);
    break;
  case HandState::keyjoin:
    taken = keyjoin_key(wi, event);
    break;
  case HandState::idle:
    taken = idle_key(wi, event);
    break;
  default: // in the middle of a drag there is only the way out
    taken = event.key == Key::escape;
    if (taken)
      escape_hand();
  }
  if (taken || bubbled)
    repaint(wi);
  show_cursor(wi);
  return taken;
}

} // namespace velora
