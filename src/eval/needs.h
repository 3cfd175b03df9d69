// What the evaluator needs from the levels above it, each with the one who defines it.
#pragma once

#include <string>

namespace velora {

// Shows the stored picture of the function or data type `name` in a window of its own; 1 when there
// is one. Defined by shell/picture_windows.
int show_picture(const char *name);

// The file of the open database; empty for none. Defined by db/f_dbops.
std::string open_database_file();

} // namespace velora
