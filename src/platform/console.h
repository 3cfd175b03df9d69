// What the program asks of the place where it talks with its user: the CONTROL console, the
// narrative text, questions and the interrupt key. Implemented by the terminal, by the desktop
// shell and by the recorder of the tests; NullConsole is the one that does nothing.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace velora {

class Console {
public:
  virtual ~Console() = default;
  // Appends to the CONTROL console.
  virtual void write(std::string_view text) = 0;
  // Appends to the narrative window.
  virtual void narrative(std::string_view text) = 0;
  // A message that beeps; `level` 0 is a warning, 1 an error.
  virtual void warn(std::string_view text, int level) = 0;
  // A line of help beside a message (standard error in the terminal, none where notes are off).
  virtual void note(std::string_view text) = 0;
  // Asks `message` with up to four `buttons` (without "Cancel", which is always offered).
  // Answers 1 to 4 for the button chosen, 5 for "Cancel".
  virtual int ask(const std::string &message, std::span<const std::string> buttons) = 0;
  // Asks for one line of text. `answer` holds the initial text and receives the one typed.
  // Answers false when cancelled.
  virtual bool ask_text(const std::string &prompt, std::string &answer) = 0;
  // Reads one character from the user, as 0..255; -1 when there are no more, or when the user
  // interrupted the waiting, which interrupted() then tells.
  virtual int read_char() = 0;
  // True when the user has asked for an interrupt since the last call; may service the interface.
  virtual bool interrupted() = 0;
  // Shows or hides that the program is busy.
  virtual void busy(bool on) = 0;
  // Sounds the bell.
  virtual void beep() = 0;
};

class NullConsole : public Console {
public:
  void write(std::string_view) override {}
  void narrative(std::string_view) override {}
  void warn(std::string_view, int) override {}
  void note(std::string_view) override {}
  int ask(const std::string &, std::span<const std::string>) override { return 5; }
  bool ask_text(const std::string &, std::string &) override { return false; }
  int read_char() override { return -1; }
  bool interrupted() override { return false; }
  void busy(bool) override {}
  void beep() override {}
};

// The console in use; never null.
extern Console *gConsole;

} // namespace velora
