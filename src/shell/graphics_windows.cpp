// Graphics and narrative windows as the user sees them: drawn, scrolled, opened and closed.
#include "shell/graphics_windows.h"

#include "eval/graphics_windows.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

WindowId typed_into = 0; // the narrative window that the user wrote into

int save_narrative() {
  const auto chosen = gDesktop->choose_file(true, "Save Narrative", "*.txt");
  if (!chosen)
    return 0;
  SafeFile out(*chosen);
  if (out.open())
    out.write(gDesktop->text_of(gNarWind));
  if (out.replace() == SaveOutcome::saved)
    return 1;
  orvek_errorf("Can't write to %s\n", chosen->c_str());
  return 0;
}

// A window scrolls over what is drawn, not over its first size, which has room for its frame.
void show_extent(const BgrWinInfo &info) {
  gDesktop->set_extent(info.win, drawn_extent(info));
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
  focus_latest_window();
  close_graphics(info);
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

void narrative_typed() {
  typed_into = gNarWind;
}

bool narrative_unsaved() {
  return gNarWind != 0 && typed_into == gNarWind;
}

namespace {

// Asks what to do with a narrative that the user wrote into; 1 to go on, 0 to stay.
int offer_to_save_narrative() {
  gDesktop->focus_window(gNarWind);
  switch (PromptUser("Save Changes to: narrative?", {"Save", "Discard"})) {
  case 1:
    return save_narrative();
  case 2:
    return 1;
  default:
    return 0;
  }
}

} // namespace

int may_lose_narrative() {
  return !narrative_unsaved() || offer_to_save_narrative() != 0 ? 1 : 0;
}

int close_narrative_window() {
  if (may_lose_narrative() == 0)
    return 0;
  typed_into = 0;
  leave_window(gNarWind);
  focus_latest_window();
  return close_narrative();
}

} // namespace velora
