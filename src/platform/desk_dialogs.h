// The dialogs of a desktop. One of the four roles that make up a Desktop.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace velora {

class DeskDialogs {
public:
  virtual ~DeskDialogs() = default;
  // As Console::ask and Console::ask_text, and a box with a message and one button.
  virtual int ask(const std::string &message, const std::vector<std::string> &buttons) = 0;
  virtual bool ask_text(const std::string &prompt, std::string &answer) = 0;
  virtual void message_box(const std::string &title, const std::string &text) = 0;
  // Lets the user choose a file; none when cancelled. `pattern` is like "*.ddb".
  virtual std::optional<std::string> choose_file(bool for_saving, const std::string &title,
                                                 const std::string &pattern) = 0;
};

} // namespace velora
