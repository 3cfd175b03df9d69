// The windows of the desktop program: their kinds, titles and first placements, the list of those
// that are open, which one commands act on, and closing. Called by the menu commands, by the
// entries of the window system and by the engine where it opens windows; touches windows only
// through the desktop.
#pragma once

#include <string>
#include <vector>

#include "db/vel_util.h"
#include "eval/graphics_windows.h"
#include "platform/desktop.h"
#include "platform/window_maker.h"

namespace velora {

// The newest window of each text kind, and the window that last had the focus, which commands act
// on. 0 where there is none. The console's handle is hControl of the database's names, that of the
// narrative gNarWind of the evaluator.
extern WindowId gOrvWind;
extern WindowId gAnnWind;
extern WindowId previous;
// The program's own directory, where scratch files go.
extern std::string gAppDirectory;

struct ShellWindow {
  WindowId id;
  WindowKind kind;
  int last_focus = 0;        // greater the later it had the focus
  bool out_of_sight = false; // minimised
};
// Every open window in the order of its making; gNumDocuments is their number and the frame.
extern std::vector<ShellWindow> gWindows;
// Enters a window into the list, or takes it out. The engine opens some windows by itself, so the
// desktop tells of each; telling twice does no harm.
void enter_window(WindowId win, WindowKind kind);
void leave_window(WindowId win);

// The kind of an open window, 0 for an unknown one.
int window_kind(WindowId win);
// 1 when the window holds text (console, ORVEK, narrative, annotation); 1 when it shows graphics.
int TextTypeWindow(WindowId win);
int GraphicTypeWindow(WindowId win);
int PictureTypeWindow(WindowId win);
// The open windows of a kind, oldest first.
std::vector<WindowId> windows_of_kind(WindowKind kind);

// Makes and shows a window of kind 4 to 8; 0 on failure.
WindowId NewTextWindow(WindowKind kind);
// Retitles all windows of a kind by the format ("Orvek [%d of %d]").
void renumber_windows(WindowKind kind, const char *format);

// What the user asks for by closing a window: 1 when it closed, 0 when it stays.
int CloseWindowProc(WindowId win);
// Closes a window without asking. If it had the focus, the window that had it before gets it.
void DoCloseWindow(WindowId win);
// Gives the focus to the window that had it last, when none of the windows has it.
void focus_latest_window();
// 1 when quitting would lose nothing: no changed database, picture or text.
int everything_saved();
// Closing the frame: offers to save first; 1 when the program ends, 0 when the user went back.
int CloseFrameProc();

// A window was minimised: it gives up the focus to the one that had it before.
void leave_out_of_sight(WindowId win);
// A window got the focus: the menu bar follows it and commands act on it.
void window_focused(WindowId win);
// Arranges all windows so that none hides another one's title.
void StackWindows();
// Gives the focus to the next window (1) or the one before (-1), in the order of their making and
// round again.
void focus_next_window(int step);

// The windows in the order in which they had the focus, as pages of a book that were turned to: the
// window one step back (-1) or, after going back, forward (1); 0 for none.
WindowId window_in_history(int step);
// Gives the focus to that window; 1, or 0 when there is none.
int go_over_windows(int step);

} // namespace velora
