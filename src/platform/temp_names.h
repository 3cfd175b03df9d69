// Names that nothing else uses.
#pragma once

#include <string>

namespace velora {

// Sixteen hexadecimal digits that nobody can foretell.
std::string random_token();

// A name among the temporary files that nothing else uses, with that ending; empty when there is no
// folder for them.
std::string new_temporary_name(const std::string &ending);

// The hidden name beside `file` that belongs to `token`: ".FILE.TOKEN.ENDING" in its folder.
std::string hidden_name(const std::string &file, const std::string &token,
                        const std::string &ending);

// Removes the hidden files beside `file` that cut-off replacements of it left. Only for the one who
// holds the lock of that file.
void remove_leftovers(const std::string &file);

// The folder of the user's state (history, trusted sums), made if need be; empty when there is
// none.
std::string state_folder();

} // namespace velora
