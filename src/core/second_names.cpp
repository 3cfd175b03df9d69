// Sharing a definition between entries of the symbol table. Nothing is counted: while there are no
// second names nothing is looked for, and else the whole table is.
#include "core/second_names.h"

#include <algorithm>
#include <vector>

#include "core/symbols.h"

namespace velora {

namespace {

std::vector<const symbol *> second_names;

bool is_function(const symbol *sym) {
  return (sym->stype & kFunctionBit) != 0;
}

bool is_constructor(const symbol *sym) {
  return !is_function(sym) && (sym->stype & kConstructorBit) != 0;
}

// Puts `heir` in the place of `sym` among the values of an enumerated type.
void replace_value(const symbol *sym, symbol *heir) {
  const top_node *types = sym->b.cs->types;
  if (types == nullptr || types->top_code != kTypeUser || (types->tnu.u.s->stype & kEnumBit) == 0)
    return;
  enum_block *values = types->tnu.u.s->b.en;
  if (values->tail == sym)
    values->tail = heir;
  if (values->head == sym)
    values->head = heir;
  for (symbol *s = values->head; s != nullptr; s = s->b.cs->link)
    if (s->b.cs->link == sym)
      s->b.cs->link = heir;
}

} // namespace

bool is_second_name(const symbol *sym) {
  return std::find(second_names.begin(), second_names.end(), sym) != second_names.end();
}

symbol *other_name(const symbol *sym) {
  if (second_names.empty() || sym->b.fc == nullptr)
    return nullptr;
  for (symbol *s = Symbol_table; s != nullptr; s = s->next)
    if (s != sym && s->stype == sym->stype && s->b.fc == sym->b.fc)
      return s;
  return nullptr;
}

int make_alias(std::string_view name, const symbol *meant) {
  symbol *old = find_symbol(name.data(), name.size());
  if (old == meant)
    return 1;
  if (old != nullptr && (old->stype & (kBuiltinBit | kSystemBit)) != 0 && !is_second_name(old))
    return 0;
  symbol *sym =
      old != nullptr && old->stype == kKindless ? old : insert_symbol(name.data(), name.size());
  if (sym == nullptr)
    return 0;
  sym->stype = meant->stype;
  sym->b = meant->b;
  second_names.push_back(sym);
  gSymbolTableChanged = 1;
  ++gClauseChanges;
  return 1;
}

int give_up_share(symbol *sym) {
  symbol *heir = other_name(sym);
  std::erase(second_names, sym);
  if (heir == nullptr)
    return 0;
  if (is_function(sym) && sym->b.fc->name == sym->name) {
    sym->b.fc->name = heir->name;
  } else if (is_constructor(sym)) {
    if (sym->b.cs->name == sym->name)
      sym->b.cs->name = heir->name;
    replace_value(sym, heir);
  }
  sym->stype = kKindless;
  sym->b.fc = nullptr;
  return 1;
}

} // namespace velora
