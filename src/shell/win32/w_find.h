// Finding and replacing in a language text, with the system's dialog, which stands beside the text
// while that is edited.
#pragma once

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// Opens the dialog for a window, or brings it to the front.
void open_replace(const Window &window);
// What the dialog asks for arrives at the frame: true when the message was such a one.
bool find_message(UINT message, LPARAM lparam);
// Leaves a message to the dialog; true when it was for it.
bool find_dialog_message(MSG &message);

} // namespace velora::win32
