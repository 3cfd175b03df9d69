// The lines of event scripts: cutting a line into its verb and words, points, and the names of
// keys. Plain text functions; what a line does is in event_runner.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/input.h"

namespace velora {

// A line as written: its first word, and all that stands behind the one blank after it.
struct EventLine {
  std::string verb;
  std::string rest;
};
// None for an empty line and for a comment.
std::optional<EventLine> read_event_line(std::string_view line);

// The words of a text; a quoted label with what follows it up to a blank is one word.
std::vector<std::string> event_words(std::string_view text);

// Where a click goes: to a place of the picture, or to a segment by its slot or label, one of its
// rims or ends, and so far beside it.
struct EventPoint {
  enum class Part { middle, top, bottom, left, right, start, end };
  bool by_place = true;
  Point at;          // the place, or how far beside the segment
  int slot = 0;      // 0: by label
  std::string label; // of the first segment called so
  Part part = Part::middle;
};
// Reads a point from the front of `words` and takes its words away; none when there is no point.
std::optional<EventPoint> take_point(std::vector<std::string> &words);

// Takes a whole number from the front; none when there is none.
std::optional<int> take_number(std::vector<std::string> &words);

// The words behind a click: which keys and which button are held. False for a word of another kind.
struct EventHold {
  Modifiers held;
  MouseButton button = MouseButton::left;
  bool twice = false;
};
bool read_hold(const std::vector<std::string> &words, EventHold &hold);

// The key called `name`, such as "ctrl+shift+D", "F2" or "PageUp"; none for no such key.
std::optional<KeyEvent> read_key(std::string_view name);

} // namespace velora
