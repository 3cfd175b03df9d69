// The measures of text in pictures: one table for every desktop, for drawings in files and for
// scripts, so that a picture has the same boxes, arguments and places everywhere. A desktop draws
// its font scaled into these cells.
#pragma once

#include <string_view>

#include "platform/canvas.h"

namespace velora {

// Width in picture units of a text, and the height of a line, in a font of fixed pitch: in the size
// s a character is 2s/3 wide and 4s/3 high. A byte that begins no character counts as one.
int measured_width(std::string_view text, const Font &font);
constexpr int measured_height(const Font &font) {
  return font.size * 4 / 3;
}

} // namespace velora
