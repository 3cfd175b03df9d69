// The text of a picture, shown where a chosen part of the picture stands in it.
#pragma once

#include "editor/model/records.h"

namespace velora {

// Shows the clause that a function picture is in a language text window, and selects in it what a
// node stands for. Defines nothing. 1, or 0 after a message; the node at fault is chosen then.
int show_text_of(WinInfo *wi, int slot);

} // namespace velora
