// What stands in a picture window in which nothing is drawn yet.
#pragma once

#include "editor/model/records.h"
#include "platform/canvas.h"

namespace velora {

// Says in grey how to begin; nothing in a picture with segments.
void draw_fresh_hint(const WinInfo *wi, Canvas &canvas);

} // namespace velora
