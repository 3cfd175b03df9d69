// Drawing of edit controls, and of messages over their text, line by visible line. Touches nothing
// but the drawing surface.
#include "shell/win32/w_edit_paint.h"

#include <algorithm>
#include <string>
#include <vector>

#include "shell/win32/w_edit.h"
#include "shell/win32/w_objects.h"

namespace velora::win32 {

namespace {

constexpr COLORREF kMessageColour = RGB(176, 0, 0);
constexpr COLORREF kFaultColour = RGB(220, 0, 0);

std::wstring line_text(HWND edit, WPARAM line) {
  const auto start = SendMessageW(edit, EM_LINEINDEX, line, 0);
  const auto length = SendMessageW(edit, EM_LINELENGTH, static_cast<WPARAM>(start), 0);
  std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 1)) + 1, L'\0');
  text[0] = static_cast<wchar_t>(text.size() - 1);
  const auto got = SendMessageW(edit, EM_GETLINE, line, reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(got));
  return text;
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
  const auto &ranges = window.messages;
  const auto first = std::lower_bound(ranges.begin(), ranges.end(), start,
                                      [](const EditRange &r, DWORD at) { return r.end <= at; });
  for (auto range = first; range != ranges.end() && range->start < end; ++range) {
    const EditRange part{std::max(range->start, start), std::min(range->end, end)};
    const bool touched = selected.start < part.end && part.start < selected.end;
    if (part.start < part.end && !touched)
      redraw_part(dc, window.edit, box, part,
                  text.substr(part.start - start, part.end - part.start));
  }
}

void draw_messages(HDC dc, const Window &window) {
  if (window.messages.empty())
    return;
  const Selected font(dc, text_font(dpi_of(window.hwnd), window.points));
  SetTextColor(dc, kMessageColour);
  SetBkColor(dc, GetSysColor(COLOR_WINDOW));
  RECT box{};
  SendMessageW(window.edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&box));
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  const auto first = SendMessageW(window.edit, EM_GETFIRSTVISIBLELINE, 0, 0);
  const auto lines = SendMessageW(window.edit, EM_GETLINECOUNT, 0, 0);
  const auto seen = (box.bottom - box.top) / std::max(metrics.tmHeight, 1L) + 1;
  const EditRange selected = selection_of(window);
  for (auto line = first; line < std::min(lines, first + seen); ++line)
    redraw_line(dc, window, box, static_cast<WPARAM>(line), selected);
}

// A wave below a fault, as far as it is seen.
void draw_wave(HDC dc, const Window &window, EditRange range, const TEXTMETRICW &metrics) {
  const LRESULT start = SendMessageW(window.edit, EM_POSFROMCHAR, range.start, 0);
  const LRESULT last = SendMessageW(window.edit, EM_POSFROMCHAR, range.end - 1, 0);
  if (start == -1 || last == -1)
    return;
  const int step = std::max(2, static_cast<int>(metrics.tmHeight) / 8);
  const int end = static_cast<short>(LOWORD(last)) + static_cast<int>(metrics.tmAveCharWidth);
  const int y = static_cast<short>(HIWORD(start)) + static_cast<int>(metrics.tmHeight) - step;
  std::vector<POINT> wave;
  for (int x = static_cast<short>(LOWORD(start)); x <= end; x += step)
    wave.push_back({x, y + (wave.size() % 2 == 0 ? step : 0)});
  if (wave.size() > 1)
    Polyline(dc, wave.data(), static_cast<int>(wave.size()));
}

void draw_faults(HDC dc, const Window &window) {
  if (window.faults.empty())
    return;
  const Selected font(dc, text_font(dpi_of(window.hwnd), window.points));
  const GdiHandle red(CreatePen(PS_SOLID, std::max(1, to_dots(window.hwnd, 1)), kFaultColour));
  const Selected pen(dc, red.get());
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  for (const FaultMark &fault : window.faults)
    if (fault.range.start < fault.range.end)
      draw_wave(dc, window, fault.range, metrics);
}

} // namespace

void draw_edit(HDC dc, const Window &window, const RECT &inside) {
  FillRect(dc, &inside, GetSysColorBrush(COLOR_WINDOW));
  SendMessageW(window.edit, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
  draw_messages(dc, window);
  draw_faults(dc, window);
}

void paint_edit(const Window &window) {
  const Painting painting(window.edit);
  if (painting.inside().right == 0 || painting.inside().bottom == 0)
    return;
  const MemoryDC memory(painting, painting.inside().right, painting.inside().bottom);
  draw_edit(memory, window, painting.inside());
  painting.copy_from(memory);
}

} // namespace velora::win32
