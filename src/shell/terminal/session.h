// One run of the terminal program: reads commands, runs each through the return point, counts what
// failed. Colon commands ask it for what concerns the session itself.
#pragma once

#include <chrono>
#include <string>

#include "shell/return_point.h"
#include "shell/terminal/last_answer.h"
#include "shell/terminal/line_input.h"
#include "shell/terminal/terminal_console.h"

namespace velora {

class Session {
public:
  // `typed`: a person sits at a terminal. `goes_on`: an interrupt does not end the run.
  Session(TerminalConsole &console, LineInput &input, bool typed, bool goes_on);
  ~Session();
  Session(const Session &) = delete;
  Session &operator=(const Session &) = delete;

  // Reads and runs commands until the input ends, `:quit`, or an interrupt that ends the run.
  void run();
  // Takes an ended session up again.
  void go_on();
  // True when the input has ended twice in a row: nobody answers any more.
  bool input_is_gone() const;
  // Runs one command and counts how it ended.
  CommandEnd run_one(const Command &command, const Command &again = nullptr);
  // 0; 1 when some command failed, 3 when an answer stayed as it is and gStrict is set, 130 when
  // the run was interrupted.
  int exit_status() const;

  // One line for the front end, behind the prompt that it asks for.
  int refill(std::string &line, const char *prompt);

private:
  Got next_line(std::string &line, const char *prompt, bool first);
  void step();
  int run_again();
  void remember_command();

  TerminalConsole &console_;
  LineInput &input_;
  bool typed_;
  bool goes_on_;
  bool over_ = false;
  bool failed_ = false;
  bool interrupted_ = false;
  int errors_before_ = 0; // parser errors before the statement being typed
  std::string colon_;     // a command of the shell that refill came upon
  LastAnswer last_answer_;
  bool drawing_told_ = false; // how a drawing is seen
  bool query_ = false;        // the statement being typed is a query
  std::string entry_;         // the lines of the statement being typed, for the history
  std::string command_;       // all lines of the command being run
  std::chrono::steady_clock::duration waited_{}; // time the command spent awaiting its lines
  std::deque<std::string> pending_;              // lines of a command that is tried again
};

// Set by `:quit`: the session ends before the next command.
extern bool gQuit;
// Set by `:time on`: what each command cost is shown after it.
extern bool gTimes;
// Set by --strict: an answer with a call that no rule reduced makes the exit status 3.
extern bool gStrict;

} // namespace velora
