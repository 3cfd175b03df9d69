// The commands of the shell: lines that begin with a colon and a letter. They stand in one table;
// a family of commands has its functions in a file of its own and one row for each in the table.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/records.h"

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

// Says how a command is used, when its argument is none of those it takes; 0.
int report_use(const std::string &use);

// The words of a command's argument, parted by blanks; double quotes hold blanks together.
struct ColonWord {
  std::string text;
  bool quoted = false;
};
std::vector<ColonWord> colon_words(const std::string &argument);

// Names of symbols and colon commands that begin with `start`, for completion.
std::vector<std::string> complete_names(std::string_view start);

// The commands, by family. colon_language.cpp:
int colon_help(const std::string &argument);
// Reports a name that nobody declared, with names that may have been meant; 0.
int report_unknown(const std::string &name);
symbol *find_named(const std::string &name);
void show_declaration(const symbol &s);
// colon_find.cpp:
int colon_apropos(const std::string &argument);
int colon_type(const std::string &argument);
int colon_list(const std::string &argument);
int colon_code(const std::string &argument);
// Shows the names and commands that are about a word; 0 when there are none.
int show_about(const std::string &word);
// colon_files.cpp:
int colon_load(const std::string &argument);
int colon_reload(const std::string &argument);
int colon_edit(const std::string &argument);
int colon_cd(const std::string &argument);
int colon_log(const std::string &argument);
int colon_test(const std::string &argument);
// colon_set.cpp, colon_tour.cpp:
int colon_set(const std::string &argument);
int colon_tour(const std::string &argument);
// colon_session.cpp:
int colon_space(const std::string &argument);
int colon_time(const std::string &argument);
int colon_nesting(const std::string &argument);
int colon_quit(const std::string &argument);
// colon_build.cpp:
int colon_build(const std::string &argument);
int colon_components(const std::string &argument);
// colon_pictures.cpp:
int colon_translate(const std::string &argument);
int colon_evaluate(const std::string &argument);
int colon_remove(const std::string &argument);
int colon_draw(const std::string &argument);
// Draws the picture that "NAME" or "NAME COMPONENT" means, a name with blanks in quotes; 1 or 0.
int draw_named_picture(const std::string &argument, const std::string &file);
// colon_graphics.cpp:
int colon_graphics(const std::string &argument);
// colon_network.cpp:
int colon_network(const std::string &argument);
int colon_calls(const std::string &argument);
int colon_callers(const std::string &argument);
int colon_path(const std::string &argument);
int colon_unused(const std::string &argument);
int colon_export(const std::string &argument);

} // namespace velora
