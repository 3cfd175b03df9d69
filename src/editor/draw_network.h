// What is drawn of a network beside its boxes and arrows: frames around functions that call each
// other in a circle, dotted arrows where hidden functions were skipped, loops at functions that
// call themselves, red dashed outlines of names that are defined nowhere. None of it is stored.
// Private to the drawing.
#pragma once

#include "editor/draw.h"

namespace velora {

// What lies behind the nodes. Nobody else's box stands within the frame of a circle.
void draw_network_ground(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas);
// What lies over them.
void draw_network_marks(const PictureLayout &layout, Canvas &canvas);

} // namespace velora
