// The entries through which the window system calls the program. Everything the user does arrives
// here, one command at a time, each through the return point, so that nothing unwinds through the
// frames of the window system.
#pragma once

#include <string>
#include <vector>

#include "platform/canvas.h"
#include "platform/desktop.h"
#include "platform/input.h"
#include "shell/gate.h"

namespace velora {

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
// Opens a database that was dropped on the program or chosen from a list; one that is open is
// closed before, which the user may refuse.
void open_database(const std::string &file);
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
// Whether a message of the console leads to a place in a text, told by its line and those behind
// it; and a click on one, which goes there.
bool message_leads(const std::vector<std::string> &lines);
void message_clicked(const std::vector<std::string> &lines);
// Empties what is typed in the console, unless a command runs.
void clear_typed();
// A window became active.
void window_activated(WindowId win);
// A window was minimised: the keyboard goes to the one that had it before.
void window_put_away(WindowId win);
// The keys that go from window to window: the next one (1) or the one before (-1).
void next_window_asked(int step);
// Does the command that a key stands for while the shown bar is; false when there is none. One that
// is not of use now does nothing.
bool take_accelerator(const KeyEvent &event);
// Something was done with the mouse, or a key was pressed, in a window that is drawn. Accelerators
// of the shown bar come before the picture's own keys. True when it was taken; otherwise the
// desktop does what it does by itself, such as scrolling. Moves are sent while a button is down,
// and without one when the pointer is over the picture.
bool mouse_event(WindowId win, const MouseEvent &event);
bool key_event(WindowId win, const KeyEvent &event);
// Some time has passed; to be called a few times a second.
void time_passed();
// Draws the inside of a picture or graphics window.
void paint_window(WindowId win, Canvas &canvas);

} // namespace velora
