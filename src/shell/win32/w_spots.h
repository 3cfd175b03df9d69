// What lies below the mouse in a text: messages that lead to their place, and faults that tell what
// is wrong.
#pragma once

#include <vector>

#include "platform/desk_texts.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

// Marks faults in a text in place of those marked before.
void set_faults(Window &window, const std::vector<TextMark> &marks);
// What the mouse does over a text beside what the control does with it; `before` is called before
// the control gets the message, and is true when that need not get it.
bool spot_before(const Window &window, UINT message, LPARAM lparam);
void spot_after(Window &window, UINT message, LPARAM lparam);

} // namespace velora::win32
