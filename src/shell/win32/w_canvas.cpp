// Drawing calls turned into soft shapes, and into calls of the window system for letters. Points
// name dots of the picture, so a line runs through their middles.
#include "shell/win32/w_canvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "platform/text_measures.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

constexpr double kDash = 2; // units of a dash of a dotted line, and of the gap behind it

int near_dot(double at) {
  return static_cast<int>(std::lround(at));
}

} // namespace

Image::Image(int width, int height) : dc_(CreateCompatibleDC(nullptr)) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height; // the first line is the upper one
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void *bits = nullptr;
  bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  former_ = SelectObject(dc_, bitmap_);
  if (bits == nullptr)
    return;
  image_ = {static_cast<std::uint32_t *>(bits), width, height};
  std::fill_n(image_.dots, static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
              0xFFFFFFU);
}

Image::~Image() {
  SelectObject(dc_, former_);
  DeleteObject(bitmap_);
  DeleteDC(dc_);
}

HBITMAP Image::finished() {
  SelectObject(dc_, former_);
  return bitmap_;
}

ImageCanvas::ImageCanvas(const Image &image, const ImageView &view, const Rect &part)
    : dc_(image), view_(view), part_(part), shapes_(image.dots()) {
  SetBkMode(dc_, TRANSPARENT);
  clear_clip();
}

ImageCanvas::~ImageCanvas() {
  SelectClipRgn(dc_, nullptr);
  GdiFlush();
}

SoftPoint ImageCanvas::middle_of(Point p) const {
  return {(p.x - view_.origin.x + 0.5) * view_.scale, (p.y - view_.origin.y + 0.5) * view_.scale};
}

// The dots of a box, the lower right corner included; an Rect of dots ends behind its last.
Rect ImageCanvas::dots_of(const Rect &box) const {
  const Rect r = box.normalised();
  const auto x = [this](int at) { return near_dot((at - view_.origin.x) * view_.scale); };
  const auto y = [this](int at) { return near_dot((at - view_.origin.y) * view_.scale); };
  return {x(r.left), y(r.top), x(r.right + 1), y(r.bottom + 1)};
}

void ImageCanvas::dashes(SoftPoint from, SoftPoint to, const Pen &pen) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  // Dots are as long as the gaps between them, dashes three times as long with wider gaps.
  const bool dotted = pen.style == PenStyle::dotted;
  const double dash = std::max(1.0, (dotted ? 1 : 3) * kDash * view_.scale);
  const double step = dotted ? 2 * dash : 1.5 * dash;
  const auto at = [&](double way) {
    const double share = std::min(way / length, 1.0);
    return SoftPoint{from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
  };
  for (double way = 0; way < length; way += step)
    shapes_.stroke(at(way), at(way + dash), pen.width * view_.scale, pen.colour);
}

// The ends reach half the line's width further, which closes the corners of outlines.
void ImageCanvas::stroke(SoftPoint from, SoftPoint to, const Pen &pen) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  if (pen.style == PenStyle::dotted || pen.style == PenStyle::dashed) {
    dashes(from, to, pen);
  } else if (pen.style == PenStyle::solid) {
    const double width = pen.width * view_.scale;
    const double dx = length > 0 ? (to.x - from.x) / length * width / 2 : width / 2;
    const double dy = length > 0 ? (to.y - from.y) / length * width / 2 : 0;
    shapes_.stroke({from.x - dx, from.y - dy}, {to.x + dx, to.y + dy}, width, pen.colour);
  }
}

void ImageCanvas::outline(std::span<const SoftPoint> corners, const Pen &pen) {
  for (std::size_t i = 0; i < corners.size(); ++i)
    stroke(corners[i], corners[(i + 1) % corners.size()], pen);
}

void ImageCanvas::line(Point from, Point to, const Pen &pen) {
  stroke(middle_of(from), middle_of(to), pen);
}

void ImageCanvas::polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) {
  std::vector<SoftPoint> points;
  points.reserve(corners.size());
  for (const Point p : corners)
    points.push_back(middle_of(p));
  if (brush.filled)
    shapes_.fill(points, brush.colour);
  outline(points, pen);
}

void ImageCanvas::rectangle(const Rect &box, const Pen &pen, const Brush &brush) {
  const Rect r = box.normalised();
  if (brush.filled)
    shapes_.fill_dots(dots_of(r), brush.colour);
  const SoftPoint low = middle_of({r.left, r.top});
  const SoftPoint high = middle_of({r.right, r.bottom});
  if (pen.style != PenStyle::solid) {
    outline(std::array<SoftPoint, 4>{{low, {high.x, low.y}, high, {low.x, high.y}}}, pen);
    return;
  }
  // Four sides of whole dots, so that the corners are square in any size.
  const int width = std::max(1, near_dot(pen.width * view_.scale));
  const auto first = [width](double middle) { return near_dot(middle - width / 2.0); };
  const Rect inner{first(low.x) + width, first(low.y) + width, first(high.x), first(high.y)};
  const Rect outer{inner.left - width, inner.top - width, inner.right + width,
                   inner.bottom + width};
  shapes_.fill_dots({outer.left, outer.top, outer.right, inner.top}, pen.colour);
  shapes_.fill_dots({outer.left, inner.bottom, outer.right, outer.bottom}, pen.colour);
  shapes_.fill_dots({outer.left, inner.top, inner.left, inner.bottom}, pen.colour);
  shapes_.fill_dots({inner.right, inner.top, outer.right, inner.bottom}, pen.colour);
}

// A round shape is drawn as one of many corners, as many as keep it round in any size; its border
// is what lies between two such shapes.
void ImageCanvas::ellipse(const Rect &box, const Pen &pen, const Brush &brush) {
  const Rect r = box.normalised();
  const SoftPoint low = middle_of({r.left, r.top});
  const SoftPoint high = middle_of({r.right, r.bottom});
  const double across = (high.x - low.x) / 2;
  const double down = (high.y - low.y) / 2;
  const int count = std::clamp(near_dot(16 * std::sqrt(std::max(across, down))), 16, 400);
  std::vector<SoftPoint> points;
  const auto go_round = [&](double further, int sign) {
    const double x = std::max(0.0, across + further);
    const double y = std::max(0.0, down + further);
    for (int i = 0; i <= count; ++i) {
      const double angle = sign * 2 * std::numbers::pi * i / count;
      points.push_back({low.x + across + x * std::cos(angle), low.y + down + y * std::sin(angle)});
    }
  };
  if (brush.filled) {
    go_round(0, 1);
    shapes_.fill(points, brush.colour);
    points.clear();
  }
  if (pen.style == PenStyle::none)
    return;
  const double half = std::max(1.0, pen.width * view_.scale) / 2;
  go_round(half, 1);
  go_round(-half, -1);
  shapes_.fill(points, pen.colour);
}

// Each letter stands in its cell, however wide the font at hand is.
void ImageCanvas::text(Point at, std::string_view text, const Font &font, Colour colour) {
  const double scale = view_.scale;
  const Rect seen = shapes_.clip();
  const Rect cells = dots_of({at.x, at.y, at.x + text_width(text, font), at.y + text_height(font)});
  if (cells.right <= seen.left || cells.left >= seen.right || cells.bottom <= seen.top ||
      cells.top >= seen.bottom)
    return;
  const PictureFont &made = picture_font(font, scale);
  const Selected use(dc_, made.font.get());
  const double left = (at.x - view_.origin.x) * scale;
  const double top = (at.y - view_.origin.y) * scale;
  const int height = near_dot(measured_height(font) * scale);
  const std::wstring wide = widen(text);
  std::vector<INT> steps;
  steps.reserve(wide.size());
  double cell = left;
  int done = near_dot(left);
  const double width = font.size * 2 / 3.0 * scale;
  for (const wchar_t unit : wide) {
    cell += begins_character(unit) ? width : 0;
    const int next = near_dot(cell);
    steps.push_back(next - done);
    done = next;
  }
  SetTextColor(dc_, RGB(colour.red, colour.green, colour.blue));
  ExtTextOutW(dc_, near_dot(left), near_dot(top) + (height - made.height) / 2, 0, nullptr,
              wide.data(), static_cast<UINT>(wide.size()), steps.data());
  GdiFlush(); // shapes that follow are drawn by ourselves
}

int ImageCanvas::text_width(std::string_view text, const Font &font) {
  return measured_width(text, font);
}

int ImageCanvas::text_height(const Font &font) {
  return measured_height(font);
}

void ImageCanvas::set_clip(const Rect &box) {
  clear_clip();
  const Rect dots = dots_of(box);
  shapes_.set_clip({std::max(dots.left, part_.left), std::max(dots.top, part_.top),
                    std::min(dots.right, part_.right), std::min(dots.bottom, part_.bottom)});
  IntersectClipRect(dc_, dots.left, dots.top, dots.right, dots.bottom);
}

void ImageCanvas::clear_clip() {
  shapes_.set_clip(part_);
  SelectClipRgn(dc_, nullptr);
  IntersectClipRect(dc_, part_.left, part_.top, part_.right, part_.bottom);
}

} // namespace velora::win32
