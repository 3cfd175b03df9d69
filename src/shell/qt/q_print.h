// Windows on paper and in files.
#pragma once

#include <string>

namespace velora::qt {

struct Window;

// Asks for a printer and prints the window.
void print_window(const Window &window);
// Writes the window into a file whose ending tells the kind: ".pdf", ".png", or else a bitmap.
// False, after a note, when that cannot be done.
bool save_window(const Window &window, const std::string &file);

} // namespace velora::qt
