// Keeping the last answer and putting it where `it` stands.
#include "shell/terminal/last_answer.h"

#include <algorithm>
#include <string_view>

#include "core/symbols.h"
#include "core/trees.h"
#include "front/brackets.h"
#include "front/parse.h"
#include "front/pexpr.h"
#include "front/putils.h"
#include "front/source.h"
#include "shell/captured_console.h"
#include "shell/typed_words.h"

namespace velora {

namespace {

constexpr std::size_t kLongest = std::size_t{1} << 16;
constexpr std::string_view kEndsWord = "-:; \t\n()[]'\"";

// True when the text is one expression. What the parser says of it is shown to nobody.
bool reads_back(const std::string &text) {
  BracketScan scan;
  scan.step_over(text);
  if (text.empty() || text.size() > kLongest || scan.fault() != nullptr)
    return false;
  CapturedConsole console;
  console.silent = true;
  const int errors = gParseErrors;
  const StatementSource source(text + " ;\n");
  pp_get_token();
  const Tree term(p_expression(0));
  const bool whole = term && pp_token == kTokEnd && pp_get_token() == kTokEnd && pp_at_end != 0;
  gParseErrors = errors;
  return whole;
}

} // namespace

void LastAnswer::keep(const std::string &text) {
  const std::string answer(trimmed(text));
  text_ = reads_back(answer) ? answer : "";
}

std::string LastAnswer::put_into(const std::string &line) const {
  if (text_.empty() || find_symbol("it", 2) != nullptr)
    return line;
  std::string made;
  std::size_t word = 0; // where the current word begins
  const auto end_word = [&](std::size_t to) {
    const std::string_view text = std::string_view(line).substr(word, to - word);
    made += text == "it" ? "(" + text_ + ")" : std::string(text);
  };
  for (std::size_t i = 0; i <= line.size(); ++i) {
    if (i < line.size() && kEndsWord.find(line[i]) == std::string_view::npos)
      continue;
    end_word(i);
    std::size_t last = i; // of what is taken as it stands
    if (i < line.size() && line[i] == '"')
      last = std::min(line.find('"', i + 1), line.size() - 1);
    else if (i + 2 < line.size() && line[i] == '\'' && line[i + 2] == '\'')
      last = i + 2;
    if (i < line.size())
      made += line.substr(i, last - i + 1);
    i = last;
    word = i + 1;
  }
  return made;
}

bool begins_query(const std::string &line) {
  const std::size_t from = line.find_first_not_of(" \t");
  if (from == std::string::npos)
    return false;
  const std::string_view rest = std::string_view(line).substr(from);
  const std::string_view word = rest.substr(0, rest.find_first_of(kEndsWord));
  for (const std::string_view other : {"tdec", "cdec", "fdec", "fdef", "lambda", "lload"})
    if (word == other)
      return false;
  return true;
}

} // namespace velora
