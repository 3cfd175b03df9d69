// The command loop of the terminal program. The front end pulls its lines through refill(), which
// takes out the commands that begin with a colon before the parser could see them.
#include "shell/terminal/session.h"

#include <chrono>
#include <cstring>
#include <utility>

#include "core/clock.h"
#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "core/symbols.h"
#include "eval/evaluate.h"
#include "eval/graphics_model.h"
#include "front/cint.h"
#include "front/notes.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/aside.h"
#include "platform/interrupt.h"
#include "platform/response.h"
#include "shell/answer_notes.h"
#include "shell/terminal/colon.h"
#include "shell/terminal/time_limit.h"

namespace velora {

bool gQuit = false;
bool gTimes = false;
bool gStrict = false;

namespace {

Session *the_session = nullptr;

int refill_session(std::string &line, const char *prompt) {
  return the_session->refill(line, prompt);
}

bool is_blank(const std::string &line) {
  return line.find_first_not_of(" \t\r") == std::string::npos;
}

// What the statement typed so far still lacks: the sign that closes what was opened last.
char awaited(const std::string &statement) {
  std::string open;
  for (std::size_t i = 0; i < statement.size(); ++i) {
    const char c = statement[i];
    if (c == '"') {
      const std::size_t end = statement.find_first_of("\"\n", i + 1);
      if (end == std::string::npos)
        break;
      i = end;
    } else if (c == '\'' && i + 2 < statement.size() && statement[i + 2] == '\'') {
      i += 2; // a character literal
    } else if (c == '(' || c == '[') {
      open += c == '(' ? ')' : ']';
    } else if ((c == ')' || c == ']') && !open.empty()) {
      open.pop_back();
    }
  }
  return open.empty() ? ';' : open.back();
}

// The prompt without the line end and blanks around it, and one blank behind. Continuations are
// indented under a command's first line and say what they wait for.
std::string shown_prompt(const char *prompt, const std::string &statement) {
  if (prompt == nullptr)
    return std::string("   ") + awaited(statement) + " > ";
  std::string text(prompt);
  text.erase(0, text.find_first_not_of("\n "));
  text.erase(text.find_last_not_of("\n ") + 1);
  return text + " ";
}

// Tells who typed a bare "help" and the like, which no semicolon would follow, what to type.
bool told_bare_word(const std::string &line) {
  const std::size_t from = line.find_first_not_of(" \t");
  const std::size_t to = line.find_last_not_of(" \t\r");
  const std::string word = line.substr(from, to - from + 1);
  const char *command = command_meant(word);
  if (command == nullptr || find_symbol(word.c_str(), 0) != nullptr)
    return false;
  advise(Note::bare_word, {command});
  return true;
}

using Clock = std::chrono::steady_clock;

// Shows what a command cost, when asked to. The time that passed while lines were awaited is not
// part of it.
class Meter {
public:
  Meter() : start_(Clock::now()), before_(space_counters()), steps_(gReductions) {}
  void show(TerminalConsole &console, Clock::duration waited) const {
    const std::chrono::duration<double> time = Clock::now() - start_ - waited;
    const SpaceCounters now = space_counters();
    console.end_line();
    console.write(format_text(
        "(%llu reductions, %llu nodes, %llu collections, %.3f seconds)\n",
        static_cast<unsigned long long>(gReductions - steps_),
        static_cast<unsigned long long>(now.nodes_taken - before_.nodes_taken),
        static_cast<unsigned long long>(now.collections - before_.collections), time.count()));
  }

private:
  Clock::time_point start_;
  SpaceCounters before_;
  std::uint64_t steps_;
};

} // namespace

Session::Session(TerminalConsole &console, LineInput &input, bool typed, bool goes_on)
    : console_(console), input_(input), typed_(typed), goes_on_(goes_on) {
  the_session = this;
  pp_refill = refill_session;
}

Session::~Session() {
  pp_refill = nullptr;
  the_session = nullptr;
}

int Session::exit_status() const {
  return interrupted_ ? 130 : failed_ ? 1 : gStrict && gAnswersLeft > 0 ? 3 : 0;
}

CommandEnd Session::run_one(const Command &command, const Command &again) {
  CommandEnd end = CommandEnd::done;
  {
    const TimeLimit limit;
    end = run_command(command, again);
    console_.end_line();
    if (end == CommandEnd::interrupted && limit.passed()) {
      BeepMsgef(1, "Sorry! The command took longer than %d seconds\n", gSeconds);
      end = CommandEnd::failed;
    }
  }
  if (end == CommandEnd::failed)
    failed_ = true;
  if (end == CommandEnd::interrupted && !typed_)
    interrupted_ = true;
  if (end == CommandEnd::interrupted && !goes_on_)
    over_ = true;
  return end;
}

void Session::remember_command() {
  input_.remember(entry_);
  entry_.clear();
}

// Gives the front end the lines of the command that ran out of space once more.
int Session::run_again() {
  if (command_.empty()) {
    DisplayResponse("Insufficient Query Space\n");
    return 0;
  }
  {
    const Aside aside;
    DisplayResponse("Re-trying Query\n" + command_);
  }
  pp_reset(true);
  pending_.push_back(command_);
  return p_console_command();
}

Got Session::next_line(std::string &line, const char *prompt, bool first) {
  for (;;) {
    if (typed_) {
      console_.end_line();
      console_.begin_page();
    }
    const std::string shown = shown_prompt(prompt, entry_);
    const Got got = input_.next(line, shown);
    if (got == Got::line)
      console_.log((typed_ ? shown : "") + line + "\n");
    if (got == Got::interrupted && typed_ && first && gEndAsked == 0)
      continue; // the key has cleared the line
    if (got == Got::line && first && is_blank(line))
      continue;
    return got;
  }
}

int Session::refill(std::string &line, const char *prompt) {
  if (!pending_.empty()) {
    line = pending_.front();
    pending_.pop_front();
    return 1;
  }
  // Who typed a faulty statement need not close it: the parser would skip to its end anyway.
  if (typed_ && prompt == nullptr && gParseErrors > errors_before_) {
    line.assign(1, ';');
    errors_before_ = gParseErrors;
    return 1;
  }
  if (prompt != nullptr)
    errors_before_ = gParseErrors;
  const bool first = prompt != nullptr && std::strstr(prompt, "QUERY") != nullptr;
  if (prompt != nullptr)
    remember_command();
  const Clock::time_point asked = Clock::now();
  const Got got = next_line(line, prompt, first);
  waited_ += Clock::now() - asked;
  if (got == Got::interrupted)
    error_exit(typed_ ? "" : kInterrupted); // at the terminal ^C is answer enough
  if (got == Got::end)
    return 0;
  if (first && is_colon_command(line)) {
    colon_ = line;
    return 0;
  }
  if (first && typed_ && told_bare_word(line)) {
    line.assign(1, ';');
    return 1;
  }
  entry_ += (entry_.empty() ? "" : " ") + line;
  if (prompt != nullptr)
    query_ = first && begins_query(line);
  if (typed_ && query_)
    line = last_answer_.put_into(line);
  command_ += line + "\n";
  return 1;
}

// Runs the next command of the input, or finds its end.
void Session::step() {
  int answer = 0;
  const Meter meter;
  waited_ = {};
  command_.clear();
  if (typed_)
    console_.begin_kept();
  const CommandEnd end =
      run_one([&] { return answer = p_console_command(); }, [this] { return run_again(); });
  const std::string shown = console_.end_kept();
  if (typed_ && gBgrWind != nullptr && !std::exchange(drawing_told_, true))
    advise(Note::drawing_seen, {std::to_string(gBgrWind->window_id)});
  if (typed_ && end == CommandEnd::done && !gQuery.empty())
    last_answer_.keep(shown);
  remember_command();
  input_.drop_rest();
  if (std::exchange(gRetypeQuery, 0) != 0 && typed_)
    console_.write("Please re-type QUERY:\n");
  if (!colon_.empty()) {
    const std::string line = std::exchange(colon_, "");
    pp_reset();
    input_.remember(line);
    run_one([&] { return run_colon_command(line); });
  } else if (answer < 0 && end == CommandEnd::done) {
    over_ = true;
  } else if (gTimes) {
    meter.show(console_, waited_);
  }
}

bool Session::input_is_gone() const {
  return input_.ends_in_a_row() > 1;
}

void Session::go_on() {
  gQuit = false;
  over_ = false;
}

void Session::run() {
  // What stands around a command may lack memory too.
  while (!over_ && !gQuit && gEndAsked == 0)
    run_command([this] {
      step();
      return 1;
    });
}

} // namespace velora
