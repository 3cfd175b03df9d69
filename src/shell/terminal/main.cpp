// The terminal program: reads the command line, starts the language, opens the database, runs the
// session and answers with its exit status. Everything after the command line runs on a thread with
// a very large stack, so that deep structures and deep nesting hold.
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <pthread.h>
#include <unistd.h>

#include "core/events.h"
#include "core/space.h"
#include "core/symbols.h"
#include "eval/clause_code.h"
#include "eval/evaluate.h"
#include "eval/help.h"
#include "eval/registry.h"
#include "front/cint.h"
#include "platform/end_signals.h"
#include "platform/interrupt.h"
#include "platform/response.h"
#include "platform/trust.h"
#include "shell/answer_notes.h"
#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/events/event_runner.h"
#include "shell/events/screenless_desktop.h"
#include "shell/graphics_files.h"
#include "shell/library_folder.h"
#include "shell/query_tests.h"
#include "shell/terminal/colon.h"
#include "shell/terminal/db_commands.h"
#include "shell/terminal/options.h"
#include "shell/terminal/session.h"
#include "shell/terminal/time_limit.h"

namespace velora {

namespace {

constexpr std::size_t kStackBytes = std::size_t{512} << 20;
constexpr int kWrongUse = 2;
constexpr int kEndedBySignal = 128; // and its number

// How the program runs, decided once from the options and what the standard streams are.
struct Manner {
  bool typed;   // a person at a terminal
  bool quiet;   // no texts of the start
  bool goes_on; // an interrupt ends the command, not the run
};

Manner manner_of(const Options &options) {
  const bool scripted = options.batch || !options.queries.empty() || !options.draw.empty() ||
                        !options.network.file.empty() || !options.test.empty();
  const bool typed = !scripted && isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
  return {typed, scripted, !scripted};
}

// What a person at a terminal sees below the texts of the start.
constexpr const char *kWelcome =
    "Velora: a small lazy functional language whose programs are text and pictures.\n"
    "Type a query and a semicolon, + #1 #2 ; \":help\" lists commands, \":quit\" leaves.\n"
    "\":tour\" shows the language in a few steps.\n";

// --- the session -------------------------------------------------------------------------------

// Where the user, or the script, answers and types.
std::unique_ptr<LineInput> make_input(bool colour) {
  if (isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0)
    return make_editor(colour);
  return std::make_unique<StreamInput>(STDIN_FILENO);
}

// The texts of --eval, each closed by a semicolon, which a quote left open must not take in.
std::vector<std::string> closed_queries(const Options &options) {
  std::vector<std::string> texts;
  for (const std::string &query : options.queries)
    texts.push_back(query + (std::count(query.begin(), query.end(), '"') % 2 == 0 ? " ;" : "\n;"));
  return texts;
}

void apply(const Options &options, const Manner &manner) {
  gNotes = options.notes ? 1 : 0;
  gAnswerNotes = options.answer_notes ? 1 : 0;
  gTrustAll = options.trust;
  gStrict = options.strict;
  gSeconds = options.seconds;
  gPersonAnswers = manner.typed;
  gProgressDots = manner.quiet ? 0 : 1;
  gAnswerLines = manner.quiet ? 1 : 0;
  gConsolePrompt = 0;
  gLibDir = options.lib_dir.empty() ? find_library_folder() : options.lib_dir;
  if (options.space != 0)
    node_count = options.space;
  if (options.max_space != 0)
    gMaxNodes = options.max_space;
  if (options.nesting != 0)
    gNestingLimit = options.nesting;
  gCompleteNames = complete_names;
}

// Starts the language; answers 0 or the exit status.
int start_language(Session &session) {
  int code = 13; // also when it is abandoned half way
  const CommandEnd end = session.run_one([&] {
    code = init_Velora();
    gSymbolTableChanged = 0;
    return 1;
  });
  if (end == CommandEnd::interrupted)
    return 130;
  if (code == 19)
    BeepMsge("Sorry! There is no memory for a query space of that size (--space, --max-space)\n",
             1);
  if (const char *every = std::getenv("VELORA_STRESS"))
    set_collect_stress(static_cast<unsigned>(std::strtoul(every, nullptr, 10)));
  gPlainBodies = std::getenv("VELORA_PLAIN_BODIES") != nullptr;
  return code;
}

// Opens the database of the command line. What is said on the way is shown when that fails.
void open_at_start(TerminalConsole &console, Session &session, const std::string &name,
                   bool quiet) {
  if (quiet)
    console.hold_back();
  int opened = 0;
  session.run_one([&] { return opened = open_named_database(name); });
  console.let_go(opened == 0);
}

// Runs the session until it may end. Who could not say what is to become of unsaved work, because
// the input or the terminal is gone or the program was asked to end, finds it at the next start. A
// script that has come to its end cannot answer, so it is not asked whether to save; who leaves by
// a command or at a terminal is.
void run_session(Session &session, const Manner &manner) {
  int may_end = 0;
  while (may_end == 0) {
    session.run();
    if (gEndAsked != 0 || (!gQuit && !manner.typed) || session.input_is_gone())
      break;
    session.run_one([&] {
      may_end = leave_database(manner.typed);
      return 1;
    });
    if (session.input_is_gone())
      break;
    session.go_on();
  }
  const bool asked = gEndAsked != 0 && (manner.goes_on || database_is_current());
  if (may_end == 0 && (asked || manner.typed))
    session.run_one([] { return keep_unsaved_work(); });
}

// What is to be done with the database: one picture drawn, or the session.
void do_work(Session &session, const Options &options, const Manner &manner) {
  if (!options.network.file.empty())
    session.run_one([&] { return write_network(options.network); });
  else if (!options.draw.empty())
    session.run_one([&] { return draw_named_picture(options.draw, options.draw_file); });
  else if (!options.test.empty())
    session.run_one([&] { return run_query_tests(options.test); });
  else
    run_session(session, manner);
}

// The desktop program without a screen, used by a script.
int run_events(const Options &options) {
  ScreenlessDesktop desktop;
  gDesktop = &desktop;
  gConsole = &gDesktopConsole;
  gNotes = options.notes ? 1 : 0;
  gAnswerNotes = 0; // as in the desktop program
  gProgressDots = 0;
  EventRunner runner(desktop);
  if (!runner.read(options.events)) {
    std::fprintf(stderr, "velora: cannot read %s\n", options.events.c_str());
    return kWrongUse;
  }
  if (start_desktop(options.database) == 0)
    return 13;
  return run_event_script(runner) ? 0 : 1;
}

int run_program(const Options &options) {
  const Manner manner = manner_of(options);
  if (!options.events.empty()) {
    apply(options, manner);
    gConsolePrompt = 1;
    return run_events(options);
  }
  TerminalConsole console(manner.typed);
  gConsole = &console;
  apply(options, manner);
  const std::unique_ptr<LineInput> input = make_input(console.colour());
  console.set_input(input.get());
  TextInput queries(closed_queries(options));
  LineInput &commands = options.queries.empty() ? *input : queries;
  Session session(console, commands, manner.typed, manner.goes_on);
  if (manner.quiet)
    console.hold_back();
  int status = start_language(session);
  if (status == 0) {
    console.let_go(false);
    if (manner.typed)
      console.write(kWelcome);
    if (!options.database.empty())
      open_at_start(console, session, options.database, manner.quiet);
    else if (manner.typed)
      session.run_one(offer_unnamed);
    do_work(session, options, manner);
    if (!options.graphics_dir.empty())
      session.run_one([&] { return save_all_graphics(options.graphics_dir.c_str()); });
    status = gEndAsked != 0 ? kEndedBySignal + gEndAsked : session.exit_status();
  } else {
    console.let_go(true);
  }
  console.end_line();
  free_retired();
  return status;
}

// --- the thread and the interrupt key ----------------------------------------------------------

struct Run {
  Options options;
  int status = 1;
};

// The signals that the evaluating thread gets, and no other.
sigset_t watched_signals() {
  sigset_t watched;
  sigemptyset(&watched);
  for (const int each : {SIGINT, SIGHUP, SIGTERM, SIGALRM})
    sigaddset(&watched, each);
  return watched;
}

void *run_on_thread(void *arg) {
  const sigset_t watched = watched_signals();
  pthread_sigmask(SIG_UNBLOCK, &watched, nullptr);
  set_stack_limit(kStackBytes);
  Run &run = *static_cast<Run *>(arg);
  run.status = run_program(run.options);
  return nullptr;
}

void note_interrupt(int) {
  gInterrupted = 1;
}

// Waiting reads are woken by the signals.
void catch_signals() {
  struct sigaction action = {};
  sigemptyset(&action.sa_mask);
  action.sa_handler = note_interrupt;
  sigaction(SIGINT, &action, nullptr);
  action.sa_handler = note_time_passed;
  sigaction(SIGALRM, &action, nullptr);
  catch_end_signals();           // the session then keeps what is unsaved
  std::signal(SIGXFSZ, SIG_IGN); // a file that may not grow is a failed write, as on a full disk
  const sigset_t watched = watched_signals();
  pthread_sigmask(SIG_BLOCK, &watched, nullptr);
}

int run_with_stack(Run &run) {
  catch_signals();
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kStackBytes);
  pthread_t thread;
  if (pthread_create(&thread, &attributes, run_on_thread, &run) != 0) {
    std::fputs("velora: no memory for the stack\n", stderr);
    return 1;
  }
  pthread_join(thread, nullptr);
  return run.status;
}

// A file must never be opened in the place of a standard stream that is closed: what is printed
// would go into it. What stands there instead can be used by neither side.
void fill_closed_streams() {
  for (int fd = 0; fd <= 2; ++fd)
    if (fcntl(fd, F_GETFD) == -1)
      open("/dev/null", fd == 0 ? O_WRONLY : O_RDONLY);
}

// The exit status when the output has to have arrived.
int written(int status) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
    return status;
  std::fputs("velora: the output could not be written\n", stderr);
  return status == 0 ? 1 : status;
}

} // namespace

} // namespace velora

int main(int argc, char **argv) {
  velora::fill_closed_streams();
  velora::Run run;
  std::string complaint;
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (!velora::read_options(words, run.options, complaint)) {
    std::fprintf(stderr, "velora: %s; \"velora --help\" lists the options\n", complaint.c_str());
    return velora::kWrongUse;
  }
  if (run.options.help || run.options.version) {
    std::fputs(run.options.help ? velora::usage_text().c_str() : "velora " VELORA_VERSION "\n",
               stdout);
    return velora::written(0);
  }
  if (run.options.builtins_page) {
    std::fputs(velora::builtins_page().c_str(), stdout);
    return velora::written(0);
  }
  return velora::written(velora::run_with_stack(run));
}
