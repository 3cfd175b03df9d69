// Where a program finds the libraries of the language.
#pragma once

#include <string>

namespace velora {

// The folder of bis.fdb, sys.fdb and user.fdb: beside a build tree's program, or in the installed
// tree; what gLibDir holds when neither is there.
std::string find_library_folder();
// A folder or file that is installed beside the libraries ("examples"), or stands beside them in a
// source tree; empty when it is not there.
std::string find_shared(const std::string &name);

} // namespace velora
