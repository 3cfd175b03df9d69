// Lines and filled shapes with soft edges, drawn into an image in memory: each dot takes as much of
// the colour as the shape covers of it. Used by desktops whose system draws hard edges only.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/geometry.h"

namespace velora {

// A place between dots: the dot x, y covers the square from (x, y) to (x + 1, y + 1).
struct SoftPoint {
  double x = 0;
  double y = 0;
};

// An image, a line after the other from the top; a dot is 0x00RRGGBB.
struct SoftImage {
  std::uint32_t *dots = nullptr;
  int width = 0;
  int height = 0;
};

class SoftShapes {
public:
  explicit SoftShapes(SoftImage image);

  // Nothing is drawn outside `box`, given by its first dots and those behind its last.
  void set_clip(const Rect &box);
  [[nodiscard]] const Rect &clip() const { return clip_; }

  // Whole dots, without soft edges.
  void fill_dots(const Rect &box, Colour colour);
  // A shape whose border does not cross itself.
  void fill(std::span<const SoftPoint> corners, Colour colour);
  // A straight line, `width` dots wide. One that runs along the dots covers whole ones, so that it
  // is as sharp as the screen can show it.
  void stroke(SoftPoint from, SoftPoint to, double width, Colour colour);

private:
  void add_edge(SoftPoint from, SoftPoint to);
  void add_piece(std::size_t line, double from, double to, double height);
  void paint_covered(Colour colour);

  SoftImage image_;
  Rect clip_;
  Rect area_;                  // of the image that the shape at hand may cover
  std::vector<float> covered_; // for each dot of the area by how much more than the one before it
  std::vector<int> first_;     // of each line of the area, the first and last dot that are touched
  std::vector<int> last_;
};

} // namespace velora
