// Graphics and narrative windows as the user sees them: drawn, scrolled, opened and closed.
#include "shell/graphics_windows.h"

#include "eval/graphics_windows.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

// A window scrolls over what is drawn, not over its first size, which has room for its frame.
void show_extent(const BgrWinInfo &info) {
  const Rect all = drawn_extent(info);
  gDesktop->set_extent(info.win, all.right, all.bottom);
}

} // namespace

void draw_graphics_window(WindowId win, Canvas &canvas) {
  const BgrWinInfo *info = FindGraphicWinInfo(win);
  if (info == nullptr)
    return;
  draw_graphics(*info, canvas);
}

void refresh_graphics_windows() {
  for (const BgrWinInfo *info = gBgrWinInfo.get(); info != nullptr; info = info->next.get())
    show_extent(*info);
}

int close_graphics_window(WindowId win) {
  BgrWinInfo *info = FindGraphicWinInfo(win);
  if (info == nullptr)
    return 0;
  leave_window(win);
  close_graphics(info);
  focus_latest_window();
  return 1;
}

int open_graphics_window() {
  const BgrWinInfo *info = open_graphics();
  if (info == nullptr)
    return 0;
  enter_window(info->win, kGraphicsWindow);
  gDesktop->focus_window(info->win);
  return 1;
}

int open_narrative_window() {
  if (open_narrative() == 0)
    return 0;
  enter_window(gNarWind, kNarrativeWindow);
  gDesktop->focus_window(gNarWind);
  return 1;
}

int close_narrative_window() {
  leave_window(gNarWind);
  const int closed = close_narrative();
  focus_latest_window();
  return closed;
}

} // namespace velora
