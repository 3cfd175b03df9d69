// The picture windows: opening, showing stored pictures in them, titles, sizes and closing. Called
// by the menu commands, the entries of the window system and the database.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"
#include "platform/canvas.h"
#include "platform/desktop.h"

namespace velora {

// The picture that a window shows, or null.
WinInfo *picture_of(WindowId win);
// Its title: "fac [2 of 3]", with a mark when there is something to save.
std::string picture_title(const WinInfo *wi);
// True when something is selected in it.
bool picture_has_selection(WindowId win);

// True when it is a network with nodes.
bool shows_network(WindowId win);
// True for the window of a network, whether anything is shown in it or not.
bool shows_network_window(WindowId win);

// Opens a fresh picture window of a kind; null on failure.
WinInfo *SetupNewWindow(int wtype);
// Enters windows that the editor opened by itself into the list of windows.
void register_picture_windows();

// Loads a stored picture into the window of `wi`: the first one named `name` whose number is
// greater than `cmpnt`, or else the first one of that name. Without a name the window's own name
// and number are taken. 1 when one was shown.
int GetNextComponent(WinInfo *wi, const std::string &name, int cmpnt);
// Shows the starting picture of a declared function without clauses: its result and its inputs. 1,
// or 0 with a beep; a library function is described in the console instead.
int ShowFdec(const std::string &name, WinInfo *wi);
// Asks for a number and loads that component of `name`, 0 when the answer is no number.
int GetNumComponent(WinInfo *wi, const std::string &name);

// The text size one step up or down, within 8 to 22.
int bigger_text_size(int size);
int smaller_text_size(int size);

// Notes that a picture is no longer what is stored.
void mark_changed(WinInfo *wi);
// Draws the picture of a window.
void draw_picture_window(WindowId win, Canvas &canvas);
// Redraws it, with its title and the extent that its window scrolls over.
void redraw_picture(WinInfo *wi);
// Closes the window, asking first when its picture is not saved; 1 when it closed.
int close_picture_window(WindowId win);
// The windows whose picture has unsaved changes.
std::vector<WindowId> changed_pictures();
// Asks for each of them; 0 when the user went back.
int offer_to_save_pictures();
// Before a save, which keeps stored pictures alone: tells how many are not committed and goes
// through them when the user wants to; 0 when the user went back.
int offer_to_commit_pictures();
// Closes every picture window without asking.
void close_all_pictures();

// Shows the picture of a data type, or of the type that a constructor of that name belongs to, in a
// window; 1 when one was shown.
int FindAndDisplayStructure(const std::string &name, WinInfo *wi);
// Does the item of a user menu: shows the picture of that name. 1 when one was shown.
int choose_user_item(int command, MenuBar bar);

// True when a stored picture is named so, or one of a type holds a box of that name.
bool has_picture(const std::string &name);

} // namespace velora
