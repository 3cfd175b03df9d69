// The entries through which the window system calls the program. Everything the user does arrives
// here, one command at a time, each through the return point, so that nothing unwinds through the
// frames of the window system.
#pragma once

#include <string>

#include "platform/canvas.h"
#include "platform/desktop.h"
#include "shell/return_point.h"

namespace velora {

// True while a command runs. Events that would start another one are refused then.
bool command_runs();
// Runs a command from outside; afterwards text is shown, the prompt stands again, the menus are
// adjusted and the windows are closed that the user asked to close meanwhile.
CommandEnd run_entry(const Command &command);

// Opens the console, starts the language and opens `database` if one is named; 1, or 0 after the
// failure of the language has been shown.
int start_desktop(const std::string &database = {});

// A menu command or accelerator was chosen while `bar` was shown.
void menu_chosen(int number, MenuBar bar);
// A menu is about to open: the items that depend on the text window are brought up to date.
void menu_opened();
// The user asked to close a window; 0 is the main frame. While a command runs, the frame stops it;
// for other windows the user is asked.
void close_asked(WindowId win);
// True when the system may end the program now: nothing runs and nothing would be lost.
bool session_may_end();
// The interrupt key: stops the command that runs.
void interrupt_asked();
// The text of a text window was changed by the user.
void text_changed(WindowId win);
// Up (-1) or Down (1) in the console; true when it recalled a query.
bool recall_key(int step);
// Takes an old line of the console to the prompt; true when it holds anything.
bool reuse_line(const std::string &line);
// Empties what is typed in the console, unless a command runs.
void clear_typed();
// A window became active.
void window_activated(WindowId win);
// The keys that go from window to window: the next one (1) or the one before (-1).
void next_window_asked(int step);
// Draws the inside of a picture or graphics window.
void paint_window(WindowId win, Canvas &canvas);

} // namespace velora
