// The drawing surface of pictures and graphics windows over a painter: the screen, a printer, a PDF
// file, an image. Lines, shapes and letters are smooth.
#pragma once

#include <QRectF>

#include "platform/canvas.h"

class QPainter;

namespace velora::qt {

class PainterCanvas : public Canvas {
public:
  // The painter's transformation when this is made maps picture units to the surface; its clip is
  // what clear_clip() goes back to.
  explicit PainterCanvas(QPainter &painter);
  ~PainterCanvas() override;
  PainterCanvas(const PainterCanvas &) = delete;
  PainterCanvas &operator=(const PainterCanvas &) = delete;

  void line(Point from, Point to, const Pen &pen) override;
  void polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) override;
  void rectangle(const Rect &box, const Pen &pen, const Brush &brush) override;
  void ellipse(const Rect &box, const Pen &pen, const Brush &brush) override;
  void text(Point at, std::string_view text, const Font &font, Colour colour) override;
  int text_width(std::string_view text, const Font &font) override;
  int text_height(const Font &font) override;
  void set_clip(const Rect &box) override;
  void clear_clip() override;

private:
  void use(const Pen &pen, const Brush &brush);
  // Whether all of a box lies outside of what the surface shows: such things are not drawn.
  [[nodiscard]] bool out_of_sight(const Rect &box) const;

  QPainter &painter_;
  double scale_; // dots a unit
  QRectF seen_;  // in units; null when it is not known
};

} // namespace velora::qt
