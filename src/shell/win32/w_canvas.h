// The canvas of the screen: drawing calls through the graphics interface of the window system. Used
// by the painting of picture and graphics windows and by saving them as bitmaps.
#pragma once

#include "platform/canvas.h"
#include "shell/win32/w_common.h"

namespace velora::win32 {

// Draws on a surface whose mapping the caller has set. Pictures are measured at 96 dots an inch.
class GdiCanvas : public Canvas {
public:
  explicit GdiCanvas(HDC dc);
  ~GdiCanvas() override;
  GdiCanvas(const GdiCanvas &) = delete;
  GdiCanvas &operator=(const GdiCanvas &) = delete;

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
  HDC dc_;
  int state_; // what the surface was before, put back at the end
  bool scaled_;
};

} // namespace velora::win32
