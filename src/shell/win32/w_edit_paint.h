// Showing messages of the console so that they stand out.
#pragma once

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// Writes the messages among the visible lines of an edit control again, in red, over what it drew
// on `dc`: the control itself knows one colour only.
void draw_messages(HDC dc, const Window &window);
// The same on the screen.
void redraw_messages(const Window &window);

} // namespace velora::win32
