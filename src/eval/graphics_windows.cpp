// Graphics and narrative windows on the desktop: the records of the model, each with its window.
#include "eval/graphics_windows.h"

#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/window_maker.h"

namespace velora {

WindowId gNarWind = 0;

namespace {

void renumber_titles() {
  for (const BgrWinInfo *info = gBgrWinInfo.get(); info != nullptr; info = info->next.get())
    gDesktop->set_title(info->win, graphics_title(*info));
}

int count_open() {
  int open = 0;
  for (const BgrWinInfo *info = gBgrWinInfo.get(); info != nullptr; info = info->next.get())
    ++open;
  return open;
}

} // namespace

BgrWinInfo *open_graphics(int width, int height) {
  const Rect asked{0, 0, width, height};
  const bool usual = width == kGraphicsPlace.width() && height == kGraphicsPlace.height();
  const WindowId win = make_window(kGraphicsWindow, count_open(), usual ? nullptr : &asked);
  if (win == 0) {
    orvek_error("NewGraphicsWindow: malloc failed");
    return nullptr;
  }
  BgrWinInfo *info = NewGraphicWinInfo(width, height);
  info->win = win;
  renumber_titles();
  return info;
}

void close_graphics(BgrWinInfo *info) {
  const WindowId win = info->win;
  RemoveGraphicWinInfo(info);
  gDesktop->close_window(win);
  renumber_titles();
}

int open_narrative() {
  if (gNarWind == 0)
    gNarWind = make_window(kNarrativeWindow, 0);
  if (gNarWind == 0)
    return 0;
  gDesktop->show_window(gNarWind);
  return 1;
}

int close_narrative() {
  if (gNarWind == 0)
    return 0;
  const WindowId win = gNarWind;
  gNarWind = 0;
  gDesktop->close_window(win);
  return 1;
}

} // namespace velora
