// Messages that tell a place in a text window: going there, and marking the faults of a text that
// is being stored.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop.h"

namespace velora {

// A line of a language text window.
struct MessagePlace {
  WindowId win = 0;
  int line = 0; // from 1 on
};

// The place that a line of the console names ("note: Orvek [1 of 2], line 6"); `win` is 0 when it
// names none, or one in a window that is closed.
MessagePlace place_in_message(std::string_view line);
// The bytes of a line of a text, without the blanks around it.
TextRange range_of_line(std::string_view text, int line);
// Shows the place that the first of `lines` names that names any; false when none does.
bool go_to_message_place(const std::vector<std::string> &lines);

// While in scope, messages and the places told behind them are collected for one window.
class FaultWatch {
public:
  explicit FaultWatch(WindowId win);
  ~FaultWatch();
  FaultWatch(const FaultWatch &) = delete;
  FaultWatch &operator=(const FaultWatch &) = delete;
  // Marks what was collected in the window.
  void mark() const;
  // What the console hears meanwhile.
  void hear_message(std::string_view text);
  void hear_note(std::string_view text);

private:
  WindowId win_;
  std::string message_; // that waits for its place
  std::vector<TextMark> marks_;
};

// The watch in use, or null.
extern FaultWatch *gFaultWatch;

} // namespace velora
