// The value of a part of a picture, shown in a bubble beside it.
#pragma once

#include "editor/model/records.h"

namespace velora {

// Evaluates what a node stands for; inputs are asked for once and remembered. 1, or 0 after a
// message.
int show_value(WinInfo *wi, int slot);

} // namespace velora
