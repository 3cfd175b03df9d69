// The frame: its procedure, and what its place and state mean for the windows that it owns. Holds
// the shape of the cursor.
#include <algorithm>
#include <vector>

#include "shell/desk_events.h"
#include "shell/vel_wins.h"
#include "shell/win32/w_commands.h"
#include "shell/win32/w_find.h"
#include "shell/win32/w_guard.h"
#include "shell/win32/w_modal.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

constexpr WPARAM kRaise = 1; // with kRefocusMessage: the windows come to the front as well

CursorShape shown_cursor = CursorShape::arrow;
WPARAM state = SIZE_RESTORED; // minimised, maximised or neither

// Some window systems bring the frame in front of what it owns, without telling so in the order of
// the windows: all that it owns is put on top again, in its order.
void raise_owned() {
  std::vector<HWND> windows = top_windows();
  std::reverse(windows.begin(), windows.end());
  for (const HWND window : windows)
    if (GetWindow(window, GW_OWNER) != nullptr && IsWindowVisible(window) != FALSE)
      SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

// Windows that are maximised follow the frame.
void fit_maximised() {
  const RECT area = frame_inside();
  if (IsIconic(hVel) != FALSE)
    return;
  for (const HWND window : top_windows())
    if (window != hVel && IsZoomed(window) != FALSE)
      SetWindowPos(window, nullptr, area.left, area.top, area.right - area.left,
                   area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void frame_sized(WPARAM how) {
  fit_maximised();
  if (how != state && how != SIZE_MINIMIZED) // what is owned is shown again after this message
    PostMessageW(hVel, kRefocusMessage, kRaise, 0);
  state = how;
}

// The focus goes back to the window that commands act on.
void refocus() {
  const Window *window = find_window(previous != 0 ? previous : hControl);
  if (window != nullptr && IsWindowVisible(window->hwnd) != FALSE &&
      IsWindowEnabled(window->hwnd) != FALSE)
    SetActiveWindow(window->hwnd);
}

LRESULT frame_system_command(WPARAM wparam, LPARAM lparam) {
  const WPARAM command = wparam & kSystemCommandBits;
  if ((command == SC_KEYMENU || command == SC_MOUSEMENU) && command_runs() && lparam != L' ') {
    MessageBeep(MB_OK);
    return 0;
  }
  return DefWindowProcW(hVel, WM_SYSCOMMAND, wparam, lparam);
}

// The system wants to end the session. What would be lost is asked about first: the user sees the
// reason, and closing begins as if the frame had been closed.
LRESULT session_ends() {
  if (session_may_end()) {
    ShutdownBlockReasonDestroy(hVel);
    return TRUE;
  }
  ShutdownBlockReasonCreate(hVel, L"Something is not saved or still running");
  PostMessageW(hVel, WM_CLOSE, 0, 0);
  return FALSE;
}

// The menus are used without taking the focus away from the window that has it; when another
// program is in front, a click on the frame brings this one there.
bool keeps_focus(int part) {
  return (part == HTMENU || part == HTCLIENT) && GetActiveWindow() != nullptr;
}

} // namespace

RECT frame_inside() {
  RECT inside{};
  GetClientRect(hVel, &inside);
  MapWindowPoints(hVel, nullptr, reinterpret_cast<POINT *>(&inside), 2);
  return inside;
}

// A maximised window leaves the frame's menu bar free. The system counts the place from the corner
// of the screen that the window is on.
void limit_maximised(HWND window, MINMAXINFO &limits) {
  const RECT area = frame_inside();
  const POINT size{area.right - area.left, area.bottom - area.top};
  if (IsIconic(hVel) != FALSE || size.x < limits.ptMinTrackSize.x ||
      size.y < limits.ptMinTrackSize.y)
    return;
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
  limits.ptMaxPosition = {area.left - screen.rcMonitor.left, area.top - screen.rcMonitor.top};
  limits.ptMaxSize = size;
}

void take_suggested_place(HWND hwnd, LPARAM lparam) {
  const auto *place = reinterpret_cast<const RECT *>(lparam);
  SetWindowPos(hwnd, nullptr, place->left, place->top, place->right - place->left,
               place->bottom - place->top, SWP_NOZORDER | SWP_NOACTIVATE);
}

// The shape stays until another is set: windows ask for it at each move of the mouse, and the one
// below the mouse is made to ask now.
void show_cursor(CursorShape shape) {
  shown_cursor = shape;
  POINT at{};
  GetCursorPos(&at);
  const HWND below = WindowFromPoint(at);
  if (below == nullptr || GetWindowThreadProcessId(below, nullptr) != GetCurrentThreadId())
    return;
  const LRESULT part = SendMessageW(below, WM_NCHITTEST, 0, MAKELPARAM(at.x, at.y));
  SendMessageW(below, WM_SETCURSOR, reinterpret_cast<WPARAM>(below),
               MAKELPARAM(part, WM_MOUSEMOVE));
}

CursorShape cursor_now() {
  return shown_cursor;
}

bool cursor_set(const Window *window, LPARAM lparam) {
  const bool own = window != nullptr && shows_picture(window->kind);
  if (LOWORD(lparam) != HTCLIENT || (shown_cursor != CursorShape::busy && !own))
    return false;
  SetCursor(cursor_for(shown_cursor));
  return true;
}

namespace {

LRESULT frame_message(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  if (find_message(message, lparam))
    return 0;
  switch (message) {
  case WM_COMMAND:
    if (!dialog_comes_first() && !run_own_command(LOWORD(wparam)))
      menu_chosen(LOWORD(wparam), shown_bar());
    return 0;
  case WM_SETCURSOR:
    return cursor_set(nullptr, lparam) ? TRUE : DefWindowProcW(hwnd, message, wparam, lparam);
  case WM_TIMER:
    time_passed();
    return 0;
  case WM_INITMENU:
    menu_opened();
    adjust_shown_items();
    return 0;
  case WM_SYSCOMMAND:
    return frame_system_command(wparam, lparam);
  case WM_ACTIVATE:
    if (LOWORD(wparam) != WA_INACTIVE && HIWORD(wparam) == 0)
      PostMessageW(hwnd, kRefocusMessage, kRaise, 0);
    return DefWindowProcW(hwnd, message, wparam, lparam);
  case WM_EXITMENULOOP:
    PostMessageW(hwnd, kRefocusMessage, 0, 0);
    return 0;
  case kRefocusMessage:
    if (wparam == kRaise)
      raise_owned();
    refocus();
    return 0;
  case WM_MOUSEACTIVATE:
    return keeps_focus(LOWORD(lparam)) ? MA_NOACTIVATE : MA_ACTIVATE;
  case WM_DPICHANGED:
    take_suggested_place(hwnd, lparam);
    return 0;
  case WM_SIZE:
    frame_sized(wparam);
    return 0;
  case WM_MOVE:
    fit_maximised();
    return 0;
  case WM_CLOSE:
    if (!dialog_comes_first())
      close_asked(0);
    return 0;
  case WM_QUERYENDSESSION:
    return session_ends();
  case WM_ENDSESSION:
    if (wparam != FALSE)
      DestroyWindow(hwnd);
    return 0;
  case WM_DESTROY:
    destroy_menus();
    Destroy_GDI_Objects();
    PostQuitMessage(0);
    return 0;
  default:
    return DefWindowProcW(hwnd, message, wparam, lparam);
  }
}

} // namespace

LRESULT CALLBACK WndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  return guarded<frame_message>(hwnd, message, wparam, lparam);
}

} // namespace velora::win32
