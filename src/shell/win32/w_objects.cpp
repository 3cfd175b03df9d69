// Making, finding and freeing of fonts and cursors. Holds all of them.
#include "shell/win32/w_objects.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

using FontKey = std::tuple<int, bool, bool>; // dots of a letter's size, italic, bold
using TextKey = std::pair<unsigned, int>;    // resolution, points

std::map<FontKey, PictureFont> fonts;
std::map<TextKey, GdiHandle> text_fonts;
std::vector<HCURSOR> cursors;

// The names of the cursors in the resources, in the order of CursorShape from `box` on.
constexpr const wchar_t *kCursorNames[] = {
    L"BoxCursor",  L"BBoxCursor",  L"DBoxCursor", L"HexCursor",    L"BHexCursor",
    L"DHexCursor", L"JctCursor",   L"HandCursor", L"FingerCursor", L"SjnCursor",
    L"EjnCursor",  L"IbeamCursor", L"CrossCursor"};

// Letters of that size in dots. Those of pictures are smooth on any ground.
HFONT make_font(int size, bool italic, bool bold, DWORD quality, const wchar_t *face) {
  return CreateFontW(-std::max(size, 1), 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, italic ? TRUE : FALSE,
                     FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                     quality, FIXED_PITCH | FF_MODERN, face);
}

} // namespace

void Create_GDI_Objects(HINSTANCE instance) {
  for (const wchar_t *name : kCursorNames)
    cursors.push_back(LoadCursorW(instance, name));
}

void Destroy_GDI_Objects() {
  fonts.clear();
  text_fonts.clear();
}

void FontsInitialize() {
  for (const int size : {8, 10, 12, 16, 22})
    picture_font({size}, dpi_of(hVel) / 96.0);
}

// A letter of the font is as wide as a cell of the table of measures, whose characters are two
// thirds of their size wide: its own is three fifths.
const PictureFont &picture_font(const Font &font, double scale) {
  const int size = static_cast<int>(std::lround(font.size * 10 / 9.0 * scale));
  PictureFont &made = fonts[{size, font.italic, font.bold}];
  if (made.font == nullptr) {
    made.font.reset(make_font(size, font.italic, font.bold, ANTIALIASED_QUALITY, L"Courier New"));
    const WindowDC screen(nullptr);
    const Selected use(screen, made.font.get());
    TEXTMETRICW metrics{};
    GetTextMetricsW(screen, &metrics);
    made.height = static_cast<int>(metrics.tmHeight);
  }
  return made;
}

HFONT text_font(unsigned dpi, int points) {
  GdiHandle &font = text_fonts[{dpi, points}];
  if (font == nullptr)
    font.reset(make_font(MulDiv(points, static_cast<int>(dpi), 72), false, false, CLEARTYPE_QUALITY,
                         L"Consolas"));
  return static_cast<HFONT>(font.get());
}

HCURSOR cursor_for(CursorShape shape) {
  const int place = static_cast<int>(shape) - static_cast<int>(CursorShape::box);
  if (shape == CursorShape::busy)
    return LoadCursorW(nullptr, IDC_WAIT);
  if (place < 0 || place >= static_cast<int>(cursors.size()))
    return LoadCursorW(nullptr, IDC_ARROW);
  return cursors[static_cast<std::size_t>(place)];
}

} // namespace velora::win32
