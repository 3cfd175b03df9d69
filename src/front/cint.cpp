// Single statements from strings. Each opens the command buffer as a source of its own, so that it
// may be called while a file or a console line is half read.
#include "front/cint.h"

#include "front/parse.h"
#include "front/parser.h"
#include "front/pdecs.h"
#include "front/pfdef.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/response.h"

namespace velora {

std::string gQuery;
int greqQuery = 0;
int gConsolePrompt = 1;

namespace {

int statement(const std::string &text, int (*parser)()) {
  const StatementSource source(text + ";\n");
  forget_noted_place();
  return parser();
}

int report_declaration(int done, const char *label, const char *good, const char *bad) {
  std::string text = done != 0 ? good : bad;
  text.replace(text.find("%s"), 2, label);
  if (done != 0)
    DisplayResponse(text);
  else
    BeepMsge(text, 1);
  return done != 0;
}

} // namespace

int fdb_tdec() {
  pp_get_token();
  return p_tdec();
}

int fdb_fdec() {
  pp_get_token();
  return p_f_or_c_dec(kTokFdec);
}

int fdb_cdec() {
  pp_get_token();
  return p_f_or_c_dec(kTokCdec);
}

int fdb_fdef() {
  pp_get_token();
  return p_f_def();
}

int fdb_query() {
  pp_get_token();
  return p_query();
}

int fdb_load(const char *fname, const char *title) {
  return load_file(fname, 0, title == nullptr ? ShownName{fname} : ShownName{title, true});
}

int cint_tdec(const std::string &text) {
  return statement(text, fdb_tdec);
}

int cint_fdec(const std::string &text) {
  return statement(text, fdb_fdec);
}

int cint_cdec(const std::string &text) {
  return statement(text, fdb_cdec);
}

int cint_fdef(const std::string &text) {
  return statement(text, fdb_fdef);
}

int cint_query(const std::string &text) {
  DisableAllMenus();
  gQuery = text;
  const int result = statement(gQuery, fdb_query);
  EnableAllMenus();
  if (gConsolePrompt != 0)
    DisplayResponse("\nQUERY> ");
  greqQuery = 1;
  return result;
}

int cint_command(const std::string &text) {
  return statement(text, [] {
    pp_get_token();
    const int done = p_command();
    if (done == 0)
      process_error();
    return done;
  });
}

int create_fdec(const std::string &text, const char *label, const symbol *old_sym) {
  const int done = cint_fdec(text);
  if (old_sym == nullptr)
    return report_declaration(done, label, "Good! %s declared as a new function \n",
                              "Sorry! Unable to declare %s as a function\n");
  return report_declaration(done, label, "Good! Function %s re-declared\n",
                            "Sorry! Unable to re-define function %s\n");
}

int create_cdec(const std::string &text, const char *label, const symbol *old_sym) {
  const int done = cint_cdec(text);
  if (old_sym == nullptr)
    return report_declaration(done, label, "Good! %s declared as a new constructor\n",
                              "Sorry! Unable to declare %s as a constructor\n");
  return report_declaration(done, label, "Good! Constructor %s has been re-declared\n",
                            "Sorry! Unable to re-declare constructor %s\n");
}

} // namespace velora
