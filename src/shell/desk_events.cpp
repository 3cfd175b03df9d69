// The gate between the window system and the program. Holds whether a command runs, and which
// windows wait to be closed until it has ended.
#include "shell/desk_events.h"

#include <algorithm>
#include <vector>

#include "db/vel_dbop.h"
#include "eval/registry.h"
#include "platform/interrupt.h"
#include "platform/response.h"
#include "shell/console_window.h"
#include "shell/graphics_windows.h"
#include "shell/picture_windows.h"
#include "shell/query_text.h"
#include "shell/vel_wins.h"
#include "shell/x_menus.h"

namespace velora {

namespace {

bool running = false;
bool ended = false; // the frame is going
std::vector<WindowId> to_close;

CommandEnd run_one(const Command &command) {
  running = true;
  const CommandEnd end = run_command(command);
  gDesktopConsole.busy(false);
  running = false;
  gInterrupted = 0;
  return end;
}

int close_now(WindowId win) {
  if (win != 0)
    return CloseWindowProc(win), 1;
  if (CloseFrameProc() != 0) {
    ended = true;
    gDesktop->quit();
  }
  return 1;
}

int open_named(const std::string &database) {
  Setup_Global_DDB_name(database);
  const int opened = OpenDataBaseFile();
  CreateUserMenus();
  return opened;
}

void settle() {
  if (ended)
    return;
  wait_for_query();
  refresh_graphics_windows();
  AdjustMenus();
}

} // namespace

bool command_runs() {
  return running;
}

CommandEnd run_entry(const Command &command) {
  if (running || ended) {
    gDesktop->beep();
    return CommandEnd::failed;
  }
  const CommandEnd end = run_one(command);
  while (!to_close.empty() && !ended) {
    const WindowId win = to_close.back();
    to_close.pop_back();
    run_one([win] { return close_now(win); });
  }
  settle();
  if (!ended)
    console_changed(); // lines typed meanwhile
  return end;
}

int start_desktop(const std::string &database) {
  if (NewTextWindow(kControlWindow) == 0)
    return 0;
  gDesktop->focus_window(hControl);
  for (const int item : {130, 136, 137, 133})
    gDisableItem(item);
  DisplayResponse("\n");
  int code = 0;
  const CommandEnd end = run_one([&code] {
    code = init_Velora();
    return code == 0 ? 1 : 0;
  });
  if (end == CommandEnd::done && code == 0) {
    if (!database.empty())
      run_one([&database] { return open_named(database); });
    settle();
    return 1;
  }
  gDesktop->message_box("Loading info:", "Sorry - failed");
  return 0;
}

void menu_chosen(int number, MenuBar bar) {
  if (running && number == 113)
    close_asked(0);
  else
    run_entry([number, bar] { return DoMenuCommandPC(number, bar), 1; });
}

void menu_opened() {
  if (!running)
    run_step(AdjustMenus);
}

void close_asked(WindowId win) {
  if (!running) {
    run_entry([win] { return close_now(win); });
    return;
  }
  if (std::find(to_close.begin(), to_close.end(), win) == to_close.end())
    to_close.push_back(win);
  if (win == 0)
    interrupt_asked();
  else
    gDesktop->beep(); // it closes when the query has ended
}

void interrupt_asked() {
  if (running)
    gInterrupted = 1;
}

void text_changed(WindowId win) {
  if (win == hControl && !ended)
    run_step(console_changed);
}

bool recall_key(int step) {
  int found = 0;
  run_step([step, &found] { found = console_recall(step); });
  return found != 0;
}

bool reuse_line(const std::string &line) {
  if (running)
    return false;
  bool reused = false;
  run_step([&line, &reused] {
    const std::string query = strip_prompt(line);
    reused = !query.empty();
    if (reused)
      gDesktop->set_typed_text(hControl, query);
  });
  return reused;
}

void clear_typed() {
  if (!running)
    gDesktop->set_typed_text(hControl, "");
}

void window_activated(WindowId win) {
  if (ended)
    return;
  run_step([win] { window_focused(win); });
  menu_opened();
}

void next_window_asked(int step) {
  if (!ended)
    focus_next_window(step);
}

void paint_window(WindowId win, Canvas &canvas) {
  run_step([win, &canvas] {
    if (GraphicTypeWindow(win) != 0)
      draw_graphics_window(win, canvas);
    else
      draw_picture_window(win, canvas);
  });
}

} // namespace velora
