// Opening and closing graphics windows and the narrative window on the desktop. Used by the
// built-ins, and by the menu commands and window messages of the shell.
#pragma once

#include "eval/graphics_model.h"

namespace velora {

// The narrative window; 0 while it is closed.
extern WindowId gNarWind;

// Opens a graphics window, which becomes the current one; null when the desktop gives none.
BgrWinInfo *open_graphics(int width = kGraphicsPlace.width(), int height = kGraphicsPlace.height());
// Closes a graphics window with everything drawn in it.
void close_graphics(BgrWinInfo *info);

// Opens the narrative window, or brings it to the front; 1, or 0 when the desktop gives none.
int open_narrative();
// Closes it; 0 when it is not open.
int close_narrative();

} // namespace velora
