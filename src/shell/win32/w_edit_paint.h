// Drawing of edit controls, with the messages of the console so that they stand out.
#pragma once

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// Draws what an edit control shows on `dc`, `inside` being its inside. The messages among its
// visible lines are written once more, in red: the control itself knows one colour only.
void draw_edit(HDC dc, const Window &window, const RECT &inside);
// The same on the screen, by way of memory, so that nobody sees the messages change colour.
void paint_edit(const Window &window);

} // namespace velora::win32
