// The window procedures. Each message becomes one call of the program's entries or one of this
// folder's helpers; nothing is decided here.
#include "shell/desk_events.h"
#include "shell/vel_wins.h"
#include "shell/win32/w_desktop.h"
#include "shell/win32/w_dialogs.h"
#include "shell/win32/w_edit.h"
#include "shell/win32/w_modal.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

constexpr WPARAM kSystemCommand = 0xFFF0;
constexpr int kWheelUnits = 60;

// Alt, F10, and Alt with a letter open the frame's menu from any window, since the others have
// none. Alt with the space bar opens a window's own.
bool opens_frame_menu(WPARAM wparam, LPARAM lparam) {
  return (wparam & kSystemCommand) == SC_KEYMENU && lparam != L' ';
}

// A window came to the front, or the frame did and hands the focus on.
void activated(const Window &window, WPARAM wparam) {
  if (LOWORD(wparam) != WA_INACTIVE)
    window_activated(window.id);
}

void take_suggested_place(HWND hwnd, LPARAM lparam) {
  const auto *place = reinterpret_cast<const RECT *>(lparam);
  SetWindowPos(hwnd, nullptr, place->left, place->top, place->right - place->left,
               place->bottom - place->top, SWP_NOZORDER | SWP_NOACTIVATE);
}

// Over the inside of a window the cursor is what the program set; true when it was set.
bool cursor_set(LPARAM lparam) {
  if (LOWORD(lparam) != HTCLIENT || shown_cursor == CursorShape::arrow)
    return false;
  SetCursor(cursor_for(shown_cursor));
  return true;
}

// What all windows but the frame do alike; true when `result` answers the message.
bool common_message(Window &window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT &result) {
  result = 0;
  switch (message) {
  case WM_CLOSE:
    if (!dialog_comes_first())
      close_asked(window.id);
    return true;
  case WM_SETCURSOR:
    result = TRUE;
    return cursor_set(lparam);
  case WM_SYSCOMMAND:
    if (!opens_frame_menu(wparam, lparam))
      return false;
    SendMessageW(hVel, message, wparam, lparam);
    return true;
  case WM_DPICHANGED:
    take_suggested_place(window.hwnd, lparam);
    if (window.edit != nullptr)
      SendMessageW(window.edit, WM_SETFONT, reinterpret_cast<WPARAM>(text_font()), TRUE);
    return true;
  default:
    return false;
  }
}

void wheel_turned(Window &window, WPARAM wparam, bool across) {
  const int by = -GET_WHEEL_DELTA_WPARAM(wparam) * kWheelUnits / WHEEL_DELTA;
  scroll_by(window, across ? -by : 0, across ? 0 : by);
}

// Windows that are drawn. True when `result` answers the message.
bool drawn_message(Window &window, UINT message, WPARAM wparam) {
  switch (message) {
  case WM_ACTIVATE:
    activated(window, wparam);
    return false;
  case WM_ERASEBKGND: // painting covers everything
    return true;
  case WM_PAINT:
    paint_inside(window);
    return true;
  case WM_SIZE:
    update_scroll_bars(window);
    return true;
  case WM_HSCROLL:
    scroll_window(window, SB_HORZ, wparam);
    return true;
  case WM_VSCROLL:
    scroll_window(window, SB_VERT, wparam);
    return true;
  case WM_MOUSEWHEEL:
    wheel_turned(window, wparam, GetKeyState(VK_SHIFT) < 0);
    return true;
  case WM_MOUSEHWHEEL:
    wheel_turned(window, wparam, true);
    return true;
  default:
    return false;
  }
}

LRESULT drawn_window(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  Window *window = find_window(hwnd);
  if (window == nullptr)
    return DefWindowProcW(hwnd, message, wparam, lparam);
  LRESULT result = 0;
  if (common_message(*window, message, wparam, lparam, result))
    return result;
  if (drawn_message(*window, message, wparam))
    return message == WM_ERASEBKGND ? 1 : 0;
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

void edit_notified(Window &window, WORD code) {
  if (code == EN_ERRSPACE || code == EN_MAXTEXT) {
    show_message("Velora", "Edit control out of space.", MB_ICONWARNING);
    return;
  }
  if (code != EN_CHANGE || window.own_change || window.change_told)
    return;
  window.change_told = true; // told from the message loop, when the control has finished
  PostMessageW(window.hwnd, kTextChangedMessage, 0, 0);
}

bool text_message(Window &window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
  case WM_ACTIVATE:
    activated(window, wparam);
    return false;
  case WM_SETFOCUS:
    SetFocus(window.edit);
    return true;
  case WM_SIZE:
    MoveWindow(window.edit, 0, 0, LOWORD(lparam), HIWORD(lparam), TRUE);
    return true;
  case WM_COMMAND:
    if (reinterpret_cast<HWND>(lparam) == window.edit)
      edit_notified(window, HIWORD(wparam));
    return true;
  case kTextChangedMessage:
    window.change_told = false;
    text_changed(window.id);
    return true;
  default:
    return false;
  }
}

// The focus goes back to the window that commands act on.
void refocus() {
  const Window *window = find_window(previous != 0 ? previous : hControl);
  if (window != nullptr && IsWindowVisible(window->hwnd) != FALSE &&
      IsWindowEnabled(window->hwnd) != FALSE)
    SetActiveWindow(window->hwnd);
}

LRESULT frame_system_command(WPARAM wparam, LPARAM lparam) {
  const WPARAM command = wparam & kSystemCommand;
  if ((command == SC_KEYMENU || command == SC_MOUSEMENU) && command_runs() && lparam != L' ') {
    MessageBeep(MB_OK);
    return 0;
  }
  return DefWindowProcW(hVel, WM_SYSCOMMAND, wparam, lparam);
}

void frame_resolution_changed(WPARAM wparam, LPARAM lparam) {
  FontsInitialize(LOWORD(wparam));
  take_suggested_place(hVel, lparam);
}

} // namespace

LRESULT CALLBACK VeloraWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  return drawn_window(hwnd, message, wparam, lparam);
}

LRESULT CALLBACK GraphicWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  return drawn_window(hwnd, message, wparam, lparam);
}

LRESULT CALLBACK TextWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  Window *window = find_window(hwnd);
  if (window == nullptr || window->edit == nullptr)
    return DefWindowProcW(hwnd, message, wparam, lparam);
  LRESULT result = 0;
  if (common_message(*window, message, wparam, lparam, result))
    return result;
  if (text_message(*window, message, wparam, lparam))
    return 0;
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

LRESULT CALLBACK WndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
  case WM_COMMAND:
    if (!dialog_comes_first())
      menu_chosen(LOWORD(wparam), shown_bar());
    return 0;
  case WM_SETCURSOR:
    return cursor_set(lparam) ? TRUE : DefWindowProcW(hwnd, message, wparam, lparam);
  case WM_INITMENU:
    menu_opened();
    return 0;
  case WM_SYSCOMMAND:
    return frame_system_command(wparam, lparam);
  case WM_ACTIVATE:
    if (LOWORD(wparam) != WA_INACTIVE && HIWORD(wparam) == 0)
      PostMessageW(hwnd, kRefocusMessage, 0, 0);
    return DefWindowProcW(hwnd, message, wparam, lparam);
  case WM_EXITMENULOOP:
    PostMessageW(hwnd, kRefocusMessage, 0, 0);
    return 0;
  case kRefocusMessage:
    refocus();
    return 0;
  case WM_MOUSEACTIVATE: // the menus are used without taking the focus away
    return LOWORD(lparam) == HTMENU || LOWORD(lparam) == HTCLIENT ? MA_NOACTIVATE : MA_ACTIVATE;
  case WM_DPICHANGED:
    frame_resolution_changed(wparam, lparam);
    return 0;
  case WM_CLOSE:
    if (!dialog_comes_first())
      close_asked(0);
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

} // namespace velora::win32
