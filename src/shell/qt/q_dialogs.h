// The dialogs: a question with buttons, a line of text, a message, a file. Each holds all other
// windows of the program until it is answered.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace velora::qt {

// The number of the button chosen, from 1 on, or kCancelled.
int ask_question(const std::string &message, const std::vector<std::string> &buttons);
// Answers false when cancelled; `answer` holds the text at first and the one typed.
bool ask_line(const std::string &prompt, std::string &answer);
void show_message(const std::string &title, const std::string &text);
std::optional<std::string> choose_file_name(bool for_saving, const std::string &title,
                                            const std::string &pattern);
// True while a dialog is open.
bool dialog_open();

} // namespace velora::qt
