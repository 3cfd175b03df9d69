// A canvas that keeps what was drawn on it, for tests that ask where things are.
#pragma once

#include <string>
#include <vector>

#include "platform/canvas.h"

namespace velora::kit {

class LogCanvas : public Canvas {
public:
  struct Text {
    Rect box;
    std::string text;
    Font font;
  };
  struct Line {
    Point from;
    Point to;
    Pen pen;
  };
  struct Shape {
    char kind; // p polygon, r rectangle, e ellipse
    Rect box;
    std::vector<Point> corners;
    Pen pen;
    Brush brush;
  };
  std::vector<Text> texts;
  std::vector<Line> lines;
  std::vector<Shape> shapes;

  void line(Point from, Point to, const Pen &pen) override { lines.push_back({from, to, pen}); }
  void polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) override {
    Rect box{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const Point at : corners)
      box = {std::min(box.left, at.x), std::min(box.top, at.y), std::max(box.right, at.x),
             std::max(box.bottom, at.y)};
    shapes.push_back({'p', box, {corners.begin(), corners.end()}, pen, brush});
  }
  void rectangle(const Rect &box, const Pen &pen, const Brush &brush) override {
    shapes.push_back({'r', box, {}, pen, brush});
  }
  void ellipse(const Rect &box, const Pen &pen, const Brush &brush) override {
    shapes.push_back({'e', box, {}, pen, brush});
  }
  void text(Point at, std::string_view text, const Font &font, Colour) override {
    texts.push_back({{at.x, at.y, at.x + text_width(text, font), at.y + text_height(font)},
                     std::string(text),
                     font});
  }
  int text_width(std::string_view text, const Font &font) override {
    return static_cast<int>(text.size()) * font.size * 2 / 3;
  }
  int text_height(const Font &font) override { return font.size * 4 / 3; }
  void set_clip(const Rect &) override { ++clips; }
  void clear_clip() override {}

  int clips = 0;
};

} // namespace velora::kit
