// A canvas that writes an SVG picture. Texts are measured by a table of its own, so the same
// picture gives the same bytes on every machine.
#pragma once

#include <string>

#include "platform/canvas.h"

namespace velora {

class SvgCanvas : public Canvas {
public:
  void line(Point from, Point to, const Pen &pen) override;
  void polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) override;
  void rectangle(const Rect &box, const Pen &pen, const Brush &brush) override;
  void ellipse(const Rect &box, const Pen &pen, const Brush &brush) override;
  void text(Point at, std::string_view text, const Font &font, Colour colour) override;
  int text_width(std::string_view text, const Font &font) override;
  int text_height(const Font &font) override;
  void set_clip(const Rect &box) override;
  void clear_clip() override;

  // The whole file, showing what lies in `extent`; `title` names the picture for readers.
  [[nodiscard]] std::string document(const Rect &extent, std::string_view title) const;

private:
  void shape(const std::string &element, const Pen &pen, const Brush &brush);

  std::string body_;
  int clips_ = 0;
  bool clipped_ = false;
};

} // namespace velora
