// A hand on a picture for tests: clicks, drags and keys as a desktop would send them.
#pragma once

#include <string>

#include "editor/draw.h"
#include "editor/edit.h"
#include "editor/hand/hand.h"
#include "editor/hand/tools.h"
#include "editor/model/vel_segs.h"
#include "kit/pictures.h"
#include "shell/picture_windows.h"
#include "unit/shell/desk_kit.h"

namespace velora::kit {

class HandTest : public DeskTest {
protected:
  void TearDown() override {
    forget_hand(gHand.wi);
    greqMode = greqNext = 0;
    DeskTest::TearDown();
  }

  // Opens a picture window by its command and gives it the focus.
  WinInfo *open(int command = 504) {
    choose(command);
    const WindowId win = desktop().windows.rbegin()->first;
    window_activated(win);
    wi = picture_of(win);
    return wi;
  }

  bool mouse(MouseKind kind, Point at, Modifiers held = {},
             MouseButton button = MouseButton::left) {
    MouseEvent event;
    event.kind = kind;
    event.at = at;
    event.button = button;
    event.held = held;
    return mouse_event(wi->win, event);
  }
  void click(Point at, Modifiers held = {}) {
    mouse(MouseKind::move, at, held, MouseButton::none);
    mouse(MouseKind::down, at, held);
    mouse(MouseKind::up, at, held);
  }
  void double_click(Point at) {
    click(at);
    mouse(MouseKind::double_click, at);
    mouse(MouseKind::up, at);
  }
  void drag(Point from, Point to, Modifiers held = {}) {
    mouse(MouseKind::down, from, held);
    mouse(MouseKind::move, {(from.x + to.x) / 2, (from.y + to.y) / 2}, held);
    mouse(MouseKind::move, to, held);
    mouse(MouseKind::up, to, held);
  }
  bool key(Key named, Modifiers held = {}, const std::string &text = {}, int number = 0) {
    KeyEvent event;
    event.key = named;
    event.text = text;
    event.number = number;
    event.held = held;
    return key_event(wi->win, event);
  }
  void typed(const std::string &text) {
    for (const char c : text)
      key(Key::text, {}, std::string(1, c));
  }
  void enter(const std::string &text) {
    typed(text);
    key(Key::enter);
  }

  Segm *seg(int slot) { return wi->seg_ments[slot]; }
  Point middle(int slot) { return seg(slot)->box().centre(); }
  Point rim(int slot) { return {middle(slot).x, seg(slot)->uy - 2}; }
  // The nodes that feed a node, in the order of its inputs, by label: "a,b".
  std::string inputs(int slot) {
    std::string text;
    for (const Segm *arc : cyclic_order_types_of(seg(slot))) {
      const Segm *from = arc_start(arc);
      while (from->type == kJunction && !from->segb_ptr.empty())
        from = arc_start(from->segb_ptr[0]); // a bend stands for what it passes on
      text += (text.empty() ? "" : ",") + from->label;
    }
    return text;
  }
  // A node by a tool and a label, placed by the hand.
  int place(int command, Point at, const std::string &label) {
    choose(command);
    click(at);
    enter(label);
    return wi->seg_ct;
  }
  int label_slot(const std::string &label) {
    for (int slot = 1; slot <= wi->seg_ct; ++slot)
      if (seg(slot) != nullptr && seg(slot)->label == label)
        return slot;
    return 0;
  }
  std::string chosen() {
    std::string text;
    for (const int slot : selected_slots(wi))
      text += (text.empty() ? "" : " ") + std::to_string(slot);
    return text;
  }

  WinInfo *wi = nullptr;
  static constexpr Modifiers kShift{true, false, false};
  static constexpr Modifiers kControl{false, true, false};
  static constexpr Modifiers kAlt{false, false, true};
};

} // namespace velora::kit
