// The mouse over texts. A message is known by the stretch it stands in, its place is told in the
// lines behind it.
#include "shell/win32/w_spots.h"

#include <windowsx.h>

#include <algorithm>
#include <string>

#include "shell/desk_events.h"
#include "shell/win32/w_edit.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

constexpr std::size_t kMostLines = 4; // of a message and the notes behind it
constexpr int kTipWidth = 480;

// The place below a point of the control; -1 behind the end of its line.
LRESULT place_below(const Window &window, POINT at) {
  const LRESULT found = SendMessageW(window.edit, EM_CHARFROMPOS, 0, MAKELPARAM(at.x, at.y));
  if (found == -1)
    return -1;
  // The control answers the lower half of the place only: the rest is that of the visible text.
  const LRESULT first =
      SendMessageW(window.edit, EM_LINEINDEX,
                   static_cast<WPARAM>(SendMessageW(window.edit, EM_GETFIRSTVISIBLELINE, 0, 0)), 0);
  LRESULT place = (first & ~LRESULT{0xFFFF}) | LOWORD(found);
  if (place < first)
    place += 0x10000;
  const LRESULT shown = SendMessageW(window.edit, EM_POSFROMCHAR, static_cast<WPARAM>(place), 0);
  const int width = to_dots(window.hwnd, 2 * window.points);
  return shown != -1 && at.x > static_cast<short>(LOWORD(shown)) + width ? -1 : place;
}

// The lines of the message below a point, with the notes behind it; none for other text.
std::vector<std::string> message_below(const Window &window, POINT at) {
  const LRESULT place = place_below(window, at);
  if (window.kind != kControlWindow || place < 0 || place >= static_cast<LRESULT>(window.mark))
    return {};
  const auto here = static_cast<DWORD>(place);
  std::vector<std::string> lines = whole_lines(window, here, kMostLines);
  const bool message =
      std::any_of(window.messages.begin(), window.messages.end(),
                  [here](const EditRange &r) { return r.start <= here && here < r.end; });
  if (!message && !lines.front().starts_with("note: "))
    lines.clear();
  return lines;
}

int fault_below(const Window &window, POINT at) {
  const LRESULT place = place_below(window, at);
  for (std::size_t i = 0; i < window.faults.size(); ++i) {
    const EditRange &range = window.faults[i].range;
    if (place >= static_cast<LRESULT>(range.start) && place < static_cast<LRESULT>(range.end))
      return static_cast<int>(i);
  }
  return -1;
}

TTTOOLINFOW tool_of(const Window &window) {
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = window.hwnd;
  tool.uId = reinterpret_cast<UINT_PTR>(window.edit);
  return tool;
}

void make_tip(Window &window) {
  window.tip = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TRANSPARENT, TOOLTIPS_CLASSW, nullptr,
                               WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, window.hwnd,
                               nullptr, hInst, nullptr);
  TTTOOLINFOW tool = tool_of(window);
  wchar_t nothing[] = L"";
  tool.lpszText = nothing;
  SendMessageW(window.tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  SendMessageW(window.tip, TTM_SETMAXTIPWIDTH, 0, to_dots(window.hwnd, kTipWidth));
}

// Shows what is wrong with a fault, -1 to show nothing. The tip stands below the line, so that the
// mouse does not touch it.
void tell_fault(Window &window, int fault) {
  if (fault == window.told_fault)
    return;
  window.told_fault = fault;
  if (window.tip == nullptr)
    make_tip(window);
  TTTOOLINFOW tool = tool_of(window);
  if (fault < 0) {
    SendMessageW(window.tip, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
    return;
  }
  FaultMark &told = window.faults[static_cast<std::size_t>(fault)];
  tool.lpszText = told.message.data();
  SendMessageW(window.tip, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  const LRESULT shown = SendMessageW(window.edit, EM_POSFROMCHAR, told.range.start, 0);
  POINT below{static_cast<short>(LOWORD(shown)),
              static_cast<short>(HIWORD(shown)) + to_dots(window.hwnd, 2 * window.points)};
  ClientToScreen(window.edit, &below);
  SendMessageW(window.tip, TTM_TRACKPOSITION, 0, MAKELPARAM(below.x, below.y));
  SendMessageW(window.tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, window.edit, 0};
  TrackMouseEvent(&leave);
}

} // namespace

void set_faults(Window &window, const std::vector<TextMark> &marks) {
  tell_fault(window, -1);
  window.faults.clear();
  for (const TextMark &mark : marks) {
    std::wstring message = widen(mark.message);
    while (!message.empty() && message.back() == L'\n')
      message.pop_back();
    window.faults.push_back({range_of_bytes(window, mark.range), std::move(message)});
  }
  InvalidateRect(window.edit, nullptr, FALSE);
}

bool spot_before(const Window &window, UINT message, LPARAM lparam) {
  if (message != WM_SETCURSOR || LOWORD(lparam) != HTCLIENT || window.kind != kControlWindow ||
      cursor_now() == CursorShape::busy)
    return false;
  POINT at{};
  GetCursorPos(&at);
  ScreenToClient(window.edit, &at);
  if (!message_leads(message_below(window, at)))
    return false;
  SetCursor(LoadCursorW(nullptr, IDC_HAND));
  return true;
}

void spot_after(Window &window, UINT message, LPARAM lparam) {
  const POINT at{GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  if (message == WM_MOUSEMOVE && !window.faults.empty()) {
    tell_fault(window, fault_below(window, at));
  } else if (message == WM_MOUSELEAVE || message == WM_KEYDOWN) {
    tell_fault(window, -1);
  } else if (message == WM_LBUTTONUP) {
    const EditRange selected = selection_of(window);
    if (selected.start == selected.end)
      message_clicked(message_below(window, at));
  }
}

} // namespace velora::win32
