// The text of the CONTROL window. Output is collected and handed to the window in large pieces, so
// that a long answer is not slow; the window holds the newest part and a log file holds all of it,
// so that no text is lost. Used by console_window alone.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace velora {

// The window keeps at least kKeptCharacters; once it holds kMostCharacters the older ones go.
inline constexpr std::size_t kKeptCharacters = 250'000;
inline constexpr std::size_t kMostCharacters = 500'000;
// Longer lines are broken for showing, at a blank where there is one: text controls are slow on
// long lines. The limit is lower where much text comes at once. The log keeps lines as they are.
inline constexpr std::size_t kLongestShownLine = 1'000;
inline constexpr std::size_t kLongestBulkLine = 100;
inline constexpr std::size_t kBulk = 8'000;

class ConsoleText {
public:
  ConsoleText() = default;
  ~ConsoleText();
  ConsoleText(const ConsoleText &) = delete;
  ConsoleText &operator=(const ConsoleText &) = delete;

  // Adds to what will be shown at the next flush().
  void append(std::string_view text);
  // Shows a message that beeped at once, behind everything before it.
  void append_message(std::string_view text, int level);
  // Hands what was collected to the log and to the window.
  void flush();
  // How many bytes wait for the next flush().
  [[nodiscard]] std::size_t waiting() const { return waiting_.size(); }
  // Empties the window; the log keeps everything.
  void clear();
  // Writes the whole text since the start to `file`: 1, or 0 when it cannot be written.
  int save_log(const std::string &file);

private:
  struct CloseFile {
    void operator()(std::FILE *file) const { std::fclose(file); }
  };
  void to_log(std::string_view text);
  std::string for_window(std::string_view text);
  void make_room();

  std::string waiting_;
  std::size_t shown_ = 0;  // characters in the window
  std::size_t column_ = 0; // characters in its last line
  std::string log_name_;
  std::unique_ptr<std::FILE, CloseFile> log_;
};

// Characters of UTF-8 text: the bytes that do not continue one.
std::size_t count_characters(std::string_view text);

} // namespace velora
