// The gate between the window system and the program. Holds whether a command runs, and which
// windows wait to be closed until it has ended.
#include "shell/desk_events.h"

#include <algorithm>
#include <string>
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

constexpr int kStopIt = 1;
const std::string kWhenToClose[] = {"Stop It and Close", "When It Has Ended"};

CommandEnd run_one(const Command &command) {
  running = true;
  const CommandEnd end = run_command(command);
  run_step([] { gDesktopConsole.busy(false); });
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

// What waited for the end of a command: closing of windows, the prompt, the menus, typed lines.
void after_command() {
  while (!to_close.empty() && !ended) {
    const WindowId win = to_close.back();
    to_close.pop_back();
    run_one([win] { return close_now(win); });
  }
  if (ended)
    return;
  wait_for_query();
  refresh_graphics_windows();
  AdjustMenus();
  console_changed();
}

void close_afterwards(WindowId win) {
  if (std::find(to_close.begin(), to_close.end(), win) == to_close.end())
    to_close.push_back(win);
}

// The user wants a window closed while a command runs.
void close_meanwhile(WindowId win) {
  if (win == hControl) {
    CloseWindowProc(win); // which is refused
    return;
  }
  int choice = kStopIt;
  if (win != 0)
    choice = gConsole->ask("Something is still running.\nClose the window:", kWhenToClose);
  if (choice == kStopIt)
    interrupt_asked();
  if (choice != kCancelled)
    close_afterwards(win);
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
  run_step(after_command);
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
    run_step(after_command);
    return 1;
  }
  if (to_close.empty()) // otherwise the user gave it up
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
  if (running)
    run_step([win] { close_meanwhile(win); });
  else
    run_entry([win] { return close_now(win); });
}

bool session_may_end() {
  bool saved = false;
  if (!running)
    run_step([&saved] { saved = ended || everything_saved() != 0; });
  return saved;
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
    run_step([] { gDesktop->set_typed_text(hControl, ""); });
}

void window_activated(WindowId win) {
  if (ended)
    return;
  run_step([win] { window_focused(win); });
  menu_opened();
}

void next_window_asked(int step) {
  if (!ended)
    run_step([step] { focus_next_window(step); });
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
