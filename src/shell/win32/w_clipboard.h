// Copying from edit controls and pasting into the console, whose long lines are broken for showing.
#pragma once

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// The text on the clipboard, empty when it holds none; and another one in its place.
std::string text_on_clipboard();
void put_on_clipboard(const std::string &text);

// Copies the selection without the breaks made for showing; false when it has none and the control
// can do it by itself. Beeps when the clipboard cannot be had.
bool copy_unbroken(const Window &window);
// Pastes in place of the selection, which lies behind the mark; false when nothing has to be broken
// and the control can do it by itself.
bool paste_typed(const Window &window);

} // namespace velora::win32
