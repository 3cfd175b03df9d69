// Where the lines of commands come from: a terminal with line editing, a pipe or file, or the texts
// given with --eval. Questions and single characters are read from the same place.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

enum class Got { line, end, interrupted };

class LineInput {
public:
  virtual ~LineInput() = default;
  // Reads a line and counts the ends of the input: for whoever wants a command or an answer.
  Got next(std::string &line, const std::string &prompt);
  // How often in a row the input has ended. Whoever ends it at a question that the first end
  // brought up wants to leave.
  [[nodiscard]] int ends_in_a_row() const { return ends_in_a_row_; }
  // Reads one line into `line`, without its line end. At a terminal the line is edited behind
  // `prompt`; elsewhere no prompt is shown. `interrupted` when the user stopped the reading.
  virtual Got read(std::string &line, const std::string &prompt) = 0;
  // The next character as 0..255, or -1 at the end and when the user stopped the reading, in which
  // case gInterrupted stays set.
  virtual int read_char() = 0;
  // Gives back a line that was read: it is the next one. Nothing where lines are typed.
  virtual void put_back(const std::string &line) { (void)line; }
  // Forgets the rest of a line that read_char began, where the input is typed.
  virtual void drop_rest() {}
  // Adds a whole command to the history.
  virtual void remember(const std::string &command) { (void)command; }

private:
  int ends_in_a_row_ = 0;
};

// Lines from a file descriptor: standard input that is not a terminal.
class StreamInput : public LineInput {
public:
  explicit StreamInput(int fd) : fd_(fd) {}
  Got read(std::string &line, const std::string &prompt) override;
  int read_char() override;
  void put_back(const std::string &line) override { buffer_.insert(start_, line + "\n"); }

private:
  Got fill(); // reads more; `line` when there is some

  int fd_; // -1 after a line that has no end
  std::string buffer_;
  std::size_t start_ = 0; // of what has not been handed out yet
};

// Lines from texts known beforehand.
class TextInput : public LineInput {
public:
  explicit TextInput(const std::vector<std::string> &texts);
  Got read(std::string &line, const std::string &prompt) override;
  int read_char() override { return -1; }
  void put_back(const std::string &line) override { lines_.push_front(line); }

private:
  std::deque<std::string> lines_;
};

// Line editing with history and completion at a terminal. There is one at a time.
std::unique_ptr<LineInput> make_editor(bool colour);

// Tells the editor the names that may be completed in command lines.
using Completions = std::vector<std::string>;
extern Completions (*gCompleteNames)(std::string_view start);

} // namespace velora
