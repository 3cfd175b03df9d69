// The command parser. A command is one section, one `lambda` listing, one file to load or one
// query. Called with the first token of what is to be read current.
#include "front/parser.h"

#include <string>
#include <utility>

#include "core/events.h"
#include "core/print.h"
#include "core/space.h"
#include "front/notes.h"
#include "front/parse.h"
#include "front/pdecs.h"
#include "front/pexpr.h"
#include "front/pfdef.h"
#include "front/putils.h"
#include "front/query_start.h"
#include "front/section.h"
#include "front/type_check.h"
#include "platform/response.h"
#include "platform/trust.h"

namespace velora {

namespace {

int tdec_statement() {
  return p_tdec() != 0 && p_end() != 0;
}
int cdec_statement() {
  return p_f_or_c_dec(kTokCdec);
}
int fdec_statement() {
  return p_f_or_c_dec(kTokFdec);
}

// The statements up to an empty one or the end of the source. A failed one is skipped.
int p_section(const char *prompt, int (*statement)()) {
  const Section section;
  for (;;) {
    pprintf(prompt);
    if (pp_get_token() == kTokEnd) {
      if (pp_at_end != 0)
        section.note_unclosed();
      return 1;
    }
    CheckForUserEvents(84);
    forget_noted_place();
    const SectionStatement begun(section);
    if (statement() == 0) {
      begun.note_misplaced();
      process_error();
    }
  }
}

// `lambda NAME ;` lists one symbol, `lambda ;` all of them.
int p_listing() {
  if (pp_get_token() != kTokName) {
    if (p_end() == 0) // a lambda expression may have been meant: nothing is listed for it
      return 0;
    print_all();
    return 1;
  }
  const std::string name(pp_str_val, static_cast<std::size_t>(pp_str_len));
  pp_get_token();
  if (p_end() == 0)
    return 0;
  if (print_symbol(name.c_str()) == 0)
    note_unknown_name(name);
  return 1;
}

// Says that a file goes on behind the empty statement that ends its reading. A database ends with
// one, and its reader tells what it could not read.
void note_unread_rest() {
  if (pp_at_end == 0 && pp_file != nullptr && DatabaseReading::depth == 0 && pp_rest_of_file())
    advise(Note::rest_unread, {std::to_string(pp_line_number()), pp_source_name()});
}

// Counts the queries that run within each other.
struct RunningQuery {
  inline static int depth = 0;
  RunningQuery() { ++depth; }
  ~RunningQuery() { --depth; }
};

} // namespace

int parse() {
  for (;;) {
    pprintf("\nQUERY>");
    if (pp_get_token() == kTokEnd) {
      note_unread_rest();
      return 1;
    }
    CheckForUserEvents(84);
    if (gProgressDots != 0)
      DisplayResponse(" .");
    forget_noted_place();
    if (p_command() == 0)
      process_error();
  }
}

int p_command() {
  switch (pp_token) {
  case kTokTdec:
    return p_section("TDEC>", tdec_statement);
  case kTokCdec:
    return p_section("CDEC>", cdec_statement);
  case kTokFdec:
    return p_section("FDEC>", fdec_statement);
  case kTokFdef:
    return p_section("FDEF>", p_f_def);
  case kTokLambda:
    return p_listing();
  case kTokLload:
    return p_load_file();
  default:
    return p_query();
  }
}

Tree p_query_term() {
  const int errors = gParseErrors;
  const QueryStart start;
  Tree term(p_expression(0));
  if (!term) {
    if (errors == gParseErrors)
      fail_silently();
    start.failed();
    return term;
  }
  if (p_end() == 0) {
    start.failed();
    term.reset();
  }
  return term;
}

int run_query(Tree term) {
  Root outer(RunningQuery::depth > 0 ? Query_root : nullptr);
  const RunningQuery running;
  Query_root = LCopy(term.get());
  term.reset();
  const int result = print_spine();
  if (RunningQuery::depth > 1)
    Query_root = outer;
  return result;
}

int p_query() {
  Tree term = p_query_term();
  if (!term)
    return 0;
  check_query(term.get());
  if (pp_file == nullptr)
    return run_query(std::move(term));
  end_answer_line();
  const int result = run_query(std::move(term));
  end_answer_line();
  return result;
}

} // namespace velora
