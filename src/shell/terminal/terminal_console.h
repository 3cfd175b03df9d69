// The console of the terminal program: plain text on standard output, messages that beep and lines
// of help on standard error, questions answered from the input of the commands.
#pragma once

#include <cstdio>
#include <string>

#include "platform/console.h"
#include "platform/visible_text.h"
#include "shell/terminal/line_input.h"

namespace velora {

class TerminalConsole : public Console {
public:
  // `typed` says that a person answers: prompts are shown and a wrong answer is asked for again.
  explicit TerminalConsole(bool typed);
  ~TerminalConsole() override;
  TerminalConsole(const TerminalConsole &) = delete;
  TerminalConsole &operator=(const TerminalConsole &) = delete;
  // Where questions and characters are read; null reads nothing.
  void set_input(LineInput *input) { input_ = input; }
  // Keeps ordinary text back from now on (the texts of a quiet start); messages go out.
  void hold_back() { holding_ = true; }
  // Ends that: what was kept back is dropped, or shown among the messages since it explains them.
  void let_go(bool show);
  // Ends the line that output stands in, on both streams, and sends everything out.
  void end_line();
  // A person is about to type: what is shown from here on fills a fresh screen.
  void begin_page();
  // Writes all that is shown and typed into a file as well, until end_log. False when it cannot be
  // written.
  bool begin_log(const std::string &file);
  void end_log();
  void log(std::string_view text);
  // Keeps what is written from here on, up to a bound beyond which nothing is kept.
  void begin_kept();
  std::string end_kept();
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
  void put_question(std::string_view text);
  bool read_answer(std::string &line, const std::string &prompt);
  void put_paged(std::string_view text);
  bool next_page();

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

  int rows_ = 0;          // of the page that is shown
  int columns_ = 0;       // of its last row
  bool whole_ = false;    // the user wants to see all of it
  bool dropping_ = false; // the user does not want to see more
  bool keeping_ = false;
  std::string kept_;
  std::FILE *log_ = nullptr;
};

// The console of this run; null in programs without one.
extern TerminalConsole *gTerminal;
// Non-zero shows long answers a screen at a time.
extern int gPages;

} // namespace velora
