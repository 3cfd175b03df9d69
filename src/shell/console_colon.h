// The commands that begin with a colon, as far as CONTROL takes them: what the menus do, and help.
// The terminal program has more.
#pragma once

#include <string>

namespace velora {

// True for a colon and a letter.
bool is_console_command(const std::string &line);
// Runs such a line; a name may be cut short. 1, or 0 after a message.
int run_console_command(const std::string &line);

} // namespace velora
