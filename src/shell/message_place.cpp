// Reading places out of messages. A place in a window is told as its title and a line.
#include "shell/message_place.h"

#include <algorithm>
#include <cstdio>

#include "shell/vel_wins.h"

namespace velora {

FaultWatch *gFaultWatch = nullptr;

MessagePlace place_in_message(std::string_view line) {
  const std::size_t start = line.find("Orvek [");
  if (start == std::string_view::npos)
    return {};
  int number = 0;
  int of = 0;
  int at = 0;
  const std::string text(line.substr(start));
  if (std::sscanf(text.c_str(), "Orvek [%d of %d], line %d", &number, &of, &at) != 3)
    return {};
  const std::vector<WindowId> wins = windows_of_kind(kOrvekWindow);
  if (number < 1 || number > static_cast<int>(wins.size()))
    return {};
  return {wins[static_cast<std::size_t>(number) - 1], at};
}

TextRange range_of_line(std::string_view text, int line) {
  std::size_t start = 0;
  for (int passed = 1; passed < line; ++passed) {
    const std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos)
      return {text.size(), text.size()};
    start = end + 1;
  }
  std::size_t end = std::min(text.find('\n', start), text.size());
  const auto blank = [&](std::size_t at) { return text[at] == ' ' || text[at] == '\t'; };
  while (start < end && blank(start))
    ++start;
  while (end > start && blank(end - 1))
    --end;
  return {start, end};
}

bool go_to_message_place(const std::vector<std::string> &lines) {
  for (const std::string &line : lines) {
    const MessagePlace place = place_in_message(line);
    if (place.win == 0)
      continue;
    gDesktop->focus_window(place.win);
    gDesktop->select_text(place.win, range_of_line(gDesktop->text_of(place.win), place.line));
    return true;
  }
  return false;
}

FaultWatch::FaultWatch(WindowId win) : win_(win) {
  gFaultWatch = this;
}

FaultWatch::~FaultWatch() {
  gFaultWatch = nullptr;
}

void FaultWatch::hear_message(std::string_view text) {
  message_ = text;
}

// Of two messages about one place the first tells more.
void FaultWatch::hear_note(std::string_view text) {
  const MessagePlace place = place_in_message(text);
  if (place.win != win_ || message_.empty())
    return;
  const TextRange range = range_of_line(gDesktop->text_of(win_), place.line);
  if (marks_.empty() || marks_.back().range != range)
    marks_.push_back({range, message_});
  message_.clear();
}

void FaultWatch::mark() const {
  gDesktop->mark_faults(win_, marks_);
}

} // namespace velora
