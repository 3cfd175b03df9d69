// The table of the shell's commands and the finding of one in it.
#include "shell/terminal/colon.h"

#include <algorithm>
#include <cctype>

#include "core/symbols.h"
#include "platform/response.h"
#include "shell/terminal/db_commands.h"
#include "shell/typed_words.h"

namespace velora {

namespace {

constexpr ColonCommand kColonTable[] = {
    {"help", "[NAME]", "explain a name, or list the commands", colon_help},
    {"apropos", "WORD", "find names by what they are about", colon_apropos},
    {"type", "EXPRESSION", "show how a name is declared, or the type of an expression", colon_type},
    {"list", "[NAME]", "show what you have declared, or one name, as it is written", colon_list},
    {"code", "[NAME]", "show a name, or everything, as it is compiled", colon_code},
    {"tour", "[N]", "show the language in a few steps", colon_tour},
    {"load", "FILE", "read declarations, definitions and queries from a file", colon_load},
    {"reload", "", "load the last file again", colon_reload},
    {"edit", "[NAME]", "change a function, or a file, in your editor and load it", colon_edit},
    {"test", "FILE", "run queries and hold their answers against those in the file", colon_test},
    {"cd", "[DIR]", "change the folder", colon_cd},
    {"log", "FILE|off", "write all that is shown into a file as well", colon_log},
    {"set", "[NAME VALUE]", "change a setting, or list them", colon_set},
    {"graphics", "[save N FILE.svg]", "list the graphics windows, or write one as a picture",
     colon_graphics},
    {"new", "NAME", "make a new database", colon_new},
    {"open", "NAME", "open a database with its pictures", colon_open},
    {"include", "NAME", "add the code and pictures of another database", colon_include},
    {"save", "", "save the database and its pictures", colon_save},
    {"close", "", "close the database", colon_close},
    {"copy", "[mac|dos]", "copy the database with the line ends of another machine", colon_copy},
    {"status", "", "show what is open, what it holds and whether it is saved", colon_status},
    {"translate", "NAME [N] [replace]",
     "define the clause or the type that picture N of NAME shows, in place of another body when it "
     "says replace; N counts from 0, titles of windows from 1",
     colon_translate},
    {"evaluate", "NAME [N]", "run picture N of NAME as a query", colon_evaluate},
    {"remove", "NAME [N] picture|code|both|all",
     "remove picture N of NAME, its clause, or the whole function", colon_remove},
    {"draw", "NAME [N] FILE.svg", "draw a picture as an SVG file; a name may stand in quotes",
     colon_draw},
    {"trust", "", "let the open databases write files and open others without asking", colon_trust},
    {"build", "FILE [NAME] [tidy]", "make the pictures of a text, as the database NAME",
     colon_build},
    {"components", "[NAME]", "tell where pictures and text differ", colon_components},
    {"network", "[tidy | FILE]",
     "lay out who calls whom and store it, set its boxes apart, or write it as a drawing or table",
     colon_network},
    {"calls", "NAME", "show what the clauses of a function mention", colon_calls},
    {"callers", "NAME", "show which functions mention a name", colon_callers},
    {"path", "A B", "show how calls lead from one function to another", colon_path},
    {"unused", "[ROOT...]", "show functions nobody calls, or that no ROOT reaches", colon_unused},
    {"export", "NEW NAME...", "make a database of some functions and all that they need",
     colon_export},
    {"space", "[more|less|reset]", "double, halve or reset the query space, or show its size",
     colon_space},
    {"time", "[on|off]", "show what each answer cost", colon_time},
    {"nesting", "[N]", "how deep evaluations may nest, 1 to 10000", colon_nesting},
    {"quit", "", "leave, as Ctrl+D does", colon_quit},
};

} // namespace

std::span<const ColonCommand> colon_commands() {
  return kColonTable;
}

bool is_colon_command(const std::string &line) {
  const std::size_t at = line.find_first_not_of(" \t");
  return at != std::string::npos && line[at] == ':' && at + 1 < line.size() &&
         std::isalpha(static_cast<unsigned char>(line[at + 1])) != 0;
}

int report_use(const std::string &use) {
  BeepMsgef(1, "Use: %s\n", use.c_str());
  return 0;
}

std::vector<ColonWord> colon_words(const std::string &argument) {
  std::vector<ColonWord> words;
  std::size_t at = 0;
  while ((at = argument.find_first_not_of(" \t", at)) != std::string::npos) {
    const bool quoted = argument[at] == '"';
    const std::size_t from = quoted ? at + 1 : at;
    const std::size_t to = std::min(
        quoted ? argument.find('"', from) : argument.find_first_of(" \t", from), argument.size());
    words.push_back({argument.substr(from, to - from), quoted});
    at = std::min(to + (quoted ? 1 : 0), argument.size());
  }
  return words;
}

int run_colon_command(const std::string &line) {
  const std::string text(trimmed(line).substr(1));
  const std::size_t end = std::min(text.find_first_of(" \t;"), text.size());
  const std::string name = text.substr(0, end);
  std::string_view behind = trimmed(std::string_view(text).substr(end));
  if (behind.ends_with(';'))
    behind = trimmed(behind.substr(0, behind.size() - 1));
  const std::string argument(behind);
  const ColonCommand *command = row_called(kColonTable, name);
  if (command == nullptr) {
    BeepMsgef(1, "There is no command \":%s\"; \":help\" lists them\n", name.c_str());
    return 0;
  }
  if (argument.empty() && command->arguments[0] != '\0' && command->arguments[0] != '[')
    return report_use(format_text(":%s %s", command->name, command->arguments));
  return command->function(argument);
}

std::vector<std::string> complete_names(std::string_view start) {
  std::vector<std::string> names;
  if (start.starts_with(':')) {
    for (const ColonCommand &row : kColonTable) {
      if (std::string_view(row.name).starts_with(start.substr(1)))
        names.push_back(std::string(":") + row.name);
    }
    return names;
  }
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next) {
    if (std::string_view(s->name, s->name_len).starts_with(start))
      names.emplace_back(s->name, s->name_len);
  }
  return names;
}

} // namespace velora
