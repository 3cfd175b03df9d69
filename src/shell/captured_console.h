// A console that keeps what a query writes instead of showing it; questions, notes and messages go
// where they went before. However the query ends, the console is back in its place.
#pragma once

#include <string>

#include "platform/console.h"

namespace velora {

class CapturedConsole : public Console {
public:
  CapturedConsole();
  ~CapturedConsole() override;
  CapturedConsole(const CapturedConsole &) = delete;
  CapturedConsole &operator=(const CapturedConsole &) = delete;

  std::string text;     // what was written
  bool silent = false;  // keeps back notes and messages too
  std::string messages; // the messages that were kept back

  void write(std::string_view part) override { text += part; }
  void narrative(std::string_view part) override { behind_->narrative(part); }
  void warn(std::string_view part, int level) override;
  void note(std::string_view part) override;
  int ask(const std::string &message, std::span<const std::string> buttons) override {
    return behind_->ask(message, buttons);
  }
  bool ask_text(const std::string &prompt, std::string &answer) override {
    return behind_->ask_text(prompt, answer);
  }
  int read_char() override { return behind_->read_char(); }
  bool interrupted() override { return behind_->interrupted(); }
  void busy(bool on) override { behind_->busy(on); }
  void beep() override { behind_->beep(); }

private:
  Console *behind_;
  int prompt_;
};

} // namespace velora
