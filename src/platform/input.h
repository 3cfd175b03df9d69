// What the user's hand does to a window that is drawn by the program: the events of the mouse and
// of the keyboard as plain values. The desktops and the runner of event scripts make them; the
// entries of shell/desk_events take them.
#pragma once

#include <string>

#include "platform/geometry.h"

namespace velora {

// The keys held while something else happened.
struct Modifiers {
  bool shift = false;
  bool control = false;
  bool alt = false;
  friend bool operator==(const Modifiers &, const Modifiers &) = default;
};

enum class MouseButton { none, left, middle, right };

// `lost`: the window system took the mouse away in the middle of a drag; what was begun ends as by
// Esc. A double click arrives as down, up, double_click, up.
enum class MouseKind { down, move, up, double_click, wheel, lost };

// One event of the mouse. `at` is in units of the picture, scrolling and zoom taken off.
struct MouseEvent {
  MouseKind kind = MouseKind::move;
  Point at;
  MouseButton button = MouseButton::none; // of a move: the button held
  Modifiers held;
  int notches = 0; // of a wheel: how far it was turned, towards the user is positive
  int segment = 0; // from a script: the slot that is meant, whatever else lies there; 0 for none
};

// The keys that have names. `text` is what was typed, as it stands in KeyEvent::text.
enum class Key {
  text,
  enter,
  escape,
  tab,
  space,
  del,
  backspace,
  left,
  right,
  up,
  down,
  home,
  end,
  page_up,
  page_down,
  letter,   // a letter or digit with control or alt; KeyEvent::text holds it, in upper case
  function, // F1 to F12; KeyEvent::number tells which
};

struct KeyEvent {
  Key key = Key::text;
  std::string text; // UTF-8; empty for keys that have names
  int number = 0;
  Modifiers held;
};

} // namespace velora
