// The mouse and the keys in windows that are drawn, made into the program's events. A press holds
// the mouse until its button is let go; what the program does not take, the window does by itself.
#include <windowsx.h>

#include <iterator>
#include <string>

#include "shell/desk_events.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

bool is_down(int key) {
  return GetKeyState(key) < 0;
}

Modifiers held_keys() {
  return {is_down(VK_SHIFT), is_down(VK_CONTROL), is_down(VK_MENU)};
}

// --- the mouse ---------------------------------------------------------------------------------

struct MouseRow {
  UINT message;
  MouseKind kind;
  MouseButton button;
};
constexpr MouseRow kMouseRows[] = {
    {WM_LBUTTONDOWN, MouseKind::down, MouseButton::left},
    {WM_RBUTTONDOWN, MouseKind::down, MouseButton::right},
    {WM_MBUTTONDOWN, MouseKind::down, MouseButton::middle},
    {WM_LBUTTONUP, MouseKind::up, MouseButton::left},
    {WM_RBUTTONUP, MouseKind::up, MouseButton::right},
    {WM_MBUTTONUP, MouseKind::up, MouseButton::middle},
    {WM_LBUTTONDBLCLK, MouseKind::double_click, MouseButton::left},
    {WM_RBUTTONDBLCLK, MouseKind::double_click, MouseButton::right},
    {WM_MBUTTONDBLCLK, MouseKind::double_click, MouseButton::middle},
    {WM_MOUSEMOVE, MouseKind::move, MouseButton::none},
};

MouseButton button_held(WPARAM wparam) {
  if ((wparam & MK_LBUTTON) != 0)
    return MouseButton::left;
  if ((wparam & MK_RBUTTON) != 0)
    return MouseButton::right;
  return (wparam & MK_MBUTTON) != 0 ? MouseButton::middle : MouseButton::none;
}

// The mouse is held from the first button that goes down to the last that comes up, so that a drag
// is followed outside the window. Letting go tells of a loss, which is not one then.
void hold_mouse(Window &window, MouseKind kind, WPARAM wparam) {
  const bool pressed = kind == MouseKind::down || kind == MouseKind::double_click;
  if (pressed && GetCapture() != window.hwnd) {
    SetCapture(window.hwnd);
    window.mouse_held = true;
  } else if (kind == MouseKind::up && button_held(wparam) == MouseButton::none &&
             window.mouse_held) {
    window.mouse_held = false;
    ReleaseCapture();
  }
}

bool mouse_message(Window &window, const MouseRow &row, WPARAM wparam, LPARAM lparam) {
  MouseEvent event;
  event.kind = row.kind;
  event.button = row.kind == MouseKind::move ? button_held(wparam) : row.button;
  event.held = held_keys();
  event.at = shown_point(window, {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)});
  event.segment = window.aimed;
  const WindowId id = window.id;
  hold_mouse(window, row.kind, wparam);
  return mouse_event(id, event);
}

// Something else took the mouse in the middle of a drag.
bool mouse_lost(Window &window) {
  if (!window.mouse_held)
    return false;
  window.mouse_held = false;
  MouseEvent event;
  event.kind = MouseKind::lost;
  return mouse_event(window.id, event);
}

// A whole notch, or the sum of smaller turns, is one event.
bool wheel_message(Window &window, WPARAM wparam, LPARAM lparam) {
  MouseEvent event;
  event.kind = MouseKind::wheel;
  event.held = held_keys();
  POINT at{GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  ScreenToClient(window.hwnd, &at);
  event.at = shown_point(window, at);
  window.notch_rest -= GET_WHEEL_DELTA_WPARAM(wparam);
  event.notches = window.notch_rest / WHEEL_DELTA;
  window.notch_rest %= WHEEL_DELTA;
  return (event.notches != 0 || event.held.control) && mouse_event(window.id, event);
}

// --- the keys ----------------------------------------------------------------------------------

struct KeyRow {
  WPARAM code;
  Key key;
};
constexpr KeyRow kKeyRows[] = {
    {VK_RETURN, Key::enter},  {VK_ESCAPE, Key::escape},  {VK_TAB, Key::tab},
    {VK_SPACE, Key::space},   {VK_DELETE, Key::del},     {VK_BACK, Key::backspace},
    {VK_LEFT, Key::left},     {VK_RIGHT, Key::right},    {VK_UP, Key::up},
    {VK_DOWN, Key::down},     {VK_HOME, Key::home},      {VK_END, Key::end},
    {VK_PRIOR, Key::page_up}, {VK_NEXT, Key::page_down},
};

// The key of a WM_KEYDOWN; keys that type something arrive as characters instead, but for those
// held with Ctrl or Alt alone.
bool key_of(WPARAM code, KeyEvent &event) {
  for (const KeyRow &row : kKeyRows)
    if (row.code == code)
      return event.key = row.key, true;
  if (code >= VK_F1 && code <= VK_F12) {
    event.key = Key::function;
    event.number = static_cast<int>(code - VK_F1) + 1;
    return true;
  }
  const bool letter = (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9');
  if (!letter || event.held.control == event.held.alt) // both together type on some keyboards
    return false;
  event.key = Key::letter;
  event.text = static_cast<char>(code);
  return true;
}

// The blank comes as a key; Enter, Esc, Tab and the like are no text.
bool character_message(Window &window, WPARAM unit) {
  if (unit <= L' ' || unit == 0x7F)
    return unit == L' ';
  if (IS_HIGH_SURROGATE(unit)) {
    window.first_half = static_cast<wchar_t>(unit);
    return true;
  }
  std::wstring typed;
  if (IS_LOW_SURROGATE(unit))
    typed = window.first_half;
  typed += static_cast<wchar_t>(unit);
  KeyEvent event;
  event.text = narrow(typed);
  return key_event(window.id, event);
}

bool key_message(Window &window, WPARAM code) {
  KeyEvent event;
  event.held = held_keys();
  return key_of(code, event) && key_event(window.id, event);
}

} // namespace

WPARAM code_of(const KeyEvent &event) {
  for (const KeyRow &row : kKeyRows)
    if (row.key == event.key)
      return row.code;
  if (event.key == Key::function)
    return static_cast<WPARAM>(VK_F1 + event.number - 1);
  return event.text.empty() ? 0 : static_cast<WPARAM>(static_cast<unsigned char>(event.text[0]));
}

bool input_message(Window &window, UINT message, WPARAM wparam, LPARAM lparam) {
  for (const MouseRow &row : kMouseRows)
    if (row.message == message)
      return mouse_message(window, row, wparam, lparam);
  switch (message) {
  case WM_CAPTURECHANGED:
    return mouse_lost(window);
  case WM_MOUSEWHEEL:
    return wheel_message(window, wparam, lparam);
  case WM_KEYDOWN:
  case WM_SYSKEYDOWN:
    return key_message(window, wparam);
  case WM_CHAR:
    return character_message(window, wparam);
  default:
    return false;
  }
}

} // namespace velora::win32
