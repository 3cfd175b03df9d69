// Taking a symbol's value and putting it back. The texts are those of the database file, so what a
// file carries comes back as it was.
#include "editor/symbol_state.h"

#include <algorithm>

#include "core/print.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "db/removal.h"
#include "db/term_text.h"
#include "front/cint.h"
#include "platform/response.h"

namespace velora {

namespace {

bool is_function(std::uint8_t stype) {
  return (stype & kFunctionBit) != 0;
}
bool is_constructor(std::uint8_t stype) {
  return (stype & kConstructorBit) != 0;
}
bool is_type(std::uint8_t stype) {
  return (stype & kTypeNameBit) != 0 && !is_function(stype) && !is_constructor(stype);
}

std::string declaration_of(const symbol &s) {
  std::string text = s.name;
  if (s.stype == kDbFunction)
    text += format_text(" #%d", s.b.fc->arity);
  text += " ::= ";
  if (is_function(s.stype))
    return text + tspecs_text(s.b.fc->types);
  if (is_constructor(s.stype))
    return text + tspecs_text(s.b.cs->types);
  if (s.stype == kEnumType)
    return text + "enum";
  if (s.stype == kNonlexType)
    return text + "nonlex";
  return is_type(s.stype) ? text + format_text("typeop #%d", s.b.tp->arity) : std::string();
}

std::vector<std::string> clauses_text(const symbol &s) {
  std::vector<std::string> clauses;
  for (const defs_link *group = s.b.fc->defs; group != nullptr; group = group->next) {
    std::uint32_t mask = 1;
    for (const rhs_link *clause = group->defs; clause != nullptr;
         clause = clause->next, mask <<= 1) {
      std::string text;
      fprint_lhs_args(text, group->lhs_tree, mask, ' ');
      text += "::= ";
      fprint_args(text, clause->original, ' ');
      clauses.push_back(std::move(text));
    }
  }
  return clauses;
}

int declare(const SymbolState &state) {
  if (is_function(state.stype))
    return cint_fdec(state.declaration);
  if (is_constructor(state.stype))
    return cint_cdec(state.declaration);
  return cint_tdec(state.declaration);
}

// Moves a symbol to the place behind the one of that name, or to the head. What was newer then may
// be gone; then it stays where it is.
void move_behind(symbol *sym, const std::string &newer) {
  symbol *before = newer.empty() ? nullptr : find_symbol(newer.c_str(), newer.size());
  if ((before == nullptr && !newer.empty()) || before == sym || sym->prev == before)
    return;
  (sym->prev != nullptr ? sym->prev->next : Symbol_table) = sym->next;
  if (sym->next != nullptr)
    sym->next->prev = sym->prev;
  sym->prev = before;
  sym->next = before != nullptr ? before->next : Symbol_table;
  if (sym->next != nullptr)
    sym->next->prev = sym;
  (before != nullptr ? before->next : Symbol_table) = sym;
}

int remove_whole(symbol *sym) {
  if (sym->stype != kKindless && remove_sym_block(sym, 1) == 0) {
    remove_list(gDependents);
    BeepMsgef(1, "Sorry! Others use %s by now: nothing was changed\n", sym->name);
    return 0;
  }
  unlink_symbol(sym);
  gSymbolTableChanged = 1;
  return 1;
}

} // namespace

SymbolState take_symbol_state(const std::string &name) {
  SymbolState state;
  const symbol *sym = find_symbol(name.c_str(), name.size());
  if (name.empty() || sym == nullptr)
    return state;
  state.exists = true;
  state.stype = sym->stype;
  state.newer = sym->prev != nullptr ? sym->prev->name : "";
  if (sym->stype == kKindless)
    return state;
  state.declaration = declaration_of(*sym);
  if (is_function(sym->stype))
    state.clauses = clauses_text(*sym);
  return state;
}

int put_symbol_state(const std::string &name, const SymbolState &state) {
  const SymbolState now = take_symbol_state(name);
  symbol *sym = find_symbol(name.c_str(), name.size());
  const bool same_head = now.exists && state.exists && now.declaration == state.declaration;
  if (sym != nullptr && !same_head && remove_whole(sym) == 0)
    return 0;
  if (!state.exists)
    return 1;
  if (!same_head && declare(state) == 0)
    return 0;
  sym = find_symbol(name.c_str(), name.size());
  if (sym == nullptr)
    return 0;
  if (is_function(state.stype) && (!same_head || now.clauses != state.clauses)) {
    free_function_defs(sym->b.fc);
    for (const std::string &clause : state.clauses)
      if (cint_fdef(clause) == 0)
        return 0;
  }
  sym->stype = state.stype;
  move_behind(sym, state.newer);
  gSymbolTableChanged = 1;
  return 1;
}

} // namespace velora
