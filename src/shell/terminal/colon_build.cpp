// Commands of the shell about text and pictures together: building pictures from text, and telling
// where the two differ.
#include <filesystem>
#include <system_error>

#include "core/symbols.h"
#include "db/vel_util.h"
#include "editor/builder.h"
#include "editor/guard.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "shell/terminal/colon.h"

namespace velora {

namespace {

bool same_file(const std::string &a, const std::string &b) {
  std::error_code failed;
  return std::filesystem::equivalent(a, b, failed) && !failed;
}

// A function or type of the user.
bool has_components(const symbol *sym) {
  return sym->stype == kFunction || sym->stype == kDbFunction || sym->stype == kTypeOp ||
         sym->stype == kEnumType || sym->stype == kNonlexType;
}

} // namespace

int colon_build(const std::string &argument) {
  std::vector<ColonWord> words = colon_words(argument);
  const bool tidy = words.size() > 1 && !words.back().quoted && words.back().text == "tidy";
  if (tidy)
    words.pop_back();
  if (words.empty() || words.size() > 2)
    return report_use(":build FILE [NAME] [tidy]");
  const std::string &file = words.front().text;
  std::string name;
  Make_Base_Name(words.back().text, name);
  std::string text;
  if (!read_whole_file(file, text)) {
    orvek_errorf("Can't read from file %s\n", file.c_str());
    return 0;
  }
  // The text of a database whose pictures are built stays as it is.
  const bool in_place = same_file(file, name + ".ddb");
  if (!may_build_over(name, in_place)) {
    DisplayResponse("Nothing is built\n");
    return 0;
  }
  const Tidying tidying = tidy ? Tidying::always : Tidying::never;
  return in_place ? build_segments(name, tidying) : build_from_file(name, file, text, tidying);
}

int colon_components(const std::string &argument) {
  const std::vector<ColonWord> words = colon_words(argument);
  if (words.size() > 1)
    return report_use(":components [NAME]");
  std::vector<const symbol *> chosen;
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next)
    if (has_components(sym) &&
        (words.empty() || words.front().text == std::string_view(sym->name, sym->name_len)))
      chosen.push_back(sym);
  if (chosen.empty() && !words.empty()) {
    BeepMsgef(1, "%s is no function or type of yours\n", words.front().text.c_str());
    return 0;
  }
  // The table has the newest first; what was declared first is shown first.
  const ComponentSurvey survey;
  for (auto sym = chosen.rbegin(); sym != chosen.rend(); ++sym) {
    const ComponentReport report = survey.report(*sym);
    std::string numbers;
    for (const int number : report.differ)
      numbers += (numbers.empty() ? "" : " ") + std::to_string(number);
    DisplayResponsef("%s\t%s\t%s\n", std::string((*sym)->name, (*sym)->name_len).c_str(),
                     name_of(report.state), numbers.c_str());
  }
  return 1;
}

} // namespace velora
