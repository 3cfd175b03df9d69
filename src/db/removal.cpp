// Asks before a symbol that others depend on is replaced, and frees its block. A running query may
// refer to what is removed: memory that it can reach is retired rather than freed. Signatures that
// are kept and clauses that name a type go on pointing to its entry after it was replaced, so
// entries of types live on outside the table until the user's symbols go.
#include "db/removal.h"

#include <span>

#include "core/second_names.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "db/dependants.h"
#include "db/needs.h"
#include "platform/response.h"

namespace velora {

NameList gDependents;

namespace {

// Lists a dependant, or takes its clauses away.
void note_dependant(symbol *dependant, int report) {
  if (report != 0)
    NewNameToList(dependant->name, gDependents);
  else if (family_of(dependant) == Family::function)
    free_function_defs(dependant->b.fc);
}

// Takes a constructor out of the chain of values of its type.
void unlink_value(const symbol *type, const symbol *value) {
  enum_block *values = type->b.en;
  symbol *previous = nullptr;
  for (symbol *s = values->head; s != nullptr; s = s->b.cs->link) {
    if (s == value) {
      (previous != nullptr ? previous->b.cs->link : values->head) = s->b.cs->link;
      if (values->tail == s)
        values->tail = previous;
      return;
    }
    previous = s;
  }
}

// Frees the block by kind, unless another name shares it; the symbol is left without one.
void free_block(symbol *sym, int unlink) {
  if (give_up_share(sym) != 0) {
    ++gClauseChanges; // the clauses have another owner now
    return;
  }
  const KeptIndex kept(sym);
  switch (family_of(sym)) {
  case Family::function:
    free_function(sym);
    break;
  case Family::constructor:
    free_cons(sym, unlink);
    break;
  case Family::type:
    retire_block(sym->b.tp);
    break;
  case Family::none:
    break;
  }
  sym->stype = kKindless;
  sym->b.fc = nullptr;
}

// Entries of types that were replaced.
std::vector<symbol *> replaced_types;

void take_out_of_table(symbol *sym, Family family) {
  if (family != Family::type) {
    unlink_symbol(sym);
    return;
  }
  detach_symbol(sym);
  replaced_types.push_back(sym);
}

void free_replaced_types() {
  for (symbol *sym : replaced_types) {
    retire_block(sym->name);
    retire_block(sym);
  }
  replaced_types.clear();
}

// Keeps gDependents empty outside remove_symbol, however it is left.
struct DependentsGuard {
  DependentsGuard() { remove_list(gDependents); }
  ~DependentsGuard() { remove_list(gDependents); }
  DependentsGuard(const DependentsGuard &) = delete;
  DependentsGuard &operator=(const DependentsGuard &) = delete;
};

bool user_agrees(const symbol *sym, std::size_t dependants) {
  constexpr int kYes = 2;
  return PromptUser(format_text("%s has %d dependents. Replace it anyway?", sym->name,
                                static_cast<int>(dependants)),
                    {"No", "Yes", "Cancel"}) == kYes;
}

// Shows the user what has to be drawn or typed again.
void show_dependants(std::span<const std::string> names) {
  DisplayResponse("DEPENDENTS\n");
  int number = 0;
  for (const std::string &name : names) {
    DisplayResponsef("%d: Replace Component(s) of %s\n", ++number, name.c_str());
    ShowGraphic(name.c_str(), 1, nullptr);
  }
}

} // namespace

void NewNameToList(const char *name, NameList &list) {
  if (list.seen.insert(name).second)
    list.names.emplace_back(name);
}

void remove_list(NameList &list) {
  list.names.clear();
  list.seen.clear();
}

int fun_or_cons_has_dependants(symbol *sym, int report) {
  const std::vector<symbol *> users = functions_that_mention(sym);
  for (symbol *user : users)
    note_dependant(user, report);
  return users.empty() ? 0 : 1;
}

int type_has_dependants(symbol *sym, int report) {
  int found = 0;
  for (symbol *s = Symbol_table; s != nullptr; s = s->next) {
    const Family family = family_of(s);
    const bool mentions =
        (family == Family::function && type_appears_in_type_tree(sym, s->b.fc->types) != 0) ||
        (family == Family::constructor && type_appears_in_type_tree(sym, s->b.cs->types) != 0);
    if (!mentions)
      continue;
    found = 1;
    note_dependant(s, report);
  }
  return found;
}

int remove_sym_block(symbol *sym, int report) {
  const Family family = family_of(sym);
  if (family == Family::none)
    return 0;
  if (other_name(sym) != nullptr) {
    free_block(sym, 1);
    return 1;
  }
  if (family == Family::type)
    type_has_dependants(sym, report);
  else
    fun_or_cons_has_dependants(sym, report);
  if (report != 0 && !gDependents.names.empty())
    return 0;
  free_block(sym, 1);
  return 1;
}

int remove_symbol(symbol *sym) {
  const DependentsGuard guard;
  const Family family = family_of(sym);
  if (remove_sym_block(sym, 1) == 0) {
    if (gDependents.names.empty() || !user_agrees(sym, gDependents.names.size()))
      return 0;
    remove_sym_block(sym, 0);
    show_dependants(gDependents.names);
  }
  take_out_of_table(sym, family);
  return 1;
}

void clear_user_symbols() {
  for (symbol *s = Symbol_table; s != nullptr;) {
    symbol *next = s->next;
    if ((s->stype & (kBuiltinBit | kSystemBit)) == 0 || is_second_name(s)) {
      free_block(s, 0);
      unlink_symbol(s);
    }
    s = next;
  }
  free_replaced_types();
}

void free_function(symbol *sym) {
  func_block *fc = sym->b.fc;
  free_function_defs(fc);
  forget_plan(fc);
  free_type_tree(fc->types);
  fc->types = nullptr;
  sym->b.fc = nullptr;
  retire_block(fc);
}

void free_cons(symbol *sym, int unlink) {
  cons_block *cs = sym->b.cs;
  const top_node *types = cs->types;
  if (unlink != 0 && types != nullptr && types->top_code == kTypeUser) {
    const symbol *type = types->tnu.u.s;
    if ((type->stype & kEnumBit) != 0)
      unlink_value(type, sym);
  }
  free_type_tree(cs->types);
  cs->types = nullptr;
  sym->b.cs = nullptr;
  retire_block(cs);
}

} // namespace velora
