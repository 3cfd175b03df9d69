// Commands of the shell that find and show: names by what they are about, listings, types of
// expressions.
#include "core/print.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "front/infer.h"
#include "front/parse.h"
#include "front/pexpr.h"
#include "front/putils.h"
#include "front/source.h"
#include "front/type_check.h"
#include "platform/response.h"
#include "shell/apropos.h"
#include "shell/listing.h"
#include "shell/name_help.h"
#include "shell/terminal/colon.h"

namespace velora {

namespace {

constexpr std::size_t kMostFound = 16;

// The first sentence of a page.
std::string beginning(const std::string &about) {
  const std::size_t end = about.find(". ");
  return end == std::string::npos ? about : about.substr(0, end + 1);
}

// The parsed expression, empty after a message.
Tree parsed(const std::string &text) {
  const StatementSource source(text + ";\n");
  forget_noted_place();
  pp_get_token();
  const int errors = gParseErrors;
  Tree term(p_expression(0));
  if (!term && errors == gParseErrors)
    fail_silently();
  if (term && p_end() == 0)
    term.reset();
  return term;
}

int type_of_text(const std::string &text) {
  const Tree term = parsed(text);
  if (!term)
    return 0;
  const TypeFinding finding = type_of_expression(term.get());
  if (finding.fits) {
    DisplayResponse(finding.type + "\n");
    return 1;
  }
  BeepMsge("Sorry! This expression has no type\n", 1);
  note_finding(finding, term.get());
  return 0;
}

} // namespace

int show_about(const std::string &word) {
  std::vector<FoundName> found = find_about(word);
  std::string commands;
  for (const ColonCommand &row : colon_commands())
    if (word.size() > 2 && (std::string_view(row.name).starts_with(word) ||
                            std::string_view(row.help).find(word) != std::string_view::npos))
      commands += "  :" + std::string(row.name) + "  " + row.help + "\n";
  const std::size_t more = found.size() > kMostFound ? found.size() - kMostFound : 0;
  found.resize(found.size() - more);
  for (const FoundName &row : found)
    DisplayResponse("  " + row.name + "  " + beginning(row.about) + "\n");
  DisplayResponse(commands);
  if (more > 0)
    DisplayResponsef("  and %zu more\n", more);
  return found.empty() && commands.empty() ? 0 : 1;
}

int colon_apropos(const std::string &argument) {
  if (show_about(argument) != 0)
    return 1;
  BeepMsgef(1, "Sorry! Nothing is about \"%s\"\n", argument.c_str());
  return 0;
}

int colon_type(const std::string &argument) {
  if (const symbol *s = find_named(argument)) {
    show_declaration(*s);
    return 1;
  }
  return argument.find_first_of(" \t()[]'\"#?") == std::string::npos ? report_unknown(argument)
                                                                     : type_of_text(argument);
}

int colon_list(const std::string &argument) {
  if (!argument.empty()) {
    const symbol *s = find_named(argument);
    if (s == nullptr)
      return report_unknown(argument);
    DisplayResponse(listing_of(*s));
    return 1;
  }
  const std::string text = own_listing();
  DisplayResponse(text.empty() ? "Nothing is declared yet\n" : text);
  return 1;
}

int colon_code(const std::string &argument) {
  if (argument.empty()) {
    print_all();
    return 1;
  }
  return find_named(argument) == nullptr ? report_unknown(argument)
                                         : print_symbol(argument.c_str());
}

} // namespace velora
