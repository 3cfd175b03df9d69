// Finds what depends on a symbol, asks before it is replaced, and frees its block. Searches walk
// the whole table, so they run only when a name that exists is replaced, never while new names are
// read. A running query may refer to what is removed: memory that it can reach is retired rather
// than freed. Signatures that are kept and clauses that name a type go on pointing to its entry
// after it was replaced, so entries of types live on outside the table until the user's symbols go.
#include "db/removal.h"

#include <span>

#include "core/second_names.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "db/needs.h"
#include "platform/response.h"

namespace velora {

NameList gDependents;

namespace {

// The three ways in which a symbol can be referred to and removed.
enum class Family { function, constructor, type, none };

Family family_of(const symbol *sym) {
  switch (sym->stype) {
  case kFunction:
  case kSysFunction:
  case kDbFunction:
  case kBuiltinFunction:
    return Family::function;
  case kConstructor:
  case kBuiltinConstructor:
    return Family::constructor;
  case kTypeOp:
  case kEnumType:
  case kNonlexType:
    return Family::type;
  default:
    return Family::none;
  }
}

bool refers_to(const node *leaf, const symbol *sym) {
  switch (family_of(sym)) {
  case Family::function:
    if (sym->stype == kBuiltinFunction)
      return leaf->type == kBuiltin && leaf->val.bi.fc == sym->b.fc;
    return leaf->type == kFunctionNode && leaf->val.fc == sym->b.fc;
  case Family::constructor:
    return leaf->type == kConstructorNode && leaf->val.cs == sym->b.cs;
  default:
    return leaf->type == kName && leaf->val.sym == sym;
  }
}

// The body as written is looked at too: it must never name a block that is gone.
bool group_depends_on(const symbol *sym, const defs_link &group) {
  if (lhs_tree_depends_on(sym, group.lhs_tree) != 0)
    return true;
  for (const rhs_link *clause = group.defs; clause != nullptr; clause = clause->next)
    if (rhs_tree_depends_on(sym, clause->rhs) != 0 ||
        rhs_tree_depends_on(sym, clause->original) != 0)
      return true;
  return false;
}

bool function_depends_on(const symbol *sym, const func_block *fc) {
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next)
    if (group_depends_on(sym, *group))
      return true;
  return false;
}

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
  if (give_up_share(sym) != 0)
    return;
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

int rhs_tree_depends_on(const symbol *sym, const node *rhs_tree) {
  std::vector<const node *> open{rhs_tree};
  while (!open.empty()) {
    const node *n = open.back();
    open.pop_back();
    if (n == nullptr)
      continue;
    if (is_apply(n)) {
      open.push_back(n->val.a.a2);
      open.push_back(n->val.a.a1);
    } else if (refers_to(n, sym)) {
      return 1;
    }
  }
  return 0;
}

int lhs_tree_depends_on(const symbol *sym, const choice_node *lhs_tree) {
  std::vector<const choice_node *> open{lhs_tree};
  while (!open.empty()) {
    const choice_node *alternative = open.back();
    open.pop_back();
    for (; alternative != nullptr; alternative = alternative->next) {
      const node &n = alternative->n;
      if (is_apply(&n)) {
        open.push_back(choice_list(n.val.a.a1));
        open.push_back(choice_list(n.val.a.a2));
      } else if (refers_to(&n, sym)) {
        return 1;
      }
    }
  }
  return 0;
}

int type_appears_in_type_tree(const symbol *tp, const top_node *tp_tree) {
  std::vector<const top_node *> open{tp_tree};
  while (!open.empty()) {
    const top_node *t = open.back();
    open.pop_back();
    if (t == nullptr || (t->top_code & kTypeVariable) != 0)
      continue;
    if ((t->top_code & kTypeUser) != 0) {
      if (t->tnu.u.s == tp)
        return 1;
      open.insert(open.end(), t->tnu.u.ua, t->tnu.u.ua + type_arg_count(t));
    } else if ((t->top_code & kTypeArrow) != 0) {
      open.push_back(t->tnu.bia[0]);
      open.push_back(t->tnu.bia[1]);
    }
  }
  return 0;
}

int fun_or_cons_has_dependants(symbol *sym, int report) {
  int found = 0;
  for (symbol *s = Symbol_table; s != nullptr; s = s->next) {
    if ((s->stype & kFunctionBit) == 0 || s == sym || !function_depends_on(sym, s->b.fc))
      continue;
    found = 1;
    note_dependant(s, report);
  }
  return found;
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
