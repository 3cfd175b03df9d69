// Event scripts: the windows used line by line, as tests, demonstrations and macros. Each line done
// is echoed as `> LINE` and what it prints follows; a line that cannot be done is told on standard
// error. Used by the programs' option --events, whatever the desktop.
//
//   function | datatype | network | orvek | narrative | annotation   (opens a window)
//   focus TITLE | focus N | close | menu NUMBER | user NAME
//   click P | press P | move P | release P | drag P P
//       (each with [shift] [ctrl] [alt] [right] [middle] [double] behind it)
//   wheel P N [ctrl] | key [ctrl+][shift+][alt+]NAME | type TEXT
//   answer TEXT | choose LABEL | file PATH | cancel   (for the next dialogs, in order)
//   query TEXT | wait MS | die | undo N | redo N
//   dump | svg FILE | state | enabled NUMBER | windows | console
//
// A point P is `X Y`, `@SLOT` or `"LABEL"`, the latter with a part (.top .bottom .left .right
// .start .end) and an offset (+3-4) behind it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/events/event_answers.h"
#include "shell/events/event_line.h"
#include "shell/events/script_hands.h"

namespace velora {

class EventRunner {
public:
  explicit EventRunner(ScriptHands &hands);
  ~EventRunner();
  EventRunner(const EventRunner &) = delete;
  EventRunner &operator=(const EventRunner &) = delete;

  // Takes the script; its answers that stand before all other lines are there at once, so that
  // opening the database can ask. False when the file cannot be read.
  bool read(const std::string &file);
  void take(std::string_view text);
  // Runs the next line; false when there was none.
  bool step();
  // Tells of answers that nobody asked for. True when every line was done.
  bool finish();

  ScriptHands &hands() { return hands_; }
  EventAnswers &answers() { return answers_; }
  // Adds to what the line prints.
  void print(std::string_view text);
  // Tells that a line was not done; answers false.
  bool fail(const std::string &why);
  // What the console has shown since the last time.
  std::string console_news();

private:
  void run(const std::string &line);

  ScriptHands &hands_;
  EventAnswers answers_;
  std::vector<std::string> lines_;
  std::size_t next_ = 0;
  std::string shown_; // what the console has shown and no line has printed
};

// Runs a script in windows that exist already; true when every line was done.
bool run_event_script(EventRunner &runner);

} // namespace velora
