// The line editor of the terminal: readline driven one key at a time, so that Ctrl+C reaches us
// while it waits. The terminal is in its ordinary state whenever no line is being read.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <poll.h>
#include <readline/history.h>
#include <readline/readline.h>
#include <unistd.h>

#include "platform/interrupt.h"
#include "shell/terminal/line_input.h"

namespace velora {

Completions (*gCompleteNames)(std::string_view start) = nullptr;

namespace {

constexpr int kHistoryLines = 2000;

// What the editor's callback leaves for read(): a line, or the end of the input.
bool line_ready = false;
bool at_end = false;
std::string typed_line;

void take_line(char *line) {
  line_ready = true;
  at_end = line == nullptr;
  typed_line = line == nullptr ? "" : line;
  std::free(line);
  rl_callback_handler_remove();
}

// --- completion --------------------------------------------------------------------------------

// Hands the candidates to readline one by one; each is a copy that readline frees.
char *next_candidate(const char *text, int state) {
  static Completions found;
  static std::size_t next = 0;
  if (state == 0) {
    found = gCompleteNames(text);
    next = 0;
  }
  return next < found.size() ? strdup(found[next++].c_str()) : nullptr;
}

// The commands of the shell whose first word is a file or a folder.
constexpr const char *kFileCommands[] = {":build ", ":cd ",   ":include ", ":load ",
                                         ":log ",   ":open ", ":test "};

// True where a file name is being typed: in an open string, or after one of these commands.
bool wants_file_name(int start) {
  const std::string before(rl_line_buffer, static_cast<std::size_t>(start));
  std::size_t quotes = 0;
  for (const char c : before)
    quotes += c == '"';
  return quotes % 2 == 1 ||
         std::any_of(std::begin(kFileCommands), std::end(kFileCommands),
                     [&before](const char *command) { return before.starts_with(command); });
}

char **complete(const char *text, int start, int) {
  if (wants_file_name(start))
    return nullptr; // readline completes file names itself
  rl_attempted_completion_over = 1;
  return gCompleteNames == nullptr ? nullptr : rl_completion_matches(text, next_candidate);
}

// Lists what fits on the screen, in columns; whoever wants the rest types another letter.
void show_matches(char **matches, int count, int longest) {
  int rows = 0;
  int width = 0;
  rl_get_screen_size(&rows, &width);
  const int wide = longest + 2;
  const int columns = std::max(1, width / wide);
  const int fitting = std::max(1, rows - 2) * columns;
  const int shown = count <= fitting ? count : fitting - columns;
  std::fputs("\n", rl_outstream);
  for (int i = 1; i <= shown; ++i)
    if (i % columns == 0 || i == shown)
      std::fprintf(rl_outstream, "%s\n", matches[i]);
    else
      std::fprintf(rl_outstream, "%-*s", wide, matches[i]);
  if (shown < count)
    std::fprintf(rl_outstream, "... and %d more\n", count - shown);
  rl_forced_update_display();
}

// --- history -----------------------------------------------------------------------------------

// The file that keeps the history between runs, or an empty name when there is no place for it.
std::string history_file() {
  namespace fs = std::filesystem;
  std::error_code error;
  const char *home = std::getenv("HOME");
  const char *state = std::getenv("XDG_STATE_HOME");
  fs::path folder = state != nullptr && *state != '\0' ? fs::path(state)
                    : home != nullptr                  ? fs::path(home) / ".local/state"
                                                       : fs::path();
  // Who has the older file keeps it, also when the folder is made later.
  const bool has_older = home != nullptr && fs::exists(fs::path(home) / ".velora_history", error) &&
                         !fs::exists(folder / "velora/history", error);
  if (!has_older && !folder.empty() && fs::is_directory(folder, error)) {
    fs::create_directories(folder / "velora", error);
    if (!error)
      return folder / "velora/history";
  }
  return home == nullptr ? std::string() : (fs::path(home) / ".velora_history").string();
}

class Editor : public LineInput {
public:
  explicit Editor(bool colour);
  ~Editor() override;
  Got read(std::string &line, const std::string &prompt) override;
  int read_char() override;
  void drop_rest() override { rest_.clear(); }
  void remember(const std::string &command) override;

private:
  Got wait_for_line();

  bool colour_;
  std::string file_;
  std::deque<std::string> pasted_; // further lines of a paste
  std::string rest_;               // of the line that read_char hands out
};

Editor::Editor(bool colour) : colour_(colour), file_(history_file()) {
  rl_readline_name = "velora";
  rl_catch_signals = 0; // the interrupt key is ours
  rl_variable_bind("show-all-if-ambiguous", "on");
  rl_completion_display_matches_hook = show_matches;
  rl_attempted_completion_function = complete;
  rl_basic_word_break_characters = " \t\n()[];'\"";
  rl_completer_word_break_characters = rl_basic_word_break_characters;
  rl_completer_quote_characters = "\"";
  using_history();
  stifle_history(kHistoryLines);
  if (!file_.empty())
    read_history(file_.c_str());
}

Editor::~Editor() {
  if (!file_.empty())
    history_truncate_file(file_.c_str(), kHistoryLines);
}

void Editor::remember(const std::string &command) {
  const HIST_ENTRY *last =
      history_length > 0 ? history_get(history_base + history_length - 1) : nullptr;
  if (command.empty() || (last != nullptr && command == last->line))
    return;
  add_history(command.c_str());
  // Each entry is kept at once, so that nothing is lost however the program ends.
  if (!file_.empty() && append_history(1, file_.c_str()) != 0)
    write_history(file_.c_str());
}

Got Editor::wait_for_line() {
  while (!line_ready) {
    pollfd keys{STDIN_FILENO, POLLIN, 0};
    // A signal just before the waiting would not end it, so the flag is looked at in between.
    constexpr int kLookEvery = 100;
    const int ready = gInterrupted == 0 ? ::poll(&keys, 1, kLookEvery) : -1;
    if (ready > 0) {
      rl_callback_read_char();
      continue;
    }
    if (ready == 0)
      continue;
    if (gInterrupted == 0) {
      if (errno != EINTR)
        return Got::end;
      rl_reset_screen_size(); // another signal: most likely a new window size
      rl_forced_update_display();
      continue;
    }
    gInterrupted = 0;
    if (gEndAsked == 0)
      std::fputs("^C\n", stdout);
    std::fflush(stdout);
    rl_free_line_state();
    rl_callback_sigcleanup();
    rl_replace_line("", 1);
    rl_callback_handler_remove();
    return Got::interrupted;
  }
  return at_end ? Got::end : Got::line;
}

Got Editor::read(std::string &line, const std::string &prompt) {
  if (pasted_.empty()) {
    const std::string shown = colour_ ? "\001\033[1;36m\002" + prompt + "\001\033[0m\002" : prompt;
    std::fflush(stdout);
    line_ready = false;
    rl_callback_handler_install(shown.c_str(), take_line);
    const Got got = wait_for_line();
    if (got != Got::line) {
      if (got == Got::end)
        std::fputs("\n", stdout);
      return got;
    }
    std::size_t start = 0;
    for (std::size_t end; (end = typed_line.find('\n', start)) != std::string::npos;
         start = end + 1)
      pasted_.push_back(typed_line.substr(start, end - start));
    pasted_.push_back(typed_line.substr(start));
  }
  line = pasted_.front();
  pasted_.pop_front();
  return Got::line;
}

int Editor::read_char() {
  if (rest_.empty()) {
    const Got got = read(rest_, "");
    if (got == Got::interrupted)
      gInterrupted = 1; // stops the query that reads, as soon as it goes on
    if (got != Got::line)
      return -1;
    rest_ += '\n';
  }
  const int c = static_cast<unsigned char>(rest_.front());
  rest_.erase(0, 1);
  return c;
}

} // namespace

std::unique_ptr<LineInput> make_editor(bool colour) {
  return std::make_unique<Editor>(colour);
}

} // namespace velora
