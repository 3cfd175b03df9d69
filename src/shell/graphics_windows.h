// The graphics and narrative windows as the user opens and closes them. What a graphics window
// shows is data of the evaluator; here it is drawn and its window is kept in step. Called by the
// menu commands and by the entries of the window system.
#pragma once

#include "platform/canvas.h"
#include "platform/desktop.h"

namespace velora {

// Draws the primitives of a graphics window.
void draw_graphics_window(WindowId win, Canvas &canvas);
// Closes a graphics window with its primitives; 1, or 0 when it is none.
int close_graphics_window(WindowId win);
// Retitles all graphics windows and sets the extents that they scroll over.
void refresh_graphics_windows();

// Opens or closes a window from the menus; 1 or 0.
int open_graphics_window();
int open_narrative_window();
int close_narrative_window();
// The user typed something into the narrative window: closing it asks from now on.
void narrative_typed();
// Asks what to do with what was typed; 1 to go on, 0 to stay.
int may_lose_narrative();
// True when closing it would lose what was typed.
bool narrative_unsaved();

} // namespace velora
