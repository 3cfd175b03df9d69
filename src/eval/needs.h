// What the evaluator needs from the levels above it, each with the one who defines it.
#pragma once

namespace velora {

// Shows the stored picture of the function or data type `name` in a window of its own; 1 when there
// is one. Defined by shell/picture_windows.
int show_picture(const char *name);

} // namespace velora
