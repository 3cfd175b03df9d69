// Taking back what the user did to a text, step by step; the control itself remembers one change.
#pragma once

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// The program has changed the text: what was done before cannot be taken back.
void begin_steps(Window &window);
// The user has changed the text: a further step.
void text_edited(Window &window);
// Takes the last step back, or does the one again that was taken back last; false without one.
bool take_step(Window &window, bool back);

} // namespace velora::win32
