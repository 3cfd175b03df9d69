// The text of the CONTROL window: the window holds the newest part and a log file holds all of it,
// so that no text is lost. Used by console_window alone.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/file_handle.h"
#include "shell/shown_text.h"

namespace velora {

// The window keeps at least kKeptCharacters; once it holds kMostCharacters the older ones go.
inline constexpr std::size_t kKeptCharacters = 250'000;
inline constexpr std::size_t kMostCharacters = 500'000;

// Set while a script runs: receives everything that is shown in CONTROL.
extern std::string *gConsoleTap;

class ConsoleText {
public:
  ConsoleText() = default;
  ~ConsoleText();
  ConsoleText(const ConsoleText &) = delete;
  ConsoleText &operator=(const ConsoleText &) = delete;

  // Adds to what will be shown at the next flush(); a text that stands out is a message that
  // beeped.
  void append(std::string_view text, bool stands_out = false);
  // Hands what was collected to the log and to the window.
  void flush();
  // How many bytes wait for the next flush().
  [[nodiscard]] std::size_t waiting() const { return shown_.waiting().size(); }
  // Whether a message shall begin a line of its own: plain text stands before it in its line.
  [[nodiscard]] bool in_plain_line() const;
  // Empties the window; the log keeps everything.
  void clear();
  // Writes the whole text since the start to `file`: 1, or 0 when it cannot be written.
  int save_log(const std::string &file);

private:
  void to_log(std::string_view text);
  // Gives up the log and removes its file.
  void drop_log();

  ShownText shown_{kKeptCharacters, kMostCharacters,
                   "[earlier text: File, Save CONTROL Text...]\n"};
  std::string log_name_;
  FileHandle log_;
};

} // namespace velora
