// The desktop of the program on the window system: each call becomes calls of the system. Declared
// here is what deals with the messages that its pump takes from the queue.
#pragma once

#include "shell/win32/w_common.h"

namespace velora::win32 {

// Deals with one message: keys that hold in every window, accelerators, or the window it is for.
void take_message(MSG &message);
// Services the messages that wait; used by the pump and while nothing else may start.
void service_messages();

} // namespace velora::win32
