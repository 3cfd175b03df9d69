// Lines typed at a terminal where the library for editing them is not at hand: the terminal's own
// keys correct a line, and there is no history and no completion.
#include <cstdio>
#include <memory>
#include <unistd.h>

#include "platform/interrupt.h"
#include "shell/terminal/line_input.h"

namespace velora {

Completions (*gCompleteNames)(std::string_view start) = nullptr;

namespace {

class PlainLines : public StreamInput {
public:
  explicit PlainLines(bool colour) : StreamInput(STDIN_FILENO), colour_(colour) {}
  Got read(std::string &line, const std::string &prompt) override {
    std::fputs((colour_ ? "\033[1;36m" + prompt + "\033[0m" : prompt).c_str(), stdout);
    std::fflush(stdout);
    const Got got = StreamInput::read(line, prompt);
    if (got != Got::line)
      std::fputs(got == Got::interrupted && gEndAsked == 0 ? "^C\n" : "\n", stdout);
    std::fflush(stdout);
    return got;
  }

private:
  bool colour_;
};

} // namespace

std::unique_ptr<LineInput> make_editor(bool colour) {
  return std::make_unique<PlainLines>(colour);
}

} // namespace velora
