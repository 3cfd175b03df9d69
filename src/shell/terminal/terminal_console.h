// The console of the terminal program: plain text on standard output, messages that beep and lines
// of help on standard error, questions answered from the input of the commands.
#pragma once

#include <string>

#include "platform/console.h"
#include "platform/visible_text.h"
#include "shell/terminal/line_input.h"

namespace velora {

class TerminalConsole : public Console {
public:
  // `typed` says that a person answers: prompts are shown and a wrong answer is asked for again.
  explicit TerminalConsole(bool typed);
  // Where questions and characters are read; null reads nothing.
  void set_input(LineInput *input) { input_ = input; }
  // Keeps ordinary text back from now on (the texts of a quiet start); messages go out.
  void hold_back() { holding_ = true; }
  // Ends that: what was kept back is dropped, or shown among the messages since it explains them.
  void let_go(bool show);
  // Ends the line that output stands in, on both streams, and sends everything out.
  void end_line();
  // True when errors are coloured.
  bool colour() const { return colour_; }

  void write(std::string_view text) override;
  void narrative(std::string_view text) override { write(text); }
  void warn(std::string_view text, int level) override;
  void note(std::string_view text) override;
  int ask(const std::string &message, std::span<const std::string> buttons) override;
  bool ask_text(const std::string &prompt, std::string &answer) override;
  int read_char() override;
  bool interrupted() override;
  void busy(bool) override {}
  void beep() override;

private:
  // Sends text to standard output; to a terminal with its control characters shown.
  void put_out(std::string_view text);
  void put_error(std::string_view text, const char *colour);
  bool read_answer(std::string &line, const std::string &prompt);

  LineInput *input_ = nullptr;
  bool typed_;
  bool colour_;
  bool one_screen_; // both streams show on the same terminal
  bool holding_ = false;
  std::string held_;
  bool out_is_terminal_;
  bool err_is_terminal_;
  VisibleText out_text_;
  bool out_open_ = false; // the last character written was not a line end
  bool err_open_ = false;
};

} // namespace velora
