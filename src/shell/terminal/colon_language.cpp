// The help of the shell, and what its commands say of names.
#include <algorithm>

#include "core/symbols.h"
#include "eval/help.h"
#include "platform/response.h"
#include "shell/name_help.h"
#include "shell/terminal/colon.h"

namespace velora {

namespace {

std::string declared_by(const symbol &s) {
  if ((s.stype & kBuiltinBit) != 0)
    return "built in";
  return (s.stype & kSystemBit) != 0 ? "system function" : "";
}

// How a command is written: its name and what stands behind it.
std::string command_form(const ColonCommand &row) {
  std::string form(":");
  form.append(row.name);
  if (row.arguments[0] != '\0')
    form.append(" ").append(row.arguments);
  return form;
}

void list_commands() {
  std::size_t width = 0;
  for (const ColonCommand &row : colon_commands())
    width = std::max(width, command_form(row).size());
  for (const ColonCommand &row : colon_commands())
    DisplayResponsef("  %-*s  %s\n", static_cast<int>(width), command_form(row).c_str(), row.help);
  DisplayResponse("A query is an expression and a semicolon: + #1 #2 ;\n"
                  "Sections begin with tdec, cdec, fdec or fdef and end with a lone semicolon.\n");
}

// The words of the language that are no symbols, as they are written and what they mean.
struct WordHelp {
  const char *word;
  const char *text;
};
constexpr WordHelp word_helps[] = {
    {"tdec", "tdec NAME ::= enum ; NAME ::= typeop #1 ; ;\n"
             "  declares types: an enumeration, or an operator with so many types behind it\n"},
    {"cdec", "cdec NAME ::= TYPE -> TYPE ; ;\n"
             "  declares constructors; one without an arrow is a value of its type\n"},
    {"fdec", "fdec NAME ::= TYPE -> TYPE ; ;\n"
             "  declares functions: the types of the arguments, then that of the result\n"},
    {"fdef", "fdef NAME ?0 #1 ::= BODY ; ;\n"
             "  gives declared functions their clauses; ?0 stands for any argument\n"},
    {"lambda", "(lambda ?0 BODY)\n  in an expression: the function of ?0\n"
               "lambda NAME ;\n  as a command: shows a name with its type and clauses\n"},
    {"lload", "lload \"FILE\"\n  reads declarations, definitions and queries from a file\n"},
    {"enum", "tdec NAME ::= enum ; ;\n  an enumeration; cdec declares its values\n"},
    {"nonlex",
     "tdec NAME ::= nonlex ; ;\n  an enumeration marked non-lexical; cdec declares its values\n"},
    {"typeop", "tdec NAME ::= typeop #N ; ;\n  a type with N types behind its name\n"},
    {"int", "int\n  the type of whole numbers of 32 bits: #42, #-7\n"},
    {"real", "real\n  the type of real numbers of 32 bits: #r2.5\n"},
    {"char", "char\n  the type of characters: 'a'\n"},
    {"str", "str\n  the type of strings: \"abc\"\n"},
    {"sym", "sym\n  the type of names\n"},
};

// Explains a word of the language; 0 when `word` is none.
int help_on_word(const std::string &word) {
  for (const WordHelp &help : word_helps)
    if (word == help.word) {
      DisplayResponse(help.text);
      return 1;
    }
  return 0;
}

} // namespace

int report_unknown(const std::string &name) {
  BeepMsgef(1, "There is no symbol \"%s\"\n", name.c_str());
  std::string near;
  for (const std::string &other : nearest_names(name, 3))
    near += (near.empty() ? "" : ", ") + other;
  if (!near.empty())
    show_note("note: did you mean " + near + "?\n");
  return 0;
}

symbol *find_named(const std::string &name) {
  return name.empty() || name.size() > 255 ? nullptr : find_symbol(name.data(), name.size());
}

void show_declaration(const symbol &s) {
  const std::string origin = declared_by(s);
  DisplayResponse(declaration_text(s) + (origin.empty() ? "" : "   (" + origin + ")") + "\n");
}

int colon_help(const std::string &argument) {
  if (argument.empty()) {
    list_commands();
    return 1;
  }
  if (const HelpRow *row = find_help(argument)) {
    DisplayResponse(help_text(*row));
    if (argument.starts_with("gr_") || argument.starts_with("mp_") || argument == "plotit")
      DisplayResponse("  \":graphics save N FILE.svg\" writes what window N shows as a picture.\n");
    return 1;
  }
  for (const ColonCommand &row : colon_commands()) {
    if (argument == row.name || argument == std::string(":") + row.name) {
      if (find_named(argument) != nullptr) // a symbol of the same name
        show_declaration(*find_named(argument));
      DisplayResponsef("%s\n  %s\n", command_form(row).c_str(), row.help);
      return 1;
    }
  }
  if (help_on_word(argument) != 0)
    return 1;
  if (const symbol *s = find_named(argument)) {
    show_declaration(*s);
    return 1;
  }
  return show_about(argument) != 0 ? 1 : report_unknown(argument);
}

} // namespace velora
