// The CONTROL window: the Console of the desktop program, and the loop that takes queries from what
// the user types or pastes there. Called by the entries of the window system and by the commands.
#pragma once

#include <chrono>
#include <string>

#include "platform/console.h"
#include "shell/console_text.h"

namespace velora {

// The narrative window keeps at least kKeptStory characters and at most kMostStory.
inline constexpr std::size_t kKeptStory = 500'000;
inline constexpr std::size_t kMostStory = 1'000'000;

// The console of programs with windows. Its text is shown at the latest when the command that
// printed it ends, and ten times a second while it runs or while pasted queries follow each other;
// that of the narrative window goes with it.
class DesktopConsole : public Console {
public:
  void write(std::string_view text) override;
  void narrative(std::string_view text) override;
  void warn(std::string_view text, int level) override;
  void note(std::string_view text) override;
  int ask(const std::string &message, std::span<const std::string> buttons) override;
  bool ask_text(const std::string &prompt, std::string &answer) override;
  int read_char() override;
  bool interrupted() override;
  void busy(bool on) override;
  void beep() override;

  ConsoleText &text() { return text_; }
  // Shows everything written so far.
  void show();
  // The same, unless more text is sure to follow soon.
  void show_soon();
  // Until hold(false) the end of a command is no reason to show its text: the next one waits.
  void hold(bool on) { held_ = on; }
  // Empties the window, its prompt with it; what the user has typed stays.
  void clear();
  // True when nothing has been shown since the prompt.
  [[nodiscard]] bool at_prompt() const { return at_prompt_; }
  // Takes what the user typed while a character is waited for; false when none is.
  bool take_characters();

private:
  using Clock = std::chrono::steady_clock;
  void show_if_due(Clock::time_point now);
  void show_busy(bool on);
  void wait_for_characters();
  void give_back_characters();

  ConsoleText text_;
  ShownText story_{kKeptStory, kMostStory, "[earlier text]\n"};
  WindowId story_window_ = 0; // the narrative window that story_ belongs to
  std::string characters_;    // typed for read_char,
  std::size_t read_ = 0;      // and how many bytes of them it has taken
  bool reading_ = false;
  bool at_prompt_ = false;
  bool busy_shown_ = false;
  bool held_ = false;
  bool beep_due_ = false; // sounded with the text, so that many messages do not delay each other
  Clock::time_point last_shown_;
  Clock::time_point last_look_;
  Clock::time_point busy_since_;
};

extern DesktopConsole gDesktopConsole;

// Shows the prompt of queries and waits for one (command Query); a section that was being typed is
// left.
int AskForQuery();
// The prompt again after a command, unless it still stands.
void wait_for_query();
// What stands before the next line that is typed: the prompt of queries or that of a section.
void set_console_prompt(std::string_view text);

} // namespace velora
