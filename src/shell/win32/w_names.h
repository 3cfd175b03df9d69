// What a screen reader is told about the inside of a window: its name, and a picture as an outline
// of words. The window system knows the rest by itself.
#pragma once

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// Makes ready for what other programs ask; to be called once, at the start.
void let_windows_be_described();
// Answers a request for what is known of a control or a drawn window; false for other requests.
bool describe(const Window &window, HWND part, WPARAM wparam, LPARAM lparam, LRESULT &answer);

} // namespace velora::win32
