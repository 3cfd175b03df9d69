// Running of event scripts, a line at a time.
#include "shell/events/event_runner.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "platform/safe_file.h"
#include "shell/console_text.h"
#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/events/event_verbs.h"

namespace velora {

EventRunner::EventRunner(ScriptHands &hands) : hands_(hands) {
  gEventAnswers = &answers_;
  gConsoleTap = &shown_;
}

EventRunner::~EventRunner() {
  gEventAnswers = nullptr;
  gConsoleTap = nullptr;
}

bool EventRunner::read(const std::string &file) {
  std::string text;
  if (!read_whole_file(file, text))
    return false;
  take(text);
  return true;
}

void EventRunner::take(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line(text.substr(0, end));
    if (line.ends_with('\r'))
      line.pop_back();
    lines_.push_back(std::move(line));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  for (; next_ < lines_.size(); ++next_) {
    const auto head = read_event_line(lines_[next_]);
    if (head && !queue_answer(*this, *head))
      break;
    if (head)
      print("> " + lines_[next_] + "\n");
  }
}

void EventRunner::print(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

bool EventRunner::fail(const std::string &why) {
  answers_.complain(why);
  return false;
}

std::string EventRunner::console_news() {
  gDesktopConsole.show();
  std::string news = std::exchange(shown_, "");
  if (!news.empty() && !news.ends_with('\n'))
    news += '\n';
  return news;
}

void EventRunner::run(const std::string &line) {
  const auto read = read_event_line(line);
  if (!read)
    return;
  print("> " + line + "\n");
  if (desktop_ended()) {
    fail("the program has ended: " + line);
    return;
  }
  if (queue_answer(*this, *read))
    return;
  const EventVerb *verb = find_event_verb(read->verb);
  if (verb == nullptr)
    fail("not a line of a script: " + line);
  else
    verb->run(*this, read->rest);
  hands_.settle();
}

bool EventRunner::step() {
  if (next_ >= lines_.size())
    return false;
  run(lines_[next_++]);
  return true;
}

bool EventRunner::finish() {
  if (answers_.left() > 0)
    fail("answers left over: " + std::to_string(answers_.left()));
  return answers_.faults() == 0;
}

bool run_event_script(EventRunner &runner) {
  while (runner.step()) {
  }
  return runner.finish();
}

} // namespace velora
