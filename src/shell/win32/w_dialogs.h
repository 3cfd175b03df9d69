// Dialogs: questions with buttons, asking for a text, choosing a file, the about box. Each is modal
// for the whole program and answers when it is closed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/win32/w_common.h"

namespace velora::win32 {

// Answers the number of the button pressed (1 to 4), or 5 for "Cancel".
int ask_question(const std::string &message, const std::vector<std::string> &buttons);
// Asks for one line; false when cancelled.
bool ask_line(const std::string &prompt, std::string &answer);
// A file to open or to write; the name of one to write has the pattern's ending.
std::optional<std::string> choose_file_name(bool for_saving, const std::string &title,
                                            const std::string &pattern);
// A message with a button to put it away; `icon` is one of the system's (MB_ICONERROR...).
void show_message(const std::string &title, const std::string &text, UINT icon);
void show_about();

} // namespace velora::win32
