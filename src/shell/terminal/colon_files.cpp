// Commands of the shell about files: loading, loading again, editing, the folder, the log, tests.
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "front/parser.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/whole_file.h"
#include "shell/listing.h"
#include "shell/query_tests.h"
#include "shell/terminal/colon.h"
#include "shell/terminal/db_commands.h"
#include "shell/terminal/terminal_console.h"

namespace velora {

namespace {

namespace fs = std::filesystem;

std::string last_loaded;

std::string unquoted(const std::string &argument) {
  const bool quoted = argument.size() > 1 && argument.front() == '"' && argument.back() == '"';
  return quoted ? argument.substr(1, argument.size() - 2) : argument;
}

int load_and_remember(const std::string &file) {
  last_loaded = file;
  return load_file(file, 0);
}

// A text in single quotes for the command shell.
std::string shell_quoted(const std::string &text) {
  std::string quoted = "'";
  for (const char c : text)
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

// Lets the user's editor work on a file. 1, or 0 after a message.
int run_editor(const std::string &file) {
  const char *chosen = std::getenv("VISUAL");
  if (chosen == nullptr || *chosen == '\0')
    chosen = std::getenv("EDITOR");
  const std::string editor = chosen == nullptr || *chosen == '\0' ? "vi" : chosen;
  if (std::system((editor + " " + shell_quoted(file)).c_str()) == 0)
    return 1;
  BeepMsgef(1, "Sorry! The editor \"%s\" failed; EDITOR names another\n", editor.c_str());
  return 0;
}

// A file that is gone again when the command ends.
struct ScratchFile {
  std::string name =
      (fs::temp_directory_path() / ("velora-edit-" + std::to_string(::getpid()) + ".q")).string();
  ~ScratchFile() {
    std::error_code error;
    fs::remove(name, error);
  }
};

int edit_symbol(const symbol &s) {
  if ((s.stype & (kBuiltinBit | kSystemBit)) != 0) {
    BeepMsgef(1, "Sorry! %s belongs to the language and is not edited\n", s.name);
    return 0;
  }
  const std::string name = s.name;
  const std::string before = listing_of(s);
  const ScratchFile scratch;
  std::string after;
  std::string reason;
  if (!write_whole_file(scratch.name, before, reason)) {
    BeepMsgef(1, "Sorry! %s: %s\n", scratch.name.c_str(), reason.c_str());
    return 0;
  }
  if (run_editor(scratch.name) == 0 || !read_whole_file(scratch.name, after))
    return 0;
  if (after == before) {
    DisplayResponse("Nothing was changed\n");
    return 1;
  }
  return load_text(name, after);
}

} // namespace

int colon_load(const std::string &argument) {
  return load_and_remember(unquoted(argument));
}

int colon_reload(const std::string &) {
  if (last_loaded.empty()) {
    BeepMsge("Sorry! No file was loaded with :load\n", 1);
    return 0;
  }
  return load_and_remember(last_loaded);
}

int colon_edit(const std::string &argument) {
  const std::string name = argument.empty() ? last_loaded : unquoted(argument);
  if (const symbol *s = name.size() > 255 || name.empty() ? nullptr : find_symbol(name.c_str(), 0))
    return edit_symbol(*s);
  if (name.empty())
    return report_use(":edit NAME, of a function or of a file");
  if (Db_file != 0 && fs::path(name).lexically_normal() == fs::path(Db_f_name).lexically_normal()) {
    BeepMsgef(1, "Sorry! %s is open; \":close\" closes it\n", name.c_str());
    return 0;
  }
  return run_editor(name) != 0 ? load_and_remember(name) : 0;
}

int colon_cd(const std::string &argument) {
  std::error_code error;
  const char *home = std::getenv("HOME");
  const std::string folder = argument.empty() ? (home == nullptr ? "." : home) : unquoted(argument);
  if (database_is_current()) { // its name may be a relative one
    BeepMsge("Sorry! The folder stays while a database is open; \":close\" closes it\n", 1);
    return 0;
  }
  fs::current_path(folder, error);
  if (error) {
    BeepMsgef(1, "Sorry! %s: %s\n", folder.c_str(), error.message().c_str());
    return 0;
  }
  DisplayResponse(fs::current_path(error).string() + "\n");
  return 1;
}

int colon_log(const std::string &argument) {
  if (gTerminal == nullptr)
    return 0;
  if (argument == "off") {
    gTerminal->end_log();
    return 1;
  }
  const std::string file = unquoted(argument);
  if (gTerminal->begin_log(file))
    return 1;
  BeepMsgef(1, "Sorry! %s cannot be written\n", file.c_str());
  return 0;
}

int colon_test(const std::string &argument) {
  return run_query_tests(unquoted(argument));
}

} // namespace velora
