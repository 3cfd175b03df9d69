// The windows as the window system knows them: the table that ties a window's number to its
// handles, the classes with their procedures, and the menu bars. Used by the files of this folder.
#pragma once

#include <string>
#include <vector>

#include "platform/desktop.h"
#include "platform/input.h"
#include "shell/text_steps.h"
#include "shell/win32/w_common.h"

namespace velora::win32 {

// The main frame, the program and its accelerators.
extern HWND hVel;
extern HINSTANCE hInst;
extern HACCEL hAccel;

// Messages of our own: the text of a text window was changed; the focus goes back to where it was;
// an edit control could not take a text.
inline constexpr UINT kTextChangedMessage = WM_APP + 1;
inline constexpr UINT kRefocusMessage = WM_APP + 2;
inline constexpr UINT kNoSpaceMessage = WM_APP + 3;

// The bits of a system command's number that tell which it is.
inline constexpr WPARAM kSystemCommandBits = 0xFFF0;

// The usual size of the letters of texts.
inline constexpr int kTextPoints = 10;

// A stretch of an edit control's text, in its own units.
struct EditRange {
  DWORD start;
  DWORD end;
};

// A stretch of a text that has a fault, and what is wrong there.
struct FaultMark {
  EditRange range;
  std::wstring message;
};

// One open window. Text windows have an edit control and may have messages that stand out; the
// console's typed text begins at `mark`. Picture and graphics windows have an extent that they
// scroll over, in picture units.
struct Window {
  WindowId id = 0;
  WindowKind kind = kControlWindow;
  HWND hwnd = nullptr;
  HWND edit = nullptr;
  DWORD mark = 0;
  bool own_change = false; // the program changes the text, not the user
  bool change_told = false;
  bool no_space_told = false;
  std::vector<EditRange> messages; // in order
  std::vector<DWORD> soft_breaks;  // line ends for showing only, in order
  bool frame_dragged = false;
  int points = kTextPoints; // how large the letters of a text are
  TextSteps steps;          // what the user did to a text; in the console, behind the mark
  std::vector<FaultMark> faults;
  HWND tip = nullptr;    // that tells of the fault below the mouse
  int told_fault = -1;   // which one it tells of
  int wheel_letters = 0; // of turns with Ctrl too small to make letters larger
  Rect extent{};
  int zoom = 100; // hundredths of the natural size
  POINT scroll{};
  bool mouse_held = false; // between a press and its end
  int aimed = 0;           // the segment that a script means with what it does
  int notch_rest = 0;      // of the wheel, in parts of WHEEL_DELTA
  wchar_t first_half = 0;  // of a character that takes two messages
  POINT wheel_rest{};      // of turns too small to scroll by, in parts of WHEEL_DELTA
};

Window *find_window(WindowId id);
Window *find_window(HWND hwnd);
Window *add_window(WindowKind kind);
void remove_window(WindowId id);
// The top windows of the program, the front one first, shown or not.
std::vector<HWND> top_windows();

// w_main: registers all classes; false when one is refused.
bool register_classes();
const wchar_t *class_of(WindowKind kind);

// The window procedures.
LRESULT CALLBACK WndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT CALLBACK VeloraWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT CALLBACK GraphicWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT CALLBACK TextWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);

// w_frame: the inside of the frame on the screen, in dots, and holding a window to it that is
// maximised. Cursors of the insides: busy shows everywhere, the others in pictures; the rest is
// left to the classes (`window` is null for the frame).
RECT frame_inside();
void limit_maximised(HWND window, MINMAXINFO &limits);
void take_suggested_place(HWND hwnd, LPARAM lparam);
void show_cursor(CursorShape shape);
bool cursor_set(const Window *window, LPARAM lparam);
CursorShape cursor_now();

// Dots an inch of a window, and conversion between picture units (96 an inch) and dots.
unsigned dpi_of(HWND hwnd);
int to_dots(HWND hwnd, int units);
int to_units(HWND hwnd, int dots);

// w_paint: the inside of picture and graphics windows.
void paint_inside(Window &window);
void update_scroll_bars(Window &window);
void scroll_window(Window &window, int bar, WPARAM wparam);
void scroll_by(Window &window, int dx, int dy);
// A place of the window's inside in the units of what it shows.
Point shown_point(const Window &window, POINT dots);
// And back.
POINT shown_place(const Window &window, Point at);
// Saves the inside as a file: a bitmap, or PNG under a name that ends so.
bool save_bitmap(Window &window, const std::string &file);

// w_input: the mouse and the keys of windows that are drawn. True when the message is dealt with.
bool input_message(Window &window, UINT message, WPARAM wparam, LPARAM lparam);
// The system's code of a key, as its messages bring it.
WPARAM code_of(const KeyEvent &event);

// w_menus: the five menu bars.
bool init_menus();
void destroy_menus();
void show_bar(MenuBar bar);
MenuBar shown_bar();
// Greys the desktop's own items of the shown bar that are of no use now.
void adjust_shown_items();
void enable_menu_item(int command, bool on);
void enable_all_menus(bool on);
// Greys one menu of a bar, or gives it back; enable_all_menus() leaves it grey.
void enable_whole_menu(MenuBar bar, const std::string &label, bool on);
void fill_user_menu(MenuBar bar, const std::string &header, const std::vector<std::string> &names,
                    int first_command);
std::string user_menu_label(MenuBar bar, int command);

} // namespace velora::win32
