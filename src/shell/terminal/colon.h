// The commands of the shell: lines that begin with a colon and a letter. They stand in one table;
// a family of commands has its functions in a file of its own and one row for each in the table.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

// A command of the shell. `arguments` shows what stands behind the name ("" for nothing); `help` is
// one line. The function gets what stands behind the name, without blanks around it and without a
// final ";", and answers 0 when it failed, after saying why.
struct ColonCommand {
  const char *name;
  const char *arguments;
  const char *help;
  int (*function)(const std::string &argument);
};

// The table, in the order of `:help`.
std::span<const ColonCommand> colon_commands();

// True for a colon and a letter behind leading blanks.
bool is_colon_command(const std::string &line);
// Runs such a line. A name may be cut short as long as one command only begins with it.
int run_colon_command(const std::string &line);

// Names of symbols and colon commands that begin with `start`, for completion.
std::vector<std::string> complete_names(std::string_view start);

// The commands, by family. colon_language.cpp:
int colon_help(const std::string &argument);
int colon_type(const std::string &argument);
int colon_list(const std::string &argument);
int colon_load(const std::string &argument);
// colon_session.cpp:
int colon_space(const std::string &argument);
int colon_time(const std::string &argument);
int colon_nesting(const std::string &argument);
int colon_quit(const std::string &argument);
// colon_graphics.cpp:
int colon_graphics(const std::string &argument);

} // namespace velora
