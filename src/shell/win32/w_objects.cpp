// Making, finding and freeing of pens, brushes, fonts and cursors. Holds all of them.
#include "shell/win32/w_objects.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>
#include <vector>

namespace velora::win32 {

HPEN hDottedPen = nullptr;
HPEN hBoldPen = nullptr;
HPEN wipe_out_pen = nullptr;

namespace {

using PenKey = std::tuple<COLORREF, int, int>;
using FontKey = std::pair<int, bool>; // points, italic
struct SystemFont {
  int height; // of a line, at the resolution of pictures
  int weight;
  bool fits; // the system's own screen has the resolution of pictures
};

std::map<PenKey, GdiHandle> pens;
std::map<COLORREF, GdiHandle> brushes;
std::map<FontKey, GdiHandle> fonts;
std::map<unsigned, GdiHandle> text_fonts; // by resolution
SystemFont system_font{};
std::vector<HCURSOR> cursors;

constexpr int kPictureDpi = 96;
constexpr int kSystemFontHeight = 15; // of the system's fixed font at that resolution
constexpr int kTextPoints = 10;
constexpr COLORREF kBackgrounds[] = {RGB(255, 223, 223), RGB(223, 255, 223), RGB(223, 223, 255)};
// The names of the cursors in the resources, in the order of CursorShape from `box` on.
constexpr const wchar_t *kCursorNames[] = {
    L"BoxCursor",  L"BBoxCursor",  L"DBoxCursor", L"HexCursor",    L"BHexCursor",
    L"DHexCursor", L"JctCursor",   L"HandCursor", L"FingerCursor", L"SjnCursor",
    L"EjnCursor",  L"IbeamCursor", L"CrossCursor"};

COLORREF colour_of(Colour c) {
  return RGB(c.red, c.green, c.blue);
}

int gdi_style(PenStyle style) {
  return style == PenStyle::dotted ? PS_DOT : style == PenStyle::none ? PS_NULL : PS_SOLID;
}

HPEN kept_pen(COLORREF colour, int width, int style) {
  GdiHandle &pen = pens[{colour, width, style}];
  if (pen == nullptr)
    pen.reset(CreatePen(style, width, colour));
  return static_cast<HPEN>(pen.get());
}

HBRUSH kept_brush(COLORREF colour) {
  GdiHandle &brush = brushes[colour];
  if (brush == nullptr)
    brush.reset(CreateSolidBrush(colour));
  return static_cast<HBRUSH>(brush.get());
}

// A font of the given height of a line, for the names that are tried in turn.
HFONT make_font(int height, bool italic, int weight, const wchar_t *face) {
  return CreateFontW(height, 0, 0, 0, weight, italic ? TRUE : FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                     OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                     FIXED_PITCH | FF_MODERN, face);
}

// The system's fixed font grows with the resolution of its screen, pictures do not: there it is
// asked only where both agree.
SystemFont measured_system_font() {
  const WindowDC screen(nullptr);
  const Selected font(screen, GetStockObject(SYSTEM_FIXED_FONT));
  TEXTMETRICW metrics{};
  GetTextMetricsW(screen, &metrics);
  const bool fits = GetDeviceCaps(screen, LOGPIXELSY) == kPictureDpi;
  return {fits ? static_cast<int>(metrics.tmHeight) : kSystemFontHeight,
          static_cast<int>(metrics.tmWeight), fits};
}

// A picture's font is measured against the system's fixed one, which is its 12-point font. That one
// itself is made only where the system's cannot be scaled, in its own weight.
HFONT kept_font(int points, bool italic) {
  GdiHandle &font = fonts[{points, italic}];
  const bool like_system = points == 12 && !italic;
  const int weight = like_system ? system_font.weight : system_font.weight != 0 ? FW_BOLD : 0;
  if (font == nullptr)
    font.reset(make_font(system_font.height * points / 12, italic, weight, L"Courier New"));
  return static_cast<HFONT>(font.get());
}

} // namespace

void Create_GDI_Objects(HINSTANCE instance) {
  for (int i = 0; i < 8; ++i) {
    const COLORREF colour = colour_of(kPalette[i]);
    const bool white = i == kWhite;
    kept_brush(colour);
    kept_pen(colour, white ? 2 : 1, PS_SOLID);
    kept_pen(colour, white ? 2 : 1, PS_DOT);
    kept_pen(colour, white ? 4 : 2, PS_SOLID);
  }
  for (const COLORREF colour : kBackgrounds)
    kept_brush(colour);
  hDottedPen = kept_pen(RGB(0, 0, 0), 1, PS_DOT);
  hBoldPen = kept_pen(RGB(0, 0, 0), 2, PS_SOLID);
  wipe_out_pen = kept_pen(RGB(255, 255, 255), 4, PS_SOLID);
  for (const wchar_t *name : kCursorNames)
    cursors.push_back(LoadCursorW(instance, name));
}

void Destroy_GDI_Objects() {
  pens.clear();
  brushes.clear();
  fonts.clear();
  text_fonts.clear();
}

void FontsInitialize() {
  system_font = measured_system_font();
  for (const int points : {8, 10, 12, 16, 22}) {
    kept_font(points, true);
    if (points != 12)
      kept_font(points, false);
  }
}

HPEN pen_for(const Pen &pen) {
  return kept_pen(colour_of(pen.colour), pen.width, gdi_style(pen.style));
}

HBRUSH brush_for(const Brush &brush) {
  return brush.filled ? kept_brush(colour_of(brush.colour))
                      : static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
}

HFONT font_for(const Font &font, bool scaled) {
  if (font.size == 12 && !font.italic && system_font.fits && !scaled)
    return static_cast<HFONT>(GetStockObject(SYSTEM_FIXED_FONT));
  return kept_font(font.size, font.italic);
}

HFONT text_font(unsigned dpi) {
  GdiHandle &font = text_fonts[dpi];
  if (font == nullptr)
    font.reset(
        make_font(-MulDiv(kTextPoints, static_cast<int>(dpi), 72), false, FW_NORMAL, L"Consolas"));
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
