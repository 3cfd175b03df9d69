// Keys of the console. Typing goes behind the mark wherever the caret stands; Enter closes the
// line; Up and Down bring earlier queries back; Escape empties the line.
#include "shell/win32/w_edit_keys.h"

#include <algorithm>
#include <string>

#include "platform/response.h"
#include "shell/desk_events.h"
#include "shell/win32/w_edit.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

constexpr COLORREF kMessageColour = RGB(176, 0, 0);
constexpr WPARAM kCtrlA = 1;

EditRange selection_of(HWND edit) {
  EditRange range{};
  SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&range.start),
               reinterpret_cast<LPARAM>(&range.end));
  return range;
}

void caret_to(HWND edit, DWORD at) {
  SendMessageW(edit, EM_SETSEL, at, static_cast<LPARAM>(at));
  SendMessageW(edit, EM_SCROLLCARET, 0, 0);
}

void caret_to_end(HWND edit) {
  caret_to(edit, static_cast<DWORD>(GetWindowTextLengthW(edit)));
}

std::wstring line_text(HWND edit, WPARAM line) {
  const auto start = SendMessageW(edit, EM_LINEINDEX, line, 0);
  const auto length = SendMessageW(edit, EM_LINELENGTH, static_cast<WPARAM>(start), 0);
  std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 1)) + 1, L'\0');
  text[0] = static_cast<wchar_t>(text.size() - 1);
  const auto got = SendMessageW(edit, EM_GETLINE, line, reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(got));
  return text;
}

// A key that belongs to a menu when Alt is held: the control itself would look for a menu in its
// own window only.
bool opens_menu(WPARAM c) {
  return c > L' ';
}

// Enter in older text, with nothing typed, takes that line to the prompt; true when it did.
bool reuse_old_line(const Window &window, EditRange selected) {
  if (selected.start >= window.mark || !typed_text_of(window).empty())
    return false;
  const auto line = SendMessageW(window.edit, EM_LINEFROMCHAR, selected.start, 0);
  return reuse_line(narrow(line_text(window.edit, static_cast<WPARAM>(line))));
}

// A character typed into the console. True when it is dealt with here.
bool console_char(const Window &window, WPARAM c) {
  const EditRange selected = selection_of(window.edit);
  if (c == VK_RETURN) {
    if (reuse_old_line(window, selected))
      return true;
    caret_to_end(window.edit);
    return false;
  }
  if (c == VK_ESCAPE)
    return true;
  if (c == VK_BACK) {
    const bool protects = selected.start < window.mark ||
                          (selected.start == selected.end && selected.start == window.mark);
    if (protects)
      MessageBeep(MB_OK);
    return protects;
  }
  if (c >= L' ' && selected.start < window.mark)
    caret_to_end(window.edit);
  return false;
}

// Home goes to the beginning of what is typed.
bool home_key(const Window &window, EditRange selected) {
  const auto line = [&window](DWORD at) {
    return SendMessageW(window.edit, EM_LINEFROMCHAR, at, 0);
  };
  if (selected.start < window.mark || line(selected.start) != line(window.mark) ||
      GetKeyState(VK_SHIFT) < 0)
    return false;
  caret_to(window.edit, window.mark);
  return true;
}

bool console_key(const Window &window, WPARAM key) {
  const EditRange selected = selection_of(window.edit);
  const bool typing = selected.start >= window.mark && GetKeyState(VK_SHIFT) >= 0;
  switch (key) {
  case VK_UP:
    return typing && (recall_key(-1), true);
  case VK_DOWN:
    return typing && (recall_key(1), true);
  case VK_HOME:
    return GetKeyState(VK_CONTROL) >= 0 && home_key(window, selected);
  case VK_DELETE:
    return selected.start < window.mark;
  case VK_ESCAPE:
    clear_typed();
    return true;
  default:
    return false;
  }
}

// Changes of the selection that came by a command or the mouse. True when they are not allowed.
bool console_edit(const Window &window, UINT message) {
  if (selection_of(window.edit).start >= window.mark)
    return false;
  if (message == WM_PASTE) {
    caret_to_end(window.edit);
    return false;
  }
  if (message == WM_CUT)
    SendMessageW(window.edit, WM_COPY, 0, 0);
  return true;
}

bool console_message(const Window &window, UINT message, WPARAM wparam) {
  switch (message) {
  case WM_CHAR:
    return console_char(window, wparam);
  case WM_KEYDOWN:
    return console_key(window, wparam);
  case WM_CUT:
  case WM_CLEAR:
  case WM_PASTE:
    return console_edit(window, message);
  default:
    return false;
  }
}

// Writes the part of a message that lies in one line over the plain text.
void redraw_part(HDC dc, HWND edit, const RECT &box, EditRange part, const std::wstring &text) {
  const LRESULT place = SendMessageW(edit, EM_POSFROMCHAR, part.start, 0);
  if (place == -1)
    return;
  ExtTextOutW(dc, static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place)), ETO_CLIPPED,
              &box, text.data(), static_cast<UINT>(text.size()), nullptr);
}

void redraw_line(HDC dc, const Window &window, const RECT &box, WPARAM line, EditRange selected) {
  const auto start = static_cast<DWORD>(SendMessageW(window.edit, EM_LINEINDEX, line, 0));
  const std::wstring text = line_text(window.edit, line);
  const DWORD end = start + static_cast<DWORD>(text.size());
  for (const EditRange &range : window.messages) {
    const EditRange part{std::max(range.start, start), std::min(range.end, end)};
    const bool touched = selected.start < part.end && part.start < selected.end;
    if (part.start < part.end && !touched)
      redraw_part(dc, window.edit, box, part,
                  text.substr(part.start - start, part.end - part.start));
  }
}

// Messages stand out in red: the control knows one colour only, so they are written again.
void redraw_messages(const Window &window) {
  if (window.messages.empty())
    return;
  HideCaret(window.edit);
  {
    const WindowDC dc(window.edit);
    const Selected font(dc, text_font(dpi_of(window.hwnd)));
    SetTextColor(dc, kMessageColour);
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    RECT box{};
    SendMessageW(window.edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&box));
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    const auto first = SendMessageW(window.edit, EM_GETFIRSTVISIBLELINE, 0, 0);
    const auto lines = SendMessageW(window.edit, EM_GETLINECOUNT, 0, 0);
    const auto seen = (box.bottom - box.top) / std::max(metrics.tmHeight, 1L) + 1;
    const EditRange selected = selection_of(window.edit);
    for (auto line = first; line < std::min(lines, first + seen); ++line)
      redraw_line(dc, window, box, static_cast<WPARAM>(line), selected);
  }
  ShowCaret(window.edit);
}

} // namespace

LRESULT CALLBACK EditKeysProc(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                              DWORD_PTR id) {
  const Window *window = find_window(static_cast<WindowId>(id));
  if (window == nullptr)
    return DefSubclassProc(edit, message, wparam, lparam);
  if (message == WM_CHAR && wparam == kCtrlA) {
    SendMessageW(edit, EM_SETSEL, 0, -1);
    return 0;
  }
  if (message == WM_SYSCHAR && opens_menu(wparam))
    return SendMessageW(window->hwnd, WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(wparam));
  if (window->kind == kControlWindow && !window->own_change &&
      console_message(*window, message, wparam))
    return 0;
  const LRESULT result = DefSubclassProc(edit, message, wparam, lparam);
  if (message == WM_PAINT)
    redraw_messages(*window);
  return result;
}

} // namespace velora::win32
