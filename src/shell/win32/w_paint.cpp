// The inside of picture and graphics windows: painting through memory so that nothing flickers,
// scrolling over the extent of what is shown, and saving as a bitmap file.
#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/safe_file.h"
#include "shell/desk_events.h"
#include "shell/win32/w_canvas.h"
#include "shell/win32/w_edit_paint.h"
#include "shell/win32/w_png.h"
#include "shell/win32/w_windows.h"
#include "shell/window_desktop.h"

namespace velora::win32 {

namespace {

constexpr int kLineUnits = 20;
constexpr int kMostBitmapSide = 8000;

// Dots of a hundred units of a picture at its natural size on a screen of 96 dots an inch.
constexpr int kNaturalSize = 96 * 100;

int scale_of(const Window &window) {
  return static_cast<int>(dpi_of(window.hwnd)) * window.zoom;
}

int shown_dots(const Window &window, int units) {
  return MulDiv(units, scale_of(window), kNaturalSize);
}

int shown_units(const Window &window, int dots) {
  return MulDiv(dots, kNaturalSize, scale_of(window));
}

void draw_into(const Image &image, const Window &window, POINT scroll, const RECT &dots) {
  const ImageView view{{static_cast<int>(scroll.x), static_cast<int>(scroll.y)},
                       static_cast<double>(scale_of(window)) / kNaturalSize};
  ImageCanvas canvas(image, view, {dots.left, dots.top, dots.right, dots.bottom});
  paint_window(window.id, canvas);
}

SIZE inside_units(const Window &window) {
  RECT inside{};
  GetClientRect(window.hwnd, &inside);
  return {shown_units(window, inside.right), shown_units(window, inside.bottom)};
}

void set_bar(const Window &window, int bar, int first, int end, int page, int place) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMin = first;
  info.nMax = std::max(end - 1, first);
  info.nPage = static_cast<UINT>(std::max(page, 0));
  info.nPos = place;
  SetScrollInfo(window.hwnd, bar, &info, TRUE);
}

// The place nearest to `place` at which a page shows nothing beyond the extent that is larger.
LONG within(LONG place, LONG first, LONG end, LONG page) {
  return std::clamp(place, first, std::max(end - page, first));
}

// Where a scroll bar's event wants to go.
int wanted_place(const Window &window, int bar, WPARAM wparam, int place, int page) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS | SIF_RANGE;
  GetScrollInfo(window.hwnd, bar, &info);
  switch (LOWORD(wparam)) {
  case SB_LINEUP:
    return place - kLineUnits;
  case SB_LINEDOWN:
    return place + kLineUnits;
  case SB_PAGEUP:
    return place - page;
  case SB_PAGEDOWN:
    return place + page;
  case SB_THUMBTRACK:
  case SB_THUMBPOSITION:
    return info.nTrackPos;
  case SB_TOP:
    return info.nMin;
  case SB_BOTTOM:
    return info.nMax;
  default:
    return place;
  }
}

} // namespace

void paint_inside(Window &window) {
  const Painting painting(window.hwnd);
  if (painting.inside().right == 0 || painting.inside().bottom == 0 ||
      IsIconic(window.hwnd) != FALSE)
    return;
  const Image image(painting.inside().right, painting.inside().bottom);
  draw_into(image, window, window.scroll, painting.dirty());
  painting.copy_from(image);
}

// Showing one bar takes room from the other direction, so the bars are settled twice.
void update_scroll_bars(Window &window) {
  const Rect &all = window.extent;
  for (int turn = 0; turn < 2; ++turn) {
    const SIZE page = inside_units(window);
    window.scroll.x = within(window.scroll.x, all.left, all.right, page.cx);
    window.scroll.y = within(window.scroll.y, all.top, all.bottom, page.cy);
    set_bar(window, SB_HORZ, all.left, all.right, page.cx, window.scroll.x);
    set_bar(window, SB_VERT, all.top, all.bottom, page.cy, window.scroll.y);
  }
}

void scroll_by(Window &window, int dx, int dy) {
  const POINT before = window.scroll;
  window.scroll.x += dx;
  window.scroll.y += dy;
  update_scroll_bars(window);
  if (before.x != window.scroll.x || before.y != window.scroll.y)
    InvalidateRect(window.hwnd, nullptr, FALSE);
}

void scroll_window(Window &window, int bar, WPARAM wparam) {
  const SIZE page = inside_units(window);
  const bool across = bar == SB_HORZ;
  const int place = across ? window.scroll.x : window.scroll.y;
  const int wanted = wanted_place(window, bar, wparam, place, across ? page.cx : page.cy);
  scroll_by(window, across ? wanted - place : 0, across ? 0 : wanted - place);
}

Point shown_point(const Window &window, POINT dots) {
  return {static_cast<int>(window.scroll.x) + shown_units(window, dots.x),
          static_cast<int>(window.scroll.y) + shown_units(window, dots.y)};
}

POINT shown_place(const Window &window, Point at) {
  return {shown_dots(window, at.x - static_cast<int>(window.scroll.x)),
          shown_dots(window, at.y - static_cast<int>(window.scroll.y))};
}

namespace {

// The bits of a bitmap as a file with 24 bits a dot, bottom line first.
bool write_bitmap(HDC dc, HBITMAP bitmap, int width, int height, const std::string &file) {
  const std::size_t stride = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
  std::vector<char> bits(stride * static_cast<std::size_t>(height));
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 24;
  info.bmiHeader.biSizeImage = static_cast<DWORD>(bits.size());
  if (GetDIBits(dc, bitmap, 0, static_cast<UINT>(height), bits.data(), &info, DIB_RGB_COLORS) == 0)
    return false;
  BITMAPFILEHEADER head{};
  std::memcpy(&head.bfType, "BM", 2);
  head.bfOffBits = sizeof head + sizeof info.bmiHeader;
  head.bfSize = head.bfOffBits + static_cast<DWORD>(bits.size());
  std::string content(reinterpret_cast<const char *>(&head), sizeof head);
  content.append(reinterpret_cast<const char *>(&info.bmiHeader), sizeof info.bmiHeader);
  content.append(bits.data(), bits.size());
  return write_or_tell(file, content);
}

} // namespace

// A picture is saved whole, with what is scrolled away; a text window as it stands on the screen,
// without its scroll bars.
bool save_bitmap(Window &window, const std::string &file) {
  const HWND shown = window.edit != nullptr ? window.edit : window.hwnd;
  RECT inside{};
  GetClientRect(shown, &inside);
  const auto side = [&window](LONG dots, int extent) {
    const LONG whole = window.edit != nullptr ? 0 : shown_dots(window, extent);
    return static_cast<int>(std::clamp<LONG>(std::max(dots, whole), 1, kMostBitmapSide));
  };
  const int width = side(inside.right, window.extent.width());
  const int height = side(inside.bottom, window.extent.height());
  Image image(width, height);
  const RECT all{0, 0, width, height};
  if (window.edit != nullptr)
    draw_edit(image, window, all);
  else
    draw_into(image, window, POINT{window.extent.left, window.extent.top}, all);
  if (!has_ending(file, ".png"))
    return write_bitmap(image, image.finished(), width, height, file);
  const std::string content = png_of(image.finished());
  return !content.empty() && write_or_tell(file, content);
}

} // namespace velora::win32
