// The one maker of windows: titles, menu bars and first places of the kinds stand here once, with
// the steps by which further windows of a kind stand apart.
#pragma once

#include "platform/desk_menus.h"
#include "platform/desk_windows.h"

namespace velora {

// A kind's title, menu bar and first placement. Graphics windows leave the menu bar as it is.
struct WindowLook {
  WindowKind kind;
  const char *title;
  MenuBar bar;
  bool changes_bar;
  Rect place;
};
const WindowLook &look_of(WindowKind kind);

// Where a window of a kind stands when `others` of it are open: each a step to the right and down,
// so that none hides another. On a low screen it ends above CONTROL where it can.
Rect first_place(WindowKind kind, int others);

// Makes a window of a kind with its title and shows it; the focus stays where it is. `others` is
// how many of the kind stand already, `size` the size asked for, null for the usual one. 0 on
// failure.
WindowId make_window(WindowKind kind, int others, const Rect *size = nullptr);

} // namespace velora
