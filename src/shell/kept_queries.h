// The queries of earlier runs, a line each in a file of the user, which the terminal program
// shares.
#pragma once

#include <string>
#include <vector>

namespace velora {

// Where they are kept; empty when there is no place for them.
std::string kept_queries_file();
// The newest `most` of them, oldest first; none when there is no such file.
std::vector<std::string> kept_queries(const std::string &file, std::size_t most);
// Adds one at once, so that it is there however the program ends. A file that cannot be written is
// done without.
void keep_query(const std::string &file, const std::string &query);

} // namespace velora
