// The window procedures of all windows but the frame. Each message becomes one call of the
// program's entries or one of this folder's helpers; nothing is decided here.
#include "shell/desk_events.h"
#include "shell/vel_wins.h"
#include "shell/win32/w_desktop.h"
#include "shell/win32/w_dialogs.h"
#include "shell/win32/w_edit.h"
#include "shell/win32/w_guard.h"
#include "shell/win32/w_modal.h"
#include "shell/win32/w_names.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_steps.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

constexpr int kWheelUnits = 60;
// A longer text is wrapped anew once when its frame has been dragged, not at each step.
constexpr DWORD kLongText = 20'000;

// Alt, F10, and Alt with a letter open the frame's menu from any window, since the others have
// none. Alt with the space bar opens a window's own.
bool opens_frame_menu(WPARAM wparam, LPARAM lparam) {
  return (wparam & kSystemCommandBits) == SC_KEYMENU && lparam != L' ';
}

void activated(const Window &window, WPARAM wparam) {
  if (LOWORD(wparam) != WA_INACTIVE)
    window_activated(window.id);
}

// What all windows but the frame do alike; true when `result` answers the message.
bool common_message(Window &window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT &result) {
  result = 0;
  switch (message) {
  case WM_CLOSE:
    if (!dialog_comes_first())
      close_asked(window.id);
    return true;
  case WM_SIZE:
    if (wparam == SIZE_MINIMIZED)
      window_put_away(window.id);
    return false;
  case WM_SETCURSOR:
    result = TRUE;
    return cursor_set(&window, lparam);
  case WM_GETMINMAXINFO:
    limit_maximised(window.hwnd, *reinterpret_cast<MINMAXINFO *>(lparam));
    return true;
  case WM_SYSCOMMAND:
    if (!opens_frame_menu(wparam, lparam))
      return false;
    SendMessageW(hVel, message, wparam, lparam);
    return true;
  case WM_DPICHANGED:
    take_suggested_place(window.hwnd, lparam);
    if (window.edit != nullptr)
      SendMessageW(window.edit, WM_SETFONT,
                   reinterpret_cast<WPARAM>(text_font(LOWORD(wparam), window.points)), TRUE);
    return true;
  default:
    return false;
  }
}

// Whole units out of turns of the wheel; what is too small for one is kept for the next turn.
int units_turned(LONG &rest, int turned) {
  rest += turned * kWheelUnits;
  const int units = static_cast<int>(rest) / WHEEL_DELTA;
  rest %= WHEEL_DELTA;
  return units;
}

// Away from the user is up, or with Shift to the left.
void wheel_turned(Window &window, WPARAM wparam) {
  const int turned = -GET_WHEEL_DELTA_WPARAM(wparam);
  if ((GET_KEYSTATE_WPARAM(wparam) & MK_SHIFT) != 0)
    scroll_by(window, units_turned(window.wheel_rest.x, turned), 0);
  else
    scroll_by(window, 0, units_turned(window.wheel_rest.y, turned));
}

// A wheel that is tilted to the right goes there.
void wheel_tilted(Window &window, WPARAM wparam) {
  scroll_by(window, units_turned(window.wheel_rest.x, GET_WHEEL_DELTA_WPARAM(wparam)), 0);
}

// The keys that scroll, as the scroll bar's event that they stand for, alone and with Ctrl.
struct ScrollKey {
  WPARAM key;
  int bar;
  WPARAM event;
  WPARAM with_ctrl;
};
constexpr ScrollKey kScrollKeys[] = {
    {VK_UP, SB_VERT, SB_LINEUP, SB_PAGEUP},   {VK_DOWN, SB_VERT, SB_LINEDOWN, SB_PAGEDOWN},
    {VK_LEFT, SB_HORZ, SB_LINEUP, SB_PAGEUP}, {VK_RIGHT, SB_HORZ, SB_LINEDOWN, SB_PAGEDOWN},
    {VK_PRIOR, SB_VERT, SB_PAGEUP, SB_TOP},   {VK_NEXT, SB_VERT, SB_PAGEDOWN, SB_BOTTOM},
    {VK_HOME, SB_HORZ, SB_TOP, SB_TOP},       {VK_END, SB_HORZ, SB_BOTTOM, SB_BOTTOM},
};

// Ctrl with Home or End goes to the corner, so it moves both ways.
bool scroll_key(Window &window, WPARAM key) {
  const bool ctrl = GetKeyState(VK_CONTROL) < 0;
  for (const ScrollKey &row : kScrollKeys) {
    if (row.key != key)
      continue;
    scroll_window(window, row.bar, ctrl ? row.with_ctrl : row.event);
    if (ctrl && row.bar == SB_HORZ && (key == VK_HOME || key == VK_END))
      scroll_window(window, SB_VERT, row.event);
    return true;
  }
  return false;
}

// Windows that are drawn. True when `result` answers the message.
bool drawn_message(Window &window, UINT message, WPARAM wparam, LPARAM lparam) {
  const WindowId id = window.id;
  if (input_message(window, message, wparam, lparam))
    return true;
  if (find_window(id) == nullptr) // closed by what was done
    return true;
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
  case WM_KEYDOWN:
    return scroll_key(window, wparam);
  case WM_HSCROLL:
    scroll_window(window, SB_HORZ, wparam);
    return true;
  case WM_VSCROLL:
    scroll_window(window, SB_VERT, wparam);
    return true;
  case WM_MOUSEWHEEL:
    wheel_turned(window, wparam);
    return true;
  case WM_MOUSEHWHEEL:
    wheel_tilted(window, wparam);
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
  if (message == WM_GETOBJECT && describe(*window, hwnd, wparam, lparam, result))
    return result;
  if (drawn_message(*window, message, wparam, lparam))
    return message == WM_ERASEBKGND ? 1 : 0;
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

// What the control tells is dealt with from the message loop, when the control has finished.
void edit_notified(Window &window, WORD code) {
  if (code == EN_ERRSPACE || code == EN_MAXTEXT) {
    if (!window.no_space_told)
      window.no_space_told = PostMessageW(window.hwnd, kNoSpaceMessage, 0, 0) != FALSE;
    return;
  }
  if (code != EN_CHANGE || window.own_change)
    return;
  text_edited(window);
  if (window.kind != kControlWindow)
    window.soft_breaks.clear(); // their places have moved
  if (!window.change_told)
    window.change_told = PostMessageW(window.hwnd, kTextChangedMessage, 0, 0) != FALSE;
}

// Shown once, however often a control tells of it meanwhile.
void show_no_space(WindowId id) {
  show_message("Velora", "Edit control out of space.", MB_ICONWARNING);
  if (Window *window = find_window(id))
    window->no_space_told = false;
}

void fill_with_edit(const Window &window) {
  RECT inside{};
  GetClientRect(window.hwnd, &inside);
  if (IsIconic(window.hwnd) == FALSE)
    MoveWindow(window.edit, 0, 0, inside.right, inside.bottom, TRUE);
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
    if (!window.frame_dragged || text_length(window) < kLongText)
      fill_with_edit(window);
    return true;
  case WM_ENTERSIZEMOVE:
    window.frame_dragged = true;
    return false;
  case WM_EXITSIZEMOVE:
    window.frame_dragged = false;
    fill_with_edit(window);
    return false;
  case WM_COMMAND:
    if (reinterpret_cast<HWND>(lparam) == window.edit)
      edit_notified(window, HIWORD(wparam));
    return true;
  case kTextChangedMessage:
    window.change_told = false;
    text_changed(window.id);
    return true;
  case kNoSpaceMessage:
    show_no_space(window.id);
    return true;
  default:
    return false;
  }
}

LRESULT text_window(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
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

} // namespace

LRESULT CALLBACK VeloraWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  return guarded<drawn_window>(hwnd, message, wparam, lparam);
}

LRESULT CALLBACK GraphicWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  return guarded<drawn_window>(hwnd, message, wparam, lparam);
}

LRESULT CALLBACK TextWndProc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  return guarded<text_window>(hwnd, message, wparam, lparam);
}

} // namespace velora::win32
