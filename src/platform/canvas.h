// The drawing surface that pictures and graphics windows are drawn through. Implemented by the
// Win32 shell (GDI), by the SVG writer and by the log used in tests. Every call takes its own pen,
// brush and font; the clip rectangle is the only state a canvas keeps.
#pragma once

#include <span>
#include <string_view>

#include "platform/geometry.h"

namespace velora {

enum class PenStyle { none, solid, dotted, dashed };

struct Pen {
  Colour colour;
  int width = 1;
  PenStyle style = PenStyle::solid;
};

// `filled` false leaves the inside of a shape as it is.
struct Brush {
  Colour colour{255, 255, 255};
  bool filled = true;
};

// `size` is the text size in points as pictures store it (8, 10, 12, 16, 22).
struct Font {
  int size = 12;
  bool italic = false;
  bool bold = false;
};

class Canvas {
public:
  virtual ~Canvas() = default;
  virtual void line(Point from, Point to, const Pen &pen) = 0;
  virtual void polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) = 0;
  virtual void rectangle(const Rect &box, const Pen &pen, const Brush &brush) = 0;
  virtual void ellipse(const Rect &box, const Pen &pen, const Brush &brush) = 0;
  // Draws `text` (bytes, UTF-8) with its top left corner at `at`.
  virtual void text(Point at, std::string_view text, const Font &font, Colour colour) = 0;
  // Width in canvas units of `text`, and the height of one line in `font`.
  virtual int text_width(std::string_view text, const Font &font) = 0;
  virtual int text_height(const Font &font) = 0;
  virtual void set_clip(const Rect &box) = 0;
  virtual void clear_clip() = 0;
};

} // namespace velora
