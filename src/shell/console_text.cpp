// Showing and logging of the console's text. Called by console_window; owns the log file, which
// goes when the program ends.
#include "shell/console_text.h"

#include "platform/file_calls.h"
#include "platform/safe_file.h"
#include "shell/vel_wins.h"

namespace velora {

std::string *gConsoleTap = nullptr;

ConsoleText::~ConsoleText() {
  drop_log();
}

void ConsoleText::drop_log() {
  if (log_ == nullptr)
    return;
  log_.reset();
  std::remove(log_name_.c_str());
}

void ConsoleText::append(std::string_view text, bool stands_out) {
  shown_.append(text, stands_out);
  if (gConsoleTap != nullptr)
    *gConsoleTap += text;
}

void ConsoleText::flush() {
  to_log(shown_.waiting());
  shown_.flush(hControl);
}

bool ConsoleText::in_plain_line() const {
  return !shown_.at_line_start() && !shown_.ends_standing_out();
}

void ConsoleText::clear() {
  to_log(shown_.waiting());
  shown_.clear(hControl);
}

// The log file is made when there is something to keep, for its owner alone.
void ConsoleText::to_log(std::string_view text) {
  if (text.empty())
    return;
  if (log_name_.empty()) {
    log_name_ = new_temporary_name(".log");
    const int made = make_file(log_name_);
    if (made >= 0 && close_file_number(made))
      log_.reset(std::fopen(log_name_.c_str(), "r+b"));
  }
  if (log_ != nullptr && std::fwrite(text.data(), 1, text.size(), log_.get()) != text.size())
    drop_log(); // the disk is full: the window still has the newest part
}

int ConsoleText::save_log(const std::string &file) {
  flush();
  if (log_ == nullptr || std::fflush(log_.get()) != 0)
    return 0;
  SafeFile out(file);
  out.open();
  std::rewind(log_.get());
  std::string piece(1 << 16, '\0');
  for (std::size_t n; (n = std::fread(piece.data(), 1, piece.size(), log_.get())) > 0;)
    out.write(std::string_view(piece).substr(0, n));
  const bool whole = std::ferror(log_.get()) == 0;
  std::fseek(log_.get(), 0, SEEK_END);
  if (whole && out.replace() == SaveOutcome::saved)
    return 1;
  if (!out.reason().empty())
    show_note("note: " + out.reason());
  return 0;
}

} // namespace velora
