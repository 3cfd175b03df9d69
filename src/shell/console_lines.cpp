// Taking and running of the lines of CONTROL. Holds the lines that wait for their turn, the section
// that is being typed and the history.
#include "shell/console_lines.h"

#include <deque>
#include <optional>
#include <string_view>
#include <vector>

#include "core/events.h"
#include "db/vel_util.h"
#include "front/cint.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/console_colon.h"
#include "shell/console_section.h"
#include "shell/console_window.h"
#include "shell/gate.h"
#include "shell/kept_queries.h"
#include "shell/query_text.h"

namespace velora {

namespace {

constexpr std::string_view kContinued = "     > ";

QueryHistory history;
std::string history_file; // that keeps it between runs; empty for none
TypedSection section;
// Complete lines that were typed or pasted and have not run yet, and whether they are being run.
std::deque<std::string> lines;
bool running_lines = false;

std::string first_word(const std::string &line) {
  return line.substr(0, line.find_first_of(" \t\n;(\""));
}

int run_statement(SectionKind kind, const std::string &text) {
  switch (kind) {
  case SectionKind::tdec:
    return cint_tdec(text);
  case SectionKind::cdec:
    return cint_cdec(text);
  case SectionKind::fdec:
    return cint_fdec(text);
  case SectionKind::fdef:
    return cint_fdef(text);
  case SectionKind::none:
    break;
  }
  return 0;
}

int run_command_line(const std::string &line);

// One line of the section. A statement that fails is told by the parser, and the section goes on.
int run_section_line(const std::string &line) {
  const SectionKind kind = section.kind();
  std::optional<std::string> behind;
  for (const std::string &statement : section.take(line, behind))
    run_statement(kind, statement);
  if (behind && behind->find_first_not_of(" \t\r\n;") != std::string::npos)
    return run_command_line(*behind);
  return 1;
}

// A line where a command may begin.
int run_command_line(const std::string &line) {
  const std::string text = strip_prompt(line);
  if (is_console_command(text))
    return run_console_command(text);
  const std::string word = first_word(text);
  const SectionKind kind = section_called(word);
  if (kind != SectionKind::none) {
    section.enter(kind);
    return run_section_line(text.substr(word.size()));
  }
  return word == "lambda" || word == "lload" ? cint_command(text) : GetQuery(line);
}

// However a line ends, the prompt behind it is that of what is typed next.
struct PromptAfter {
  PromptAfter() = default;
  ~PromptAfter() {
    set_console_prompt(section.statement_open() ? kContinued : section_prompt(section.kind()));
  }
  PromptAfter(const PromptAfter &) = delete;
  PromptAfter &operator=(const PromptAfter &) = delete;
};

int run_any_line(const std::string &line) {
  const PromptAfter prompt;
  if (const std::string query = strip_prompt(line); !query.empty()) {
    history.add(query);
    if (!history_file.empty())
      keep_query(history_file, query);
  }
  return section.kind() == SectionKind::none ? run_command_line(line) : run_section_line(line);
}

// Takes the lines that are complete out of what is typed.
void take_lines() {
  std::string rest;
  const std::vector<std::string> queries = split_queries(gDesktop->typed_text(hControl), rest);
  if (queries.empty())
    return;
  gDesktop->set_typed_text(hControl, rest);
  for (const std::string &query : queries)
    if (!query.empty() || queries.size() == 1)
      lines.push_back(query);
}

// Runs the oldest line. Between lines that follow at once the keys are looked at, so that a long
// paste can be stopped; what was pasted behind a query that is stopped is not wanted either.
void run_line() {
  const std::string line = lines.front();
  lines.pop_front();
  const std::size_t behind = lines.size();
  gDesktopConsole.hold(behind > 0);
  DisplayResponse(line + "\n");
  const CommandEnd end = run_gated([&line, behind] {
    if (behind > 0)
      poll_user_events();
    return run_any_line(line);
  });
  if (end == CommandEnd::interrupted)
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(behind));
}

// Set while lines are run, however that ends.
struct RunningLines {
  RunningLines() { running_lines = true; }
  ~RunningLines() {
    running_lines = false;
    gDesktopConsole.hold(false);
  }
  RunningLines(const RunningLines &) = delete;
  RunningLines &operator=(const RunningLines &) = delete;
};

} // namespace

int GetQuery(const std::string &line) {
  const std::string query = strip_prompt(line);
  const char *fault = query_fault(query);
  if (fault == nullptr && !query.empty())
    return cint_query(query);
  if (fault != nullptr)
    BeepMsge(fault, 1);
  DisplayResponse("Please re-type QUERY:");
  DisplayResponse(kQueryPrompt);
  greqQuery = 1;
  return 0;
}

// Running a line comes back here with what was typed meanwhile, which waits for its turn.
void console_changed() {
  if (gDesktopConsole.take_characters() || command_runs())
    return;
  take_lines();
  if (running_lines)
    return;
  {
    const RunningLines now;
    while (!lines.empty()) {
      run_line();
      take_lines(); // what was typed meanwhile, or was not read by a command
    }
  }
  gDesktopConsole.show();
}

int console_recall(int step) {
  std::string found;
  if (command_runs() || !history.recall(step, gDesktop->typed_text(hControl), found))
    return 0;
  gDesktop->set_typed_text(hControl, found);
  return 1;
}

void keep_history_in(const std::string &file) {
  history_file = file;
  if (!file.empty())
    for (const std::string &query : kept_queries(file, kMostQueries))
      history.add(query);
}

void leave_section() {
  section.leave();
}

} // namespace velora
