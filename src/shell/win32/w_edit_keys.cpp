// Keys of the console. Whatever inserts text goes behind the mark wherever the caret stands; Enter
// closes the line; Up and Down bring earlier queries back; Escape empties the line.
#include "shell/win32/w_edit_keys.h"

#include <algorithm>
#include <string>

#include "platform/response.h"
#include "shell/desk_events.h"
#include "shell/win32/w_clipboard.h"
#include "shell/win32/w_edit.h"
#include "shell/win32/w_edit_paint.h"
#include "shell/win32/w_guard.h"
#include "shell/win32/w_names.h"
#include "shell/win32/w_spots.h"
#include "shell/win32/w_steps.h"

namespace velora::win32 {

namespace {

// Characters that the keyboard makes with Ctrl.
constexpr WPARAM kCtrlA = 1;
constexpr WPARAM kCtrlC = 3;
constexpr WPARAM kCtrlEnter = 10;
constexpr WPARAM kCtrlV = 22;
constexpr WPARAM kCtrlX = 24;
constexpr WPARAM kCtrlZ = 26;
constexpr WPARAM kCtrlBackspace = 127;
// A longer line of old text is an answer rather than a query.
constexpr std::size_t kLongestReused = 7'000;

bool shift_down() {
  return GetKeyState(VK_SHIFT) < 0;
}

bool control_down() {
  return GetKeyState(VK_CONTROL) < 0;
}

void caret_to_end(const Window &window) {
  const DWORD end = text_length(window);
  SendMessageW(window.edit, EM_SETSEL, end, static_cast<LPARAM>(end));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

// A key that belongs to a menu when Alt is held: the control itself would look for a menu in its
// own window only.
bool opens_menu(WPARAM c) {
  return c > L' ';
}

// Before something inserts text: older text is left alone.
void leave_old_text(const Window &window) {
  if (selection_of(window).start < window.mark)
    caret_to_end(window);
}

// Before something deletes the selection, or without one the character before or behind the caret:
// true when that is older text. Of a selection that begins there only the typed part is deleted.
bool deletes_old_text(const Window &window, bool before_caret) {
  const EditRange selected = selection_of(window);
  if (selected.start < window.mark && selected.end > window.mark) {
    SendMessageW(window.edit, EM_SETSEL, window.mark, static_cast<LPARAM>(selected.end));
    return false;
  }
  return selected.start < window.mark ||
         (before_caret && selected.start == selected.end && selected.start == window.mark);
}

// Enter in older text, with nothing typed, takes that line to the prompt; true when it did.
bool reuse_old_line(const Window &window) {
  const EditRange selected = selection_of(window);
  if (selected.start >= window.mark || text_length(window) > window.mark)
    return false;
  const std::string line = whole_lines(window, selected.start, 1).front();
  return line.size() <= kLongestReused && reuse_line(line);
}

void enter_key(const Window &window) {
  if (reuse_old_line(window))
    return;
  caret_to_end(window);
  DefSubclassProc(window.edit, WM_CHAR, VK_RETURN, 1);
}

// A character typed into the console. True when it is dealt with here.
bool console_char(const Window &window, WPARAM c) {
  switch (c) {
  case VK_RETURN:
  case kCtrlEnter:
    enter_key(window);
    return true;
  case VK_ESCAPE:
  case kCtrlBackspace: // some controls delete a word then, which may begin in older text
    return true;
  case VK_BACK:
    if (!deletes_old_text(window, true))
      return false;
    MessageBeep(MB_OK);
    return true;
  default:
    if (c >= L' ' || c == VK_TAB)
      leave_old_text(window);
    return false;
  }
}

// Home goes to the beginning of what is typed, however many lines it takes; with Shift it selects
// from there to where the selection began. True when the caret stood in what is typed.
bool home_key(const Window &window) {
  const EditRange selected = selection_of(window);
  if (selected.start < window.mark)
    return false;
  POINT caret{};
  GetCaretPos(&caret);
  const LRESULT start = SendMessageW(window.edit, EM_POSFROMCHAR, selected.start, 0);
  const bool caret_first = start != -1 && caret.x == static_cast<short>(LOWORD(start)) &&
                           caret.y == static_cast<short>(HIWORD(start));
  const DWORD anchor = caret_first ? selected.end : selected.start;
  SendMessageW(window.edit, EM_SETSEL, shift_down() ? anchor : window.mark,
               static_cast<LPARAM>(window.mark));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
  return true;
}

bool console_key(const Window &window, WPARAM key) {
  const bool typing = selection_of(window).start >= window.mark && !shift_down();
  switch (key) {
  case VK_UP:
    return typing && (recall_key(-1), true);
  case VK_DOWN:
    return typing && (recall_key(1), true);
  case VK_HOME:
    return !control_down() && home_key(window);
  case VK_DELETE: // with Shift and no selection it deletes backwards
    return deletes_old_text(window, shift_down());
  case VK_ESCAPE:
    clear_typed();
    return true;
  default:
    return false;
  }
}

// Changes that came by a command or the mouse. True when they are dealt with here.
bool console_edit(const Window &window, UINT message) {
  if (selection_of(window).start >= window.mark)
    return false;
  if (message == WM_CUT) {
    SendMessageW(window.edit, WM_COPY, 0, 0);
    return true;
  }
  return deletes_old_text(window, false);
}

bool console_message(const Window &window, UINT message, WPARAM wparam) {
  switch (message) {
  case WM_CHAR:
    return console_char(window, wparam);
  case WM_KEYDOWN:
    return console_key(window, wparam);
  case WM_CUT:
  case WM_CLEAR:
    return console_edit(window, message);
  case WM_PASTE:
    leave_old_text(window);
    return paste_typed(window);
  case WM_UNICHAR:
  case WM_IME_CHAR:
  case WM_IME_STARTCOMPOSITION: // the control inserts what is composed by itself
  case EM_REPLACESEL:
    leave_old_text(window);
    return false;
  default:
    return false;
  }
}

// The clipboard's message that a key stands for, 0 for none: controls act on these keys without
// sending it, and what it means here would be passed over.
UINT clipboard_message(const Window &window, UINT message, WPARAM wparam) {
  if (message == WM_CHAR)
    return wparam == kCtrlC ? WM_COPY : wparam == kCtrlV ? WM_PASTE : wparam == kCtrlX ? WM_CUT : 0;
  if (message != WM_KEYDOWN || shift_down() == control_down())
    return 0;
  if (wparam == VK_INSERT)
    return shift_down() ? WM_PASTE : WM_COPY;
  const EditRange selected = selection_of(window);
  return wparam == VK_DELETE && shift_down() && selected.start != selected.end ? WM_CUT : 0;
}

// What may change the selection, which some controls draw at once by themselves.
bool may_select(UINT message, WPARAM wparam) {
  switch (message) {
  case EM_SETSEL:
  case WM_KEYDOWN:
  case WM_LBUTTONDOWN:
  case WM_LBUTTONUP:
  case WM_LBUTTONDBLCLK:
    return true;
  case WM_MOUSEMOVE:
    return (wparam & MK_LBUTTON) != 0;
  default:
    return false;
  }
}

// What is meant for all edit controls. True when it is dealt with here.
bool edit_message(const Window &window, UINT message, WPARAM wparam) {
  switch (message) {
  case WM_ERASEBKGND: // painting covers everything
    return true;
  case WM_PAINT:
    paint_edit(window);
    return true;
  case WM_COPY:
    return copy_unbroken(window);
  case WM_CHAR:
    if (wparam == kCtrlA)
      SendMessageW(window.edit, EM_SETSEL, 0, -1);
    return wparam == kCtrlA;
  default:
    return false;
  }
}

// Taking back and doing again, however it is asked for. True when it was.
bool step_message(Window &window, UINT message, WPARAM wparam) {
  const bool key = message == WM_CHAR && wparam == kCtrlZ;
  if (!key && message != WM_UNDO && message != EM_UNDO)
    return false;
  if (!take_step(window, !key || !shift_down()))
    MessageBeep(MB_OK);
  return true;
}

// The wheel with Ctrl makes the letters larger and smaller. True when it did.
bool wheel_zooms(Window &window, UINT message, WPARAM wparam) {
  if (message != WM_MOUSEWHEEL || (GET_KEYSTATE_WPARAM(wparam) & MK_CONTROL) == 0)
    return false;
  window.wheel_letters += GET_WHEEL_DELTA_WPARAM(wparam);
  if (const int steps = window.wheel_letters / WHEEL_DELTA; steps != 0)
    zoom_text(window, steps);
  window.wheel_letters %= WHEEL_DELTA;
  return true;
}

LRESULT edit_keys(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, DWORD_PTR id) {
  Window *window = find_window(static_cast<WindowId>(id));
  if (window == nullptr)
    return DefSubclassProc(edit, message, wparam, lparam);
  if (step_message(*window, message, wparam) || wheel_zooms(*window, message, wparam))
    return 0;
  if (spot_before(*window, message, lparam))
    return TRUE;
  LRESULT described = 0;
  if (message == WM_GETOBJECT && describe(*window, edit, wparam, lparam, described))
    return described;
  if (edit_message(*window, message, wparam))
    return message == WM_ERASEBKGND ? 1 : 0;
  if (const UINT meant = clipboard_message(*window, message, wparam); meant != 0)
    return SendMessageW(edit, meant, 0, 0);
  if (message == WM_SYSCHAR && opens_menu(wparam))
    return SendMessageW(window->hwnd, WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(wparam));
  if (window->kind == kControlWindow && !window->own_change &&
      console_message(*window, message, wparam))
    return 0;
  if (!(window->messages.empty() && window->faults.empty()) && may_select(message, wparam))
    InvalidateRect(edit, nullptr, FALSE);
  const LRESULT result = DefSubclassProc(edit, message, wparam, lparam);
  if ((window = find_window(static_cast<WindowId>(id))) != nullptr)
    spot_after(*window, message, lparam);
  return result;
}

} // namespace

LRESULT CALLBACK EditKeysProc(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                              DWORD_PTR id) {
  return guarded<edit_keys>(edit, message, wparam, lparam, id);
}

} // namespace velora::win32
