// The stubs of missing inputs: a short line each above the upper side of a box, with a ring and the
// input's number. An arrow that is dropped on one becomes that input. Drawn by the overlay, hit by
// the gestures. Private to the hand.
#pragma once

#include <vector>

#include "editor/draw.h"

namespace velora {

struct Stub {
  int input = 0; // counted from 0
  Point root;    // on the box
  Point tip;
  Rect ink; // what it covers with its number
};

// The stubs of a box. None touches another or the end of an arrow at that box.
std::vector<Stub> stubs_of(const WinInfo *wi, const PictureLayout &layout, const NodePlace &node);

struct StubAt {
  int slot = 0; // the box whose stub it is; 0 for none
  int input = -1;
};

// The stub that a point is at.
StubAt stub_at(const WinInfo *wi, const PictureLayout &layout, Point at);

// The font of the numbers of stubs, and of the types beside them.
Font stub_font();

} // namespace velora
