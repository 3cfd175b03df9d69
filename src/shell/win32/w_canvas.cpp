// Drawing calls turned into calls of the graphics interface. The clip rectangle is the only state.
#include "shell/win32/w_canvas.h"

#include <vector>

#include "shell/win32/w_objects.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

bool is_scaled(HDC dc) {
  SIZE units{};
  SIZE dots{};
  GetWindowExtEx(dc, &units);
  GetViewportExtEx(dc, &dots);
  return units.cx != dots.cx;
}

} // namespace

GdiCanvas::GdiCanvas(HDC dc) : dc_(dc), state_(SaveDC(dc)), scaled_(is_scaled(dc)) {
  SetBkMode(dc_, TRANSPARENT);
}

GdiCanvas::~GdiCanvas() {
  RestoreDC(dc_, state_);
}

void GdiCanvas::line(Point from, Point to, const Pen &pen) {
  const Selected use(dc_, pen_for(pen));
  MoveToEx(dc_, from.x, from.y, nullptr);
  LineTo(dc_, to.x, to.y);
}

void GdiCanvas::polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) {
  const Selected use_pen(dc_, pen_for(pen));
  const Selected use_brush(dc_, brush_for(brush));
  std::vector<POINT> points;
  points.reserve(corners.size());
  for (const Point p : corners)
    points.push_back({p.x, p.y});
  Polygon(dc_, points.data(), static_cast<int>(points.size()));
}

// The lower right corner is left out by the system, but belongs to our boxes.
void GdiCanvas::rectangle(const Rect &box, const Pen &pen, const Brush &brush) {
  const Selected use_pen(dc_, pen_for(pen));
  const Selected use_brush(dc_, brush_for(brush));
  Rectangle(dc_, box.left, box.top, box.right + 1, box.bottom + 1);
}

void GdiCanvas::ellipse(const Rect &box, const Pen &pen, const Brush &brush) {
  const Selected use_pen(dc_, pen_for(pen));
  const Selected use_brush(dc_, brush_for(brush));
  Ellipse(dc_, box.left, box.top, box.right + 1, box.bottom + 1);
}

void GdiCanvas::text(Point at, std::string_view text, const Font &font, Colour colour) {
  const Selected use(dc_, font_for(font, scaled_));
  const std::wstring wide = widen(text);
  SetTextColor(dc_, RGB(colour.red, colour.green, colour.blue));
  TextOutW(dc_, at.x, at.y, wide.data(), static_cast<int>(wide.size()));
}

int GdiCanvas::text_width(std::string_view text, const Font &font) {
  const Selected use(dc_, font_for(font, scaled_));
  const std::wstring wide = widen(text);
  SIZE size{};
  GetTextExtentPoint32W(dc_, wide.data(), static_cast<int>(wide.size()), &size);
  return size.cx;
}

int GdiCanvas::text_height(const Font &font) {
  const Selected use(dc_, font_for(font, scaled_));
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc_, &metrics);
  return metrics.tmHeight;
}

void GdiCanvas::set_clip(const Rect &box) {
  clear_clip();
  IntersectClipRect(dc_, box.left, box.top, box.right + 1, box.bottom + 1);
}

// A memory surface has no clip of its own, so none is the whole surface.
void GdiCanvas::clear_clip() {
  SelectClipRgn(dc_, nullptr);
}

} // namespace velora::win32
