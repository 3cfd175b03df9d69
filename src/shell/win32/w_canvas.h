// The canvas of picture and graphics windows: an image in memory that is drawn into and then copied
// to the screen or saved. Shapes have soft edges whatever the window system can do; letters are
// those of its fonts.
#pragma once

#include "platform/canvas.h"
#include "platform/soft_shapes.h"
#include "shell/win32/w_common.h"

namespace velora::win32 {

// An image in memory whose dots are at hand, white at first.
class Image {
public:
  Image(int width, int height);
  ~Image();
  Image(const Image &) = delete;
  Image &operator=(const Image &) = delete;
  operator HDC() const { return dc_; }
  [[nodiscard]] SoftImage dots() const { return image_; }
  // The bitmap, taken off the surface, as reading its bits demands.
  HBITMAP finished();

private:
  HDC dc_;
  HBITMAP bitmap_;
  HGDIOBJ former_;
  SoftImage image_;
};

// Which part of a picture an image shows: `origin` is the point at its upper left corner, `scale`
// the dots of a unit.
struct ImageView {
  Point origin;
  double scale = 1;
};

class ImageCanvas : public Canvas {
public:
  // Nothing is drawn outside the dots of `part`.
  ImageCanvas(const Image &image, const ImageView &view, const Rect &part);
  ~ImageCanvas() override;
  ImageCanvas(const ImageCanvas &) = delete;
  ImageCanvas &operator=(const ImageCanvas &) = delete;

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
  [[nodiscard]] SoftPoint middle_of(Point p) const;
  [[nodiscard]] Rect dots_of(const Rect &box) const;
  void stroke(SoftPoint from, SoftPoint to, const Pen &pen);
  void outline(std::span<const SoftPoint> corners, const Pen &pen);
  void dashes(SoftPoint from, SoftPoint to, const Pen &pen);

  HDC dc_;
  ImageView view_;
  Rect part_;
  SoftShapes shapes_;
};

} // namespace velora::win32
