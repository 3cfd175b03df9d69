// The entries from the window system: what each runs, and whether through the gate as a command or
// beside one that runs. Holds nothing itself.
#include "shell/desk_events.h"

#include <string>

#include "db/f_dbops.h"
#include "db/recovery_file.h"
#include "db/vel_dbop.h"
#include "editor/hand/faults.h"
#include "editor/user_menus.h"
#include "eval/registry.h"
#include "platform/desktop.h"
#include "platform/interrupt.h"
#include "platform/response.h"
#include "platform/trust.h"
#include "shell/annotation.h"
#include "shell/command_numbers.h"
#include "shell/commands.h"
#include "shell/console_lines.h"
#include "shell/console_window.h"
#include "shell/gate.h"
#include "shell/graphics_windows.h"
#include "shell/message_place.h"
#include "shell/picture_hand.h"
#include "shell/picture_windows.h"
#include "shell/query_text.h"
#include "shell/recovery.h"
#include "shell/vel_wins.h"
#include "shell/x_menus.h"

namespace velora {

namespace {

constexpr int kStopIt = 1;
const std::string kWhenToClose[] = {"Stop It and Close", "When It Has Ended"};

int open_named(const std::string &database) {
  std::string base;
  Make_Base_Name(database, base);
  Setup_Global_DDB_name(base);
  const int opened = OpenDataBaseFile();
  show_recovered_pictures();
  CreateUserMenus();
  return opened;
}

// Without a database: what an earlier session left so.
int offer_unnamed() {
  offer_unnamed_work();
  show_recovered_pictures();
  CreateUserMenus();
  return 1;
}

int close_and_open(const std::string &database) {
  if (!gDDB_basename.empty() && CloseDataBaseCommand() == 0)
    return 0;
  return open_named(database);
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

// Shows the segment that the first of `lines` that is a fault of a picture tells of.
void go_to_picture_fault(const std::vector<std::string> &lines) {
  for (const std::string &line : lines)
    if (const WinInfo *wi = go_to_fault(line); wi != nullptr) {
      if (wi->win != 0)
        gDesktop->focus_window(wi->win);
      return;
    }
}

} // namespace

CommandEnd run_entry(const Command &command) {
  const CommandEnd end = run_gated(command);
  if (!command_runs() && !desktop_ended()) {
    run_step(console_changed); // lines typed meanwhile have their turn
    run_step(recovery_look);
  }
  return end;
}

int start_desktop(const std::string &database) {
  gPersonAnswers = true;
  if (NewTextWindow(kControlWindow) == 0)
    return 0;
  gDesktop->focus_window(hControl);
  for (const int item : {kCmdOff130, kCmdOff136, kCmdOff137, kCmdOff133})
    gDisableItem(item);
  DisplayResponse("\n");
  int code = 0;
  const CommandEnd end = run_alone([&code] {
    code = init_Velora();
    return code == 0 ? 1 : 0;
  });
  if (end == CommandEnd::done && code == 0) {
    run_alone([&database] { return database.empty() ? offer_unnamed() : open_named(database); });
    run_step(after_command);
    run_step(console_changed);
    return 1;
  }
  if (!closing_waits()) // otherwise the user gave it up
    gDesktop->message_box("Loading info:", "Sorry - failed");
  return 0;
}

void menu_chosen(int number, MenuBar bar) {
  if (command_runs() && number == kCmdQuit)
    close_asked(0);
  else
    run_entry([number, bar] { return DoMenuCommandPC(number, bar), 1; });
}

void menu_opened() {
  if (!command_runs())
    run_step(AdjustMenus);
}

void close_asked(WindowId win) {
  if (command_runs())
    run_step([win] { close_meanwhile(win); });
  else
    run_entry([win] { return close_now(win); });
}

void open_database(const std::string &file) {
  run_entry([&file] { return close_and_open(file); });
}

bool session_may_end() {
  bool saved = false;
  if (!command_runs())
    run_step([&saved] { saved = desktop_ended() || everything_saved() != 0; });
  return saved;
}

void interrupt_asked() {
  if (command_runs())
    gInterrupted = 1;
}

void text_changed(WindowId win) {
  if (desktop_ended())
    return;
  if (win == hControl)
    run_step(console_changed);
  else if (win == gNarWind)
    narrative_typed();
}

bool recall_key(int step) {
  int found = 0;
  run_step([step, &found] { found = console_recall(step); });
  return found != 0;
}

bool reuse_line(const std::string &line) {
  if (command_runs())
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

bool message_leads(const std::vector<std::string> &lines) {
  return std::any_of(lines.begin(), lines.end(), [](const std::string &line) {
    return place_in_message(line).win != 0 || leads_to_fault(line);
  });
}

void message_clicked(const std::vector<std::string> &lines) {
  if (!command_runs())
    run_step([&lines] {
      if (!go_to_message_place(lines))
        go_to_picture_fault(lines);
    });
}

void clear_typed() {
  if (!command_runs())
    run_step([] { gDesktop->set_typed_text(hControl, ""); });
}

void window_activated(WindowId win) {
  if (desktop_ended())
    return;
  run_step([win] { window_focused(win); });
  menu_opened();
}

void window_put_away(WindowId win) {
  if (!desktop_ended())
    run_step([win] { leave_out_of_sight(win); });
}

void next_window_asked(int step) {
  if (!desktop_ended())
    run_step([step] { focus_next_window(step); });
}

bool take_accelerator(const KeyEvent &event) {
  const MenuBar bar = gDesktop->menu_bar();
  const int number = accelerator_command(bar, event);
  if (number == 0)
    return false;
  if (item_enabled(number, bar))
    menu_chosen(number, bar);
  return true;
}

bool mouse_event(WindowId win, const MouseEvent &event) {
  WinInfo *wi = desktop_ended() ? nullptr : picture_of(win);
  if (wi == nullptr)
    return false;
  bool taken = false;
  run_step([&] { taken = picture_mouse(wi, event); });
  return taken;
}

bool key_event(WindowId win, const KeyEvent &event) {
  if (desktop_ended())
    return false;
  if (take_accelerator(event))
    return true;
  WinInfo *wi = picture_of(win);
  if (wi == nullptr)
    return false;
  bool taken = false;
  run_step([&] { taken = picture_key(wi, event); });
  return taken;
}

namespace {

// The system wants the program to end, and nobody can be asked.
void keep_and_end() {
  AddAnnotation();
  recovery_at_end();
  end_desktop();
}

} // namespace

void time_passed() {
  if (gEndAsked != 0 && !desktop_ended()) {
    if (command_runs())
      gInterrupted = 1; // once more: a dialog may have taken it
    else
      run_step(keep_and_end);
    return;
  }
  if (!command_runs() && !desktop_ended())
    run_step([] {
      show_database_state();
      recovery_look();
    });
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
