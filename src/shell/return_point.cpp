// Abandoning a command and coming back. Holds the only throw and the only catch of the program.
// The message of an abandoned command is kept in a fixed buffer, since memory may be short.
#include "shell/return_point.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "core/events.h"
#include "core/needs.h"
#include "core/print.h"
#include "core/space.h"
#include "db/f_dbops.h"
#include "eval/evaluate.h"
#include "front/cint.h"
#include "front/notes.h"
#include "front/parser.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/aside.h"
#include "platform/response.h"
#include "platform/trust.h"

namespace velora {

namespace {

struct Abandoned {};

// Why the last attempt was abandoned; cut at the buffer's size.
char reason[1024];

void set_reason(const char *msg) {
  const std::size_t len = std::min(std::strlen(msg), sizeof reason - 1);
  std::memmove(reason, msg, len);
  reason[len] = '\0';
}

bool reason_begins(std::string_view start) {
  return std::string_view(reason).substr(0, start.size()) == start;
}

// Runs `command` once. True when it came to its end with `answer`; false when it was abandoned,
// with the reason kept.
bool attempt(const Command &command, int &answer) {
  try {
    answer = command();
    return true;
  } catch (const Abandoned &) {
    return false;
  } catch (const std::bad_alloc &) {
    set_reason("Alloc failed");
    return false;
  } catch (const std::exception &fault) {
    std::snprintf(reason, sizeof reason, "Sorry! Internal fault: %s\n", fault.what());
    return false;
  } catch (...) {
    set_reason("Sorry! Internal fault\n");
    return false;
  }
}

// All state that a command may leave set half way. Resources are owned by guards; this is the rest.
void reset_command_state() {
  reset_reducer();
  greqQuery = 0;
  gNarPrint = 0;
  // Who stops a command does not want the rest of its line to run.
  pp_reset(reason[0] == '\0' || reason_begins(kInterrupted));
}

// The query root holds a thrown value: its printing is the answer.
int print_thrown() {
  print_spine();
  EnableAllMenus();
  if (gConsolePrompt != 0)
    DisplayResponse("\nQUERY> ");
  greqQuery = 1;
  return 1;
}

// Shows why the command ended (an empty reason is one that the user knows already) and empties the
// query space.
int show_reason() {
  DisplayResponse(reason);
  if (reason_begins(kTooNested))
    advise(Note::nesting, {std::to_string(gNestingLimit)});
  EnableAllMenus();
  init_free_list();
  return 1;
}

// Doubles the space. 1 when the command may be tried again, which reads no database twice over.
int grow_space() {
  settle_cut_off_opening();
  const Aside aside;
  return resize_free_list(2);
}

// Runs the query of the console again, or else the command in the way its owner repeats it.
int try_again(const Command &again) {
  if (gQuery.empty())
    return again();
  const std::string query = gQuery;
  {
    const Aside aside;
    DisplayResponse("Re-trying Query\n");
    DisplayResponse(query);
    if (!query.ends_with('\n'))
      DisplayResponse("\n");
  }
  return cint_query(query);
}

// Deals with one abandonment; true when an attempt after it came to its end with `answer`, false
// when that was abandoned in turn. `over` is set when nothing is left to try.
bool act_on_reason(const Command &again, int &answer, bool &over) {
  if (reason_begins("throw"))
    return attempt(print_thrown, answer);
  const bool may_grow = !std::exchange(gSpaceAtCeiling, false);
  if (may_grow && reason_begins("Insufficient Query Space") &&
      (!gQuery.empty() || again != nullptr)) {
    int grown = 0;
    if (!attempt(grow_space, grown))
      return false;
    if (grown != 0)
      return attempt([&] { return try_again(again); }, answer);
  }
  over = true;
  return attempt(show_reason, answer);
}

// What may only happen when nothing of the command runs any more.
void settle_command() {
  int done = 0;
  attempt(
      [] {
        settle_cut_off_opening();
        settle_cut_off_load();
        settle_trust();
        return 1;
      },
      done);
}

} // namespace

void error_exit(const char *msg) {
  set_reason(msg);
  throw Abandoned();
}

int run_step(const std::function<void()> &step) {
  int done = 0;
  const Command whole = [&step] {
    step();
    return 1;
  };
  return attempt(whole, done) ? done : 0;
}

CommandEnd run_command(const Command &command, const Command &again) {
  const int errors = gParseErrors;
  const int refusals = gRefusals;
  const int user_errors = gUserErrors;
  int answer = 0;
  gQuery.clear();
  bool ended = attempt(command, answer);
  bool over = false;
  while (!ended && !over) {
    reset_command_state();
    ended = act_on_reason(again, answer, over);
  }
  settle_command();
  if (over)
    return reason[0] == '\0' || reason_begins(kInterrupted) ? CommandEnd::interrupted
                                                            : CommandEnd::failed;
  const bool failed =
      answer == 0 || gParseErrors != errors || gRefusals != refusals || gUserErrors != user_errors;
  return failed ? CommandEnd::failed : CommandEnd::done;
}

} // namespace velora
