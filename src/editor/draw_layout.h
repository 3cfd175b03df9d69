// Measures of the drawing that laying out and drawing share. Private to the drawing.
#pragma once

#include "editor/draw.h"

namespace velora {

// Distance of the inner border of a double shape from the outer one.
inline constexpr int kDoubleGap = 3;

// Length of an arrow head in a text size.
inline int head_length(int size) {
  return 4 + size / 3;
}
// The font of the numbers at arrow heads.
inline Font number_font(const Font &font) {
  return Font{font.size * 2 / 3 < 7 ? 7 : font.size * 2 / 3, false, false};
}

// The least length of an arrow that carries its number on itself.
inline int number_stretch(const Font &font) {
  return head_length(font.size) + 2 * number_font(font).size + 4;
}

// Lays out the nodes of a picture; the arcs are laid out from them.
std::vector<NodePlace> place_nodes(const WinInfo *wi, const Font &font);

// Draws what a box expects and does not get, around the box.
void draw_expanded(const NodePlace &node, Canvas &canvas);

// What the head of an arrow, its number and the last stretch of its line cover; of the line as much
// as lies within `height` above or below the point.
Rect arrow_end_box(const ArcPlace &arc, const Font &font, int height);

// How far the ends of a hexagon of that box point outwards.
int hexagon_slant(const Rect &box);

} // namespace velora
