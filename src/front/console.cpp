// Commands typed at the console, and the check of a query's brackets and quotes. A file may leave
// brackets open and is read as far as it goes; someone who types is told.
#include <utility>

#include "front/cint.h"
#include "front/parse.h"
#include "front/parser.h"
#include "front/pexpr.h"
#include "front/putils.h"
#include "front/source.h"

namespace velora {

int gRetypeQuery = 0;

namespace {

constexpr const char *kSquare = "Unmatched square brackets\n";
constexpr const char *kRound = "Unmatched round brackets\n";
constexpr const char *kQuotes = "Unmatched double quotes\n";

// What the expression just read lacked; null for nothing.
const char *expression_fault() {
  if (pp_open_string != 0)
    return kQuotes;
  switch (p_balance) {
  case kSquareUnmatched:
    return kSquare;
  case kRoundUnmatched:
    return kRound;
  default:
    return nullptr;
  }
}

int p_console_query() {
  const int errors = gParseErrors;
  pp_begin_record();
  Tree term(p_expression(0));
  std::string text = pp_take_record();
  const char *fault = expression_fault();
  if (fault != nullptr && errors == gParseErrors) {
    gRetypeQuery = 1;
    return refuse(fault);
  }
  if (!term) {
    if (errors == gParseErrors)
      fail_silently();
    return 0;
  }
  if (p_end() == 0)
    return 0;
  gQuery = std::move(text);
  return run_query(std::move(term));
}

bool starts_query(int token) {
  return token != kTokTdec && token != kTokCdec && token != kTokFdec && token != kTokFdef &&
         token != kTokLambda && token != kTokLload;
}

} // namespace

const char *query_fault(const std::string &text) {
  long round = 0;
  long square = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"')
      quoted = !quoted;
    if (quoted)
      continue;
    if (c == '\'' && i + 2 < text.size() && text[i + 2] == '\'')
      i += 2; // a character literal
    round += c == '(' ? 1 : c == ')' ? -1 : 0;
    square += c == '[' ? 1 : c == ']' ? -1 : 0;
  }
  if (quoted)
    return kQuotes;
  if (square != 0)
    return kSquare;
  return round != 0 ? kRound : nullptr;
}

int p_console_command() {
  if (pp_statement_open != 0)
    process_error();
  pprintf("QUERY>");
  if (pp_get_token() == kTokEnd)
    return pp_at_end != 0 ? -1 : 1;
  forget_noted_place();
  gQuery.clear();
  const int done = starts_query(pp_token) ? p_console_query() : p_command();
  if (done == 0)
    process_error();
  return done;
}

} // namespace velora
