// Writing to and taking queries from the CONTROL window. Holds the console of the desktop program
// and the list of earlier queries.
#include "shell/console_window.h"

#include <span>
#include <vector>

#include "core/events.h"
#include "front/cint.h"
#include "platform/response.h"
#include "shell/desk_events.h"
#include "shell/query_text.h"
#include "shell/vel_wins.h"

namespace velora {

DesktopConsole gDesktopConsole;

namespace {

using std::chrono::milliseconds;

// How often text is shown and keys are looked at while a command runs, and after what time the
// program shows that it is busy: a quick query shall not make the menus flicker.
constexpr milliseconds kShowEvery{100};
constexpr milliseconds kLookEvery{20};
constexpr milliseconds kBusyAfter{300};
// So much text is shown without waiting for the clock.
constexpr std::size_t kShowBytes = 1 << 20;

QueryHistory history;

bool ends_with_prompt(std::string_view text) {
  return text.size() >= kQueryPrompt.size() &&
         text.substr(text.size() - kQueryPrompt.size()) == kQueryPrompt;
}

} // namespace

void DesktopConsole::write(std::string_view text) {
  if (text.empty())
    return;
  if (at_prompt_ && command_runs() && text.front() != '\n')
    text_.append("\n"); // a command other than the query asked for
  text_.append(text);
  at_prompt_ = ends_with_prompt(text);
  if (!command_runs() || text_.waiting() > kShowBytes)
    text_.flush();
}

void DesktopConsole::narrative(std::string_view text) {
  if (gNarWind == 0 && open_narrative() == 0)
    write(text);
  else
    gDesktop->append_text(gNarWind, text);
}

void DesktopConsole::warn(std::string_view text, int level) {
  text_.append_message(text, level);
  at_prompt_ = false;
  beep();
}

void DesktopConsole::note(std::string_view text) {
  write(text);
  if (!text.ends_with('\n'))
    write("\n");
}

int DesktopConsole::ask(const std::string &message, std::span<const std::string> buttons) {
  text_.flush();
  return gDesktop->ask(message, {buttons.begin(), buttons.end()});
}

bool DesktopConsole::ask_text(const std::string &prompt, std::string &answer) {
  text_.flush();
  return gDesktop->ask_text(prompt, answer);
}

int DesktopConsole::read_char() {
  text_.flush();
  reading_ = true;
  take_characters();
  while (characters_.empty() && gInterrupted == 0)
    gDesktop->pump(50);
  reading_ = false;
  if (characters_.empty())
    return -1;
  const auto first = static_cast<unsigned char>(characters_.front());
  characters_.erase(0, 1);
  return first;
}

bool DesktopConsole::take_characters() {
  if (!reading_)
    return false;
  const std::string typed = gDesktop->typed_text(hControl);
  if (!typed.empty()) {
    characters_ += typed;
    gDesktop->set_typed_text(hControl, "");
    text_.append(typed);
    text_.flush();
  }
  return true;
}

void DesktopConsole::show_if_due(Clock::time_point now) {
  if (now - last_shown_ < kShowEvery)
    return;
  last_shown_ = now;
  text_.flush();
  if (!busy_shown_ && command_runs() && now - busy_since_ > kBusyAfter) {
    busy_shown_ = true;
    gDesktop->set_cursor(CursorShape::busy);
    gDesktop->enable_menus(false);
  }
}

bool DesktopConsole::interrupted() {
  const auto now = Clock::now();
  if (now - last_look_ >= kLookEvery) {
    last_look_ = now;
    show_if_due(now);
    gDesktop->pump(0);
  }
  return gInterrupted != 0;
}

void DesktopConsole::busy(bool on) {
  if (on) {
    busy_since_ = last_shown_ = Clock::now();
    return;
  }
  text_.flush();
  if (!busy_shown_)
    return;
  gDesktop->set_cursor(CursorShape::arrow);
  gDesktop->enable_menus(true);
  busy_shown_ = false;
}

void DesktopConsole::beep() {
  gDesktop->beep();
}

// --- the query loop ----------------------------------------------------------------------------

int AskForQuery() {
  DisplayResponse(kQueryPrompt);
  greqQuery = 1;
  gDesktop->focus_window(hControl);
  return 1;
}

void wait_for_query() {
  if (!gDesktopConsole.at_prompt())
    DisplayResponse(kQueryPrompt);
  greqQuery = 1;
  gDesktopConsole.text().flush();
}

int GetQuery(const std::string &line) {
  const std::string query = strip_prompt(line);
  const char *fault = query_fault(query);
  if (!query.empty())
    history.add(query);
  if (fault == nullptr && !query.empty())
    return cint_query(query);
  if (fault != nullptr)
    DisplayResponse(fault);
  DisplayResponse("Please re-type QUERY:");
  DisplayResponse(kQueryPrompt);
  greqQuery = 1;
  return 0;
}

void console_changed() {
  if (gDesktopConsole.take_characters() || command_runs())
    return;
  std::string rest;
  const std::vector<std::string> queries = split_queries(gDesktop->typed_text(hControl), rest);
  if (queries.empty())
    return;
  gDesktop->set_typed_text(hControl, rest);
  for (const std::string &query : queries) {
    if (query.empty() && queries.size() > 1)
      continue;
    DisplayResponse(query + "\n");
    if (run_entry([&query] { return GetQuery(query); }) == CommandEnd::interrupted)
      break; // what was pasted behind it is not wanted either
  }
}

int console_recall(int step) {
  std::string found;
  if (command_runs() || !history.recall(step, gDesktop->typed_text(hControl), found))
    return 0;
  gDesktop->set_typed_text(hControl, found);
  return 1;
}

} // namespace velora
