// Writing to and taking queries from the CONTROL window. Holds the console of the desktop program
// and the list of earlier queries.
#include "shell/console_window.h"

#include <span>

#include "core/events.h"
#include "front/cint.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/utf8.h"
#include "shell/message_place.h"
#include "shell/query_text.h"
#include "shell/running.h"
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

std::string prompt(kQueryPrompt);

} // namespace

void DesktopConsole::write(std::string_view text) {
  if (text.empty())
    return;
  const bool prompted = at_prompt_ && command_runs(); // a command other than the query asked for
  if ((prompted && text.front() != '\n') ||
      (text.starts_with(kInterrupted) && text_.in_plain_line()))
    text_.append("\n");
  text_.append(text);
  at_prompt_ = text.ends_with(prompt) || text.ends_with(kQueryPrompt);
  show_soon();
}

void DesktopConsole::narrative(std::string_view text) {
  if (gNarWind == 0 && open_narrative() == 0) {
    write(text);
    return;
  }
  if (story_window_ != gNarWind)
    story_.forget();
  story_window_ = gNarWind;
  story_.append(text);
  show_soon();
}

void DesktopConsole::warn(std::string_view text, int) {
  if (!text.starts_with('\n') && text_.in_plain_line())
    text_.append("\n");
  text_.append(text, true);
  if (gFaultWatch != nullptr)
    gFaultWatch->hear_message(text);
  at_prompt_ = false;
  beep();
}

void DesktopConsole::show() {
  text_.flush();
  if (gNarWind == 0 || gNarWind != story_window_)
    story_.forget(); // it belongs to a window that was closed
  else
    story_.flush(gNarWind);
  if (beep_due_)
    gDesktop->beep();
  beep_due_ = false;
}

void DesktopConsole::show_soon() {
  const std::size_t waiting = text_.waiting() + story_.waiting().size();
  if ((!command_runs() && !held_) || waiting > kShowBytes)
    show();
}

void DesktopConsole::clear() {
  text_.clear();
  at_prompt_ = false;
}

void DesktopConsole::note(std::string_view text) {
  if (gFaultWatch != nullptr)
    gFaultWatch->hear_note(text);
  write(text);
  if (!text.ends_with('\n'))
    write("\n");
}

int DesktopConsole::ask(const std::string &message, std::span<const std::string> buttons) {
  show();
  return gDesktop->ask(message, {buttons.begin(), buttons.end()});
}

bool DesktopConsole::ask_text(const std::string &prompt, std::string &answer) {
  show();
  return gDesktop->ask_text(prompt, answer);
}

int DesktopConsole::read_char() {
  show();
  wait_for_characters();
  if (read_ == characters_.size())
    return -1;
  const std::string_view rest = std::string_view(characters_).substr(read_);
  if (!continues_character(rest.front()))
    text_.append(rest.substr(0, first_character(rest))); // shown whole, with its first byte
  ++read_;
  return static_cast<unsigned char>(rest.front());
}

void DesktopConsole::wait_for_characters() {
  struct Reading {
    explicit Reading(bool &flag) : on(flag) { on = true; }
    ~Reading() { on = false; }
    Reading(const Reading &) = delete;
    Reading &operator=(const Reading &) = delete;
    bool &on;
  } const reading(reading_);
  take_characters();
  while (read_ == characters_.size() && gInterrupted == 0)
    gDesktop->pump(50);
}

// What was typed beyond the characters that a command read stands as typed again, but not the rest
// of a line that is empty.
void DesktopConsole::give_back_characters() {
  std::string rest = characters_.substr(read_);
  characters_.clear();
  read_ = 0;
  if (rest.starts_with('\n'))
    rest.erase(0, 1);
  if (!rest.empty())
    gDesktop->set_typed_text(hControl, rest + gDesktop->typed_text(hControl));
}

bool DesktopConsole::take_characters() {
  if (!reading_)
    return false;
  const std::string typed = gDesktop->typed_text(hControl);
  if (!typed.empty()) {
    characters_.erase(0, read_);
    read_ = 0;
    characters_ += typed;
    gDesktop->set_typed_text(hControl, "");
  }
  return true;
}

void DesktopConsole::show_if_due(Clock::time_point now) {
  if (now - last_shown_ < kShowEvery)
    return;
  last_shown_ = now;
  show();
  if (!busy_shown_ && command_runs() && now - busy_since_ > kBusyAfter)
    show_busy(true);
}

void DesktopConsole::show_busy(bool on) {
  busy_shown_ = on;
  gDesktop->set_cursor(on ? CursorShape::busy : CursorShape::arrow);
  gDesktop->enable_menus(!on);
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
    busy_since_ = Clock::now();
    if (!held_)
      last_shown_ = busy_since_;
    return;
  }
  give_back_characters();
  if (!held_)
    show();
  if (busy_shown_)
    show_busy(false);
}

void DesktopConsole::beep() {
  beep_due_ = true;
  show_soon();
}

// --- the query loop ----------------------------------------------------------------------------

void set_console_prompt(std::string_view text) {
  prompt = text;
}

int AskForQuery() {
  set_console_prompt(kQueryPrompt);
  DisplayResponse(prompt);
  greqQuery = 1;
  gDesktop->focus_window(hControl);
  return 1;
}

void wait_for_query() {
  if (!gDesktopConsole.at_prompt())
    DisplayResponse(prompt);
  greqQuery = 1;
  gDesktopConsole.show_soon();
}

} // namespace velora
