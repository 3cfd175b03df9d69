// Event scripts in real windows: `velora.exe --events FILE [DATABASE]`. The script's mouse and keys
// are sent as messages, its answers serve the dialogs, and what it prints goes to standard output.
#pragma once

#include <string>

namespace velora::win32 {

// Reads the script before the database is opened, since it may answer what is asked then; false
// when the file cannot be read.
bool read_script(const std::string &file);
// Runs it, in the place of the message loop. Answers the exit status.
int run_script();

} // namespace velora::win32
