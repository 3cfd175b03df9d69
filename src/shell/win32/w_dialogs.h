// Dialogs: questions with buttons, asking for a text, choosing a file, the about box. Each is modal
// and answers when it is closed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/win32/w_common.h"

namespace velora::win32 {

// Answers the number of the button pressed (1 to 4), or 5 for "Cancel".
int ask_question(HWND owner, const std::string &message, const std::vector<std::string> &buttons);
// Asks for one line; false when cancelled.
bool ask_line(HWND owner, const std::string &prompt, std::string &answer);
std::optional<std::string> choose_file_name(HWND owner, bool for_saving, const std::string &title,
                                            const std::string &pattern);
void show_about(HWND owner);

} // namespace velora::win32
