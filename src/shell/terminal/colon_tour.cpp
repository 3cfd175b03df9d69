// The tour: a few steps, each of which says one thing and shows it. What it shows it runs, so that
// the answers are those of the program.
#include <charconv>
#include <iterator>
#include <string>

#include "core/symbols.h"
#include "front/cint.h"
#include "platform/response.h"
#include "shell/terminal/colon.h"

namespace velora {

namespace {

// A step: what it says, and up to three queries that it runs.
struct Step {
  const char *title;
  const char *text;
  const char *queries[3];
};

constexpr Step kSteps[] = {
    {"Queries",
     "You type an expression and a semicolon; the answer is shown. A call begins with its\n"
     "function, and its arguments follow. Integers are written #5, reals #r2.5.",
     {"+ #2 #3 ;", "* #6 (+ #3 #4) ;", "/ #r1 #3 ;"}},
    {"Values",
     "Texts stand in double quotes, characters in single ones, lists in square brackets with\n"
     "blanks between their elements. A call inside a list stands in round brackets.",
     {"str_concat [\"good \" \"morning\"] ;", "[#1 (+ #1 #1) #3] ;", "Pair \"anna\" #34 ;"}},
    {"Functions of lists",
     "Functions are values as well: map applies one to every element, foldl gathers a list up.\n"
     "A call that lacks arguments waits for them, so (* #2) doubles.",
     {"map (* #2) [#1 #2 #3] ;", "foldl + #0 [#1 #2 #3] ;",
      "filter even (list_of_int #1 #10 #1) ;"}},
    {"Your own functions",
     "A function is declared in the section fdec and gets its clauses in fdef; a lone semicolon\n"
     "closes a section. ?0 and ?1 stand for arguments. Type this, a line at a time:\n"
     "  fdec square ::= int -> int ; ;\n"
     "  fdef square ?0 ::= * ?0 ?0 ; ;\n"
     "  square #12 ;",
     {nullptr, nullptr, nullptr}},
    {"Finding things",
     "\":help NAME\" explains a name, \":apropos WORD\" looks for names by what they do, "
     "\":type\"\n"
     "gives the type of an expression, \":list\" shows what you have declared. The Tab key\n"
     "completes names.",
     {nullptr, nullptr, nullptr}},
    {"Keeping things",
     "\":new NAME\" begins a database, \":save\" saves what you declared into it, and\n"
     "\"velora NAME\" opens it again. docs/guide/first-hour.md goes on from here, and\n"
     "examples/ has programs to read.",
     {nullptr, nullptr, nullptr}},
};
constexpr int kLast = static_cast<int>(std::size(kSteps));

int next_step = 1;

void show_step(int number) {
  const Step &step = kSteps[number - 1];
  DisplayResponsef("%d of %d: %s\n%s\n", number, kLast, step.title, step.text);
  for (const char *query : step.queries) {
    if (query == nullptr)
      continue;
    DisplayResponsef("QUERY> %s\n", query);
    const std::string text = query;
    cint_command(text.substr(0, text.find_last_of(';')));
    DisplayResponse("\n");
  }
  if (number < kLast)
    DisplayResponse("\":tour\" goes on\n");
}

} // namespace

int colon_tour(const std::string &argument) {
  int number = next_step;
  const char *end = argument.data() + argument.size();
  const auto [stop, error] = std::from_chars(argument.data(), end, number);
  if (!argument.empty() && (error != std::errc() || stop != end || number < 1 || number > kLast))
    return report_use(format_text(":tour N, where N is 1 to %d", kLast));
  show_step(number);
  next_step = number == kLast ? 1 : number + 1;
  return 1;
}

} // namespace velora
