// Components and the code: left sides, the clauses that stand for them, their removal.
#include <algorithm>

#include "core/needs.h"
#include "core/space.h"
#include "core/symbols.h"
#include "editor/model/wininfo.h"
#include "editor/vel_cmp.h"
#include "front/parse.h"
#include "front/parser.h"
#include "front/pdecs.h"
#include "front/pexpr.h"
#include "front/plhs.h"
#include "front/source.h"
#include "platform/response.h"

namespace velora {

namespace {

bool is_user_function(const symbol *sym) {
  return sym != nullptr && (sym->stype == kFunction || sym->stype == kDbFunction);
}

} // namespace

int MakeLHS(const WinInfo *wi, std::string &lhs) {
  TypeNames formals;
  Translation t;
  t.quiet = true;
  lhs.clear();
  if (get_intypes_of(wi->name, formals, 1) == 0 || picture_lhs(wi, formals, t) != 1)
    return -1;
  lhs = t.lhs;
  return 1;
}

int exists_clause(const std::string &lhs) {
  const std::string name = lhs.substr(0, lhs.find(' '));
  const symbol *sym = find_symbol(name.c_str(), 0);
  if (name.empty() || !is_user_function(sym))
    return 0;
  const StatementSource source(lhs + ";\n");
  pp_get_token();
  const Tree head(p_expression(0));
  return head && find_lhs_match(sym->b.fc, head.get()) != nullptr ? 1 : 0;
}

int ExistOrvek(const WinInfo *wi) {
  std::string lhs;
  return MakeLHS(wi, lhs) == 1 ? exists_clause(lhs) : 0;
}

int MakeQuery(const std::string &text) {
  const StatementSource source(text + ";\n");
  pp_get_token();
  const Tree term = p_query_term();
  if (!term)
    return 0;
  Query_root = LCopy(term.get());
  return 1;
}

int deny_clause(const std::string &lhs) {
  if (MakeQuery("deny [" + lhs + "]") == 0)
    return 0;
  evaluate(Query_root);
  Query_root = nullptr;
  return exists_clause(lhs) == 0 ? 1 : 0;
}

int DenyExtension(const WinInfo *wi) {
  std::string lhs;
  return MakeLHS(wi, lhs) == 1 ? deny_clause(lhs) : 0;
}

int clause_count(const std::string &name) {
  const symbol *sym = find_symbol(name.c_str(), 0);
  return is_user_function(sym) ? clause_count(sym->b.fc) : 0;
}

int CheckCmpntsEqualFdefs(const WinInfo *wi) {
  const char *name = wi->name.c_str();
  const symbol *sym = wi->name.empty() ? nullptr : find_symbol(name, 0);
  if (sym == nullptr) {
    BeepMsgef(0, "Warning: No function %s in Orvek\n", name);
    return 0;
  }
  if (!is_user_function(sym)) {
    BeepMsgef(0, "Warning: %s is not a user function\n", name);
    return 0;
  }
  const std::vector<WinInfo *> stored = stored_components(wi->name);
  const auto pictures =
      std::count_if(stored.begin(), stored.end(), [](const WinInfo *s) { return s->saved == 1; });
  const int clauses = clause_count(wi->name);
  if (clauses == pictures)
    return 0;
  BeepMsgef(0,
            clauses > pictures ? "Warning: %s : MORE Orvek extensions than picture components\n"
                               : "Warning: %s : MORE picture components than Orvek extensions\n",
            name);
  return clauses > pictures ? -1 : 1;
}

} // namespace velora
