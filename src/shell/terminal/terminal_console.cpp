// Texts and questions of the terminal program. Standard output is sent out before anything goes to
// standard error, so that the two keep their order where they meet.
#include "shell/terminal/terminal_console.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

#include "platform/aside.h"
#include "platform/interrupt.h"
#include "shell/terminal/colon.h"

namespace velora {

namespace {

constexpr int kCancel = 5;

// An empty NO_COLOR counts as none, an empty TERM as a terminal that can do nothing.
bool wants_colour() {
  const char *term = std::getenv("TERM");
  const char *none = std::getenv("NO_COLOR");
  return (none == nullptr || *none == '\0') && isatty(STDERR_FILENO) != 0 && term != nullptr &&
         *term != '\0' && std::strcmp(term, "dumb") != 0;
}

std::string trimmed(const std::string &text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  const std::size_t last = text.find_last_not_of(" \t\r;");
  return first == std::string::npos || last == std::string::npos || last < first
             ? std::string()
             : text.substr(first, last - first + 1);
}

bool same_label(const std::string &a, const std::string &b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
    return std::tolower(x) == std::tolower(y);
  });
}

// The choice that `line` names, counting from 1 with "Cancel" last, or 0 when it names none.
int choice_of(const std::string &line, std::span<const std::string> labels) {
  const std::string wanted = trimmed(line);
  if (!wanted.empty() && wanted.size() < 4 &&
      std::all_of(wanted.begin(), wanted.end(), [](unsigned char c) { return std::isdigit(c); })) {
    const int number = std::atoi(wanted.c_str());
    return number >= 1 && number <= static_cast<int>(labels.size()) ? number : 0;
  }
  for (std::size_t i = 0; i < labels.size(); ++i) {
    if (same_label(wanted, labels[i]))
      return static_cast<int>(i) + 1;
  }
  // "y", "n" and other beginnings that only one label has.
  int found = 0;
  int candidates = 0;
  for (std::size_t i = 0; i < labels.size(); ++i)
    if (!wanted.empty() && same_label(wanted, labels[i].substr(0, wanted.size()))) {
      found = static_cast<int>(i) + 1;
      ++candidates;
    }
  return candidates == 1 ? found : 0;
}

} // namespace

TerminalConsole *gTerminal = nullptr;
int gPages = 1;

TerminalConsole::TerminalConsole(bool typed)
    : typed_(typed), colour_(wants_colour()),
      one_screen_(isatty(STDOUT_FILENO) != 0 && isatty(STDERR_FILENO) != 0),
      out_is_terminal_(isatty(STDOUT_FILENO) != 0), err_is_terminal_(isatty(STDERR_FILENO) != 0) {
  gTerminal = this;
}

TerminalConsole::~TerminalConsole() {
  end_log();
  gTerminal = nullptr;
}

// --- pages -------------------------------------------------------------------------------------

void TerminalConsole::begin_page() {
  rows_ = columns_ = 0;
  whole_ = false;
  if (dropping_)
    gInterrupted = 0; // it was the user who stopped the showing
  dropping_ = false;
}

// Asks before the next page. False when the user has seen enough: what runs is stopped.
bool TerminalConsole::next_page() {
  rows_ = 0;
  std::fflush(stdout);
  whole_ = true; // while the question is shown
  std::string line;
  const Got got = input_->read(line, "-- more: Enter, a for all, q to stop ");
  const char answer = line.empty() ? ' ' : line[0];
  whole_ = got == Got::line && answer == 'a';
  dropping_ = got != Got::line || answer == 'q';
  if (dropping_)
    gInterrupted = 1;
  return !dropping_;
}

// Shows a text as far as the page goes, and on after a question.
void TerminalConsole::put_paged(std::string_view text) {
  winsize size{};
  const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row > 2;
  std::size_t from = 0;
  for (std::size_t i = 0; known && i < text.size() && !whole_; ++i) {
    const bool begins = (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
    columns_ += begins ? 1 : 0;
    if (text[i] != '\n' && (size.ws_col == 0 || columns_ < size.ws_col))
      continue;
    columns_ = 0;
    if (++rows_ < size.ws_row - 1)
      continue;
    put_out(text.substr(from, i + 1 - from));
    from = i + 1;
    if (from < text.size() && !next_page())
      return;
  }
  put_out(text.substr(from));
}

// --- the log and what is kept ------------------------------------------------------------------

bool TerminalConsole::begin_log(const std::string &file) {
  std::FILE *opened = std::fopen(file.c_str(), "a");
  if (opened == nullptr)
    return false;
  end_log();
  log_ = opened;
  return true;
}

void TerminalConsole::end_log() {
  if (log_ != nullptr)
    std::fclose(log_);
  log_ = nullptr;
}

void TerminalConsole::log(std::string_view text) {
  if (log_ == nullptr)
    return;
  std::fwrite(text.data(), 1, text.size(), log_);
  std::fflush(log_);
}

void TerminalConsole::begin_kept() {
  kept_.clear();
  keeping_ = true;
}

std::string TerminalConsole::end_kept() {
  keeping_ = false;
  return std::exchange(kept_, "");
}

// --- texts -------------------------------------------------------------------------------------

void TerminalConsole::put_out(std::string_view text) {
  // Long texts go in pieces, so that the interrupt key is met between them.
  constexpr std::size_t kPiece = std::size_t{1} << 16;
  for (std::size_t at = 0; at < text.size() && (at == 0 || gInterrupted == 0); at += kPiece) {
    const std::string_view piece = text.substr(at, kPiece);
    if (out_is_terminal_) {
      const std::string shown = out_text_.add(piece);
      std::fwrite(shown.data(), 1, shown.size(), stdout);
    } else {
      std::fwrite(piece.data(), 1, piece.size(), stdout);
    }
  }
}

void TerminalConsole::write(std::string_view text) {
  if (holding_) {
    held_ += text;
    return;
  }
  if (text.empty())
    return;
  if (gAside > 0 && !typed_)
    return put_error(text, "");
  log(text);
  constexpr std::size_t kMostKept = std::size_t{1} << 20;
  if (keeping_ && kept_.size() < kMostKept)
    kept_ += text;
  if (dropping_)
    return;
  if (typed_ && gPages != 0 && one_screen_ && input_ != nullptr)
    put_paged(text);
  else
    put_out(text);
  out_open_ = text.back() != '\n';
}

void TerminalConsole::let_go(bool show) {
  holding_ = false;
  if (show)
    put_error(held_, "");
  held_.clear();
}

void TerminalConsole::put_error(std::string_view text, const char *colour) {
  if (text.empty())
    return;
  if (one_screen_ && out_open_)
    write("\n");
  std::fflush(stdout);
  log(text);
  if (colour_)
    std::fputs(colour, stderr);
  const std::string shown = err_is_terminal_ ? visible(text) : std::string(text);
  std::fwrite(shown.data(), 1, shown.size(), stderr);
  if (colour_)
    std::fputs("\033[0m", stderr);
  err_open_ = text.back() != '\n';
}

void TerminalConsole::warn(std::string_view text, int level) {
  if (err_open_)
    put_error("\n", "");
  put_error(text, level == 0 ? "\033[33m" : "\033[31m");
}

void TerminalConsole::note(std::string_view text) {
  if (err_open_)
    std::fputc('\n', stderr);
  put_error(text, "\033[2m");
  if (err_open_) {
    std::fputc('\n', stderr);
    log("\n");
  }
  err_open_ = false;
}

void TerminalConsole::end_line() {
  if (err_open_)
    std::fputc('\n', stderr);
  err_open_ = false;
  const std::string rest = out_text_.rest();
  std::fwrite(rest.data(), 1, rest.size(), stdout);
  if (out_open_)
    write("\n");
  std::fflush(stdout);
}

namespace {

// True for a line that no answer looks like: a command of the shell or a whole statement.
bool is_command(const std::string &line) {
  const std::size_t end = line.find_last_not_of(" \t\r");
  return is_colon_command(line) || (end != std::string::npos && line[end] == ';');
}

} // namespace

bool TerminalConsole::read_answer(std::string &line, const std::string &prompt) {
  std::fflush(stdout);
  const Got got = input_ == nullptr ? Got::end : input_->next(line, prompt);
  if (got == Got::interrupted)
    gInterrupted = 1; // stops the command that asks, as soon as it goes on
  // A question that a script does not expect must not eat its next command.
  if (got == Got::line && !typed_ && is_command(line)) {
    input_->put_back(line);
    return false;
  }
  return got == Got::line;
}

// A question is no answer: a script finds it on standard error.
void TerminalConsole::put_question(std::string_view text) {
  if (typed_)
    write(text);
  else
    put_error(text, "");
}

int TerminalConsole::ask(const std::string &message, std::span<const std::string> buttons) {
  std::vector<std::string> labels(buttons.begin(), buttons.end());
  labels.emplace_back("Cancel");
  end_line();
  put_question(message);
  if (!message.ends_with('\n'))
    put_question("\n");
  for (std::size_t i = 0; i < labels.size(); ++i)
    put_question("  " + std::to_string(i + 1) + " " + labels[i] + "\n");
  for (;;) {
    std::string line;
    if (!read_answer(line, "? "))
      return kCancel;
    const int choice = choice_of(line, labels);
    if (choice == static_cast<int>(labels.size()))
      return kCancel;
    if (choice != 0)
      return choice;
    warn("Please answer with a number from 1 to " + std::to_string(labels.size()) +
             " or one of the labels\n",
         0);
    if (!typed_) // a script must not lose further lines to a question it did not expect
      return kCancel;
  }
}

bool TerminalConsole::ask_text(const std::string &prompt, std::string &answer) {
  end_line();
  put_question(prompt);
  if (!answer.empty())
    put_question(" (" + answer + ")");
  put_question("\n");
  std::string line;
  if (!read_answer(line, "? "))
    return false;
  if (!line.empty() && line.back() == '\r')
    line.pop_back();
  if (!line.empty())
    answer = line;
  return true;
}

int TerminalConsole::read_char() {
  std::fflush(stdout);
  return input_ == nullptr ? -1 : input_->read_char();
}

bool TerminalConsole::interrupted() {
  if (typed_)
    std::fflush(stdout);
  const bool asked = gInterrupted != 0;
  gInterrupted = 0;
  return asked;
}

void TerminalConsole::beep() {
  if (isatty(STDERR_FILENO) != 0)
    std::fputc('\a', stderr);
}

} // namespace velora
