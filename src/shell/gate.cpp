// Running of commands and what follows each. Holds whether the program has ended and which windows
// wait to be closed.
#include "shell/gate.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "editor/model/wininfo.h"
#include "platform/interrupt.h"
#include "shell/console_window.h"
#include "shell/graphics_windows.h"
#include "shell/vel_wins.h"
#include "shell/x_menus.h"

namespace velora {

namespace {

bool ended = false; // the frame is going
std::vector<WindowId> to_close;

} // namespace

CommandEnd run_alone(const Command &command) {
  const Running now;
  const CommandEnd end = run_command(command);
  run_step([] { gDesktopConsole.busy(false); });
  gInterrupted = 0;
  return end;
}

int close_now(WindowId win) {
  if (win != 0)
    return CloseWindowProc(win), 1;
  if (CloseFrameProc() != 0)
    end_desktop();
  return 1;
}

void end_desktop() {
  ended = true;
  gDesktop->quit();
}

void close_afterwards(WindowId win) {
  if (std::find(to_close.begin(), to_close.end(), win) == to_close.end())
    to_close.push_back(win);
}

bool closing_waits() {
  return !to_close.empty();
}

bool desktop_ended() {
  return ended;
}

void show_database_state() {
  static std::string shown_name;
  static bool shown_mark = false;
  const bool unsaved = gSymbolTableChanged != 0 || gSegsChanged != 0;
  if (gDDB_basename == shown_name && unsaved == shown_mark)
    return;
  shown_name = gDDB_basename;
  shown_mark = unsaved;
  gDesktop->show_database(std::filesystem::path(shown_name).filename().string(), unsaved);
}

void after_command() {
  while (!to_close.empty() && !ended) {
    const WindowId win = to_close.back();
    to_close.pop_back();
    run_alone([win] { return close_now(win); });
  }
  if (ended)
    return;
  wait_for_query();
  refresh_graphics_windows();
  AdjustMenus();
  show_database_state();
}

CommandEnd run_gated(const Command &command) {
  if (command_runs() || ended) {
    gDesktop->beep();
    return CommandEnd::failed;
  }
  const CommandEnd end = run_alone(command);
  run_step(after_command);
  return end;
}

} // namespace velora
