// The table of CONTROL's colon commands.
#include "shell/console_colon.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "core/print.h"
#include "core/symbols.h"
#include "db/f_dbops.h"
#include "front/parser.h"
#include "platform/response.h"
#include "shell/commands.h"
#include "shell/gate.h"
#include "shell/name_help.h"
#include "shell/typed_words.h"

namespace velora {

namespace {

using Run = int (*)(const std::string &argument);

struct Row {
  std::string_view name;
  const char *arguments; // what stands behind the name; empty for nothing
  const char *help;
  Run run;
};

int list_commands();

int help(const std::string &name) {
  if (name.empty())
    return list_commands();
  const std::string page = help_on_name(name);
  if (page.empty()) {
    BeepMsgef(1, "There is no symbol \"%s\"\n", name.c_str());
    return 0;
  }
  DisplayResponse(page.ends_with('\n') ? page : page + "\n");
  return 1;
}

int type(const std::string &name) {
  const symbol *s = find_symbol(name.data(), name.size());
  if (s == nullptr) {
    BeepMsgef(1, "There is no symbol \"%s\"\n", name.c_str());
    return 0;
  }
  DisplayResponse(declaration_text(*s) + "\n");
  return 1;
}

int list(const std::string &name) {
  if (name.empty())
    return print_all(), 1;
  if (print_symbol(name.c_str()) != 0)
    return 1;
  BeepMsgef(1, "There is no symbol \"%s\"\n", name.c_str());
  return 0;
}

int load(const std::string &file) {
  return load_file(file, 0);
}

constexpr Row kRows[] = {
    {"help", "[NAME]", "explain a name, or list these commands", help},
    {"type", "NAME", "show how a name is declared", type},
    {"list", "[NAME]", "show a name with its type and clauses; without a name everything", list},
    {"load", "FILE", "read declarations, definitions and queries from a file", load},
    {"open", "", "open a database", [](const std::string &) { return OpenCommand(); }},
    {"save", "", "save the database and its pictures",
     [](const std::string &) { return SaveDataBaseCommand(); }},
    {"close", "", "close the database", [](const std::string &) { return CloseDataBaseCommand(); }},
    {"quit", "", "end the program", [](const std::string &) { return close_afterwards(0), 1; }},
};

int list_commands() {
  for (const Row &row : kRows) {
    std::string form = ":" + std::string(row.name);
    if (row.arguments[0] != '\0')
      form += std::string(" ") + row.arguments;
    DisplayResponsef("%-14s %s\n", form.c_str(), row.help);
  }
  return 1;
}

} // namespace

bool is_console_command(const std::string &line) {
  return line.size() > 1 && line[0] == ':' &&
         std::isalpha(static_cast<unsigned char>(line[1])) != 0;
}

int run_console_command(const std::string &line) {
  const std::size_t end = std::min(line.find_first_of(" \t;"), line.size());
  const std::string name = line.substr(1, end - 1);
  std::string argument(trimmed(std::string_view(line).substr(end), " \t\r\n;"));
  if (argument.size() > 1 && argument.front() == '"' && argument.back() == '"')
    argument = argument.substr(1, argument.size() - 2);
  const Row *row = row_called(kRows, name);
  if (row == nullptr) {
    BeepMsgef(1, "There is no command \":%s\" here; \":help\" lists them\n", name.c_str());
    return 0;
  }
  if (argument.empty() && row->arguments[0] != '\0' && row->arguments[0] != '[') {
    BeepMsgef(1, "Use: :%s %s\n", name.c_str(), row->arguments);
    return 0;
  }
  return row->run(argument);
}

} // namespace velora
