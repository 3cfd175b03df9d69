// What a script sees of a picture: where its segments are, and the line that `state` prints.
#pragma once

#include <string>

#include "platform/desk_windows.h"
#include "shell/events/event_line.h"

namespace velora {

// A place in a window, and the segment that is meant there whatever lies above it (0 for none).
struct AimedPoint {
  Point at;
  int segment = 0;
};
// False when the window shows no such segment.
bool find_point(WindowId win, const EventPoint &point, AimedPoint &aimed);

// "selected 3 5; mode 7; cursor BoxCursor; saved 0; clean 0; highlighted -", and a line end.
std::string state_line(WindowId win, CursorShape cursor);

} // namespace velora
