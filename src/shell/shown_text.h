// A text that grows and is shown in a window. It is collected and handed over in large pieces, so
// that much text is not slow, and the window holds only the newest part of it. Used by the console
// for CONTROL and for the narrative window; talks to the window through the desktop.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop.h"

namespace velora {

// Longer lines are broken for showing, at a blank where there is one: text controls are slow on
// long lines. The limit is lower where much text comes at once.
inline constexpr std::size_t kLongestShownLine = 1'000;
inline constexpr std::size_t kLongestBulkLine = 100;
inline constexpr std::size_t kBulk = 8'000;

// How long a line of a text of `size` units is before it is broken.
constexpr std::size_t longest_shown_line(std::size_t size) {
  return size > kBulk ? kLongestBulkLine : kLongestShownLine;
}
// The same in a window that shows that many characters of a line: where much text comes at once its
// lines are broken within what is in sight, a little earlier than LineBreaker breaks at the latest,
// so that the window need not break them again and leave ragged ends.
constexpr std::size_t longest_shown_line(std::size_t size, std::size_t columns) {
  constexpr std::size_t kFewest = 40;
  return size > kBulk && columns >= kFewest ? columns * 4 / 5 : longest_shown_line(size);
}

// Where lines are broken that are longer than `limit` units: behind a blank, or before a character
// when none has come for a quarter of the limit. It is asked about each unit of a text in turn.
struct LineBreaker {
  std::size_t limit;
  std::size_t column = 0; // units in the line

  template <class Unit> bool breaks_before(Unit c, bool begins_character) {
    const bool breaks = column >= limit + limit / 4 && begins_character && c != Unit('\n');
    if (breaks)
      column = 0;
    return breaks;
  }
  template <class Unit> bool breaks_behind(Unit c) {
    column = c == Unit('\n') ? 0 : column + 1;
    const bool breaks = c == Unit(' ') && column >= limit;
    if (breaks)
      column = 0;
    return breaks;
  }
};

class ShownText {
public:
  // The window keeps at least `kept` characters; once it holds more than `most` the older ones go.
  // `cut` is what stands in place of those.
  ShownText(std::size_t kept, std::size_t most, std::string_view cut)
      : kept_(kept), most_(most), cut_(cut) {}

  // Adds to what flush() will hand over; a text that stands out is a message that beeped.
  void append(std::string_view text, bool stands_out = false);
  // Hands what was collected to the window.
  void flush(WindowId win);
  // Empties the window; what waits is dropped.
  void clear(WindowId win);
  // The window is another one, and empty.
  void forget();

  [[nodiscard]] const std::string &waiting() const { return waiting_; }
  // Whether the text, with what waits, stands at the start of a line.
  [[nodiscard]] bool at_line_start() const { return line_start_; }
  // Whether the newest piece stands out.
  [[nodiscard]] bool ends_standing_out() const { return ends_standing_out_; }

private:
  // A text with its line breaks as the window takes it.
  struct Piece {
    std::string text;
    std::vector<TextRange> standing_out;
  };
  Piece for_window(WindowId win, std::size_t from);
  void add_broken(std::string &shown, std::string_view text, std::size_t limit);
  std::size_t make_way(WindowId win);

  std::size_t kept_;
  std::size_t most_;
  std::string_view cut_;
  std::string waiting_;
  std::vector<TextRange> standing_out_; // in what waits
  std::size_t shown_ = 0;               // characters in the window
  std::size_t column_ = 0;              // bytes in its last line
  bool line_start_ = true;
  bool ends_standing_out_ = false;
};

} // namespace velora
