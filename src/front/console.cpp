// Commands typed at the console, and the check of a query's brackets and quotes. A file may leave
// brackets open and is read as far as it goes; someone who types is told.
#include <utility>

#include "front/brackets.h"
#include "front/cint.h"
#include "front/notes.h"
#include "front/parse.h"
#include "front/parser.h"
#include "front/pexpr.h"
#include "front/putils.h"
#include "front/query_start.h"
#include "front/source.h"
#include "front/type_check.h"

namespace velora {

int gRetypeQuery = 0;

namespace {

// What the expression just read lacked; null for nothing.
const char *expression_fault() {
  if (pp_open_string != 0)
    return kQuotesFault;
  switch (p_balance) {
  case kSquareUnmatched:
    return kSquareFault;
  case kRoundUnmatched:
    return kRoundFault;
  default:
    return nullptr;
  }
}

int p_console_query() {
  const int errors = gParseErrors;
  pp_begin_record();
  const QueryStart start;
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
    return start.failed();
  }
  if (p_end() == 0)
    return start.failed();
  check_query(term.get());
  gQuery = std::move(text);
  return run_query(std::move(term));
}

bool starts_query(int token) {
  return token != kTokTdec && token != kTokCdec && token != kTokFdec && token != kTokFdef &&
         token != kTokLambda && token != kTokLload;
}

} // namespace

const char *query_fault(const std::string &text) {
  BracketScan scan;
  scan.step_over(text);
  return scan.fault();
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
