// Putting the values of symbols back, all of one command together. Clauses and declarations mention
// each other, so everything that is to change goes first, users before what they use, and comes
// back the other way round: types, constructors, functions, then clauses, then places.
#include <algorithm>
#include <unordered_set>

#include "core/symbols.h"
#include "core/trees.h"
#include "db/dependants.h"
#include "db/removal.h"
#include "editor/symbol_state.h"
#include "front/cint.h"
#include "platform/console.h"
#include "platform/response.h"

namespace velora {

namespace {

// A symbol on its way to another state.
struct Target {
  const std::string *name;
  const SymbolState *state;
  std::size_t place;
  bool declare = false; // it is to be declared anew
};

symbol *symbol_of(const Target &target) {
  return find_symbol(target.name->c_str(), target.name->size());
}

Family family_of_kind(std::uint8_t stype) {
  symbol kind{};
  kind.stype = stype;
  return family_of(&kind);
}

// Newest first. A symbol keeps its declaration when that is to stay and no type that it may name
// is declared anew.
std::vector<Target> targets_of(const std::vector<SymbolChange> &changes, bool back) {
  std::vector<Target> targets;
  bool types_change = false;
  for (const SymbolChange &change : changes) {
    const SymbolState &from = back ? change.after : change.before;
    const SymbolState &to = back ? change.before : change.after;
    const bool differs = from.declaration != to.declaration || from.exists != to.exists;
    targets.push_back(
        {&change.name, &to, back ? change.place_before : change.place_after, differs});
    types_change = types_change || (differs && family_of_kind(from.stype) == Family::type);
  }
  for (Target &target : targets)
    target.declare = target.declare || types_change;
  std::sort(targets.begin(), targets.end(),
            [](const Target &a, const Target &b) { return a.place < b.place; });
  return targets;
}

// The name of one whose clauses or signature use a symbol that would go; empty when all of them
// are among the targets.
std::string outsider(const std::vector<Target> &targets) {
  std::unordered_set<std::string_view> names;
  for (const Target &target : targets)
    names.insert(*target.name);
  for (const Target &target : targets) {
    symbol *sym = symbol_of(target);
    if (sym == nullptr || !target.declare)
      continue;
    if (family_of(sym) == Family::type)
      type_has_dependants(sym, 1);
    else if (family_of(sym) != Family::none)
      fun_or_cons_has_dependants(sym, 1);
    const std::vector<std::string> users = std::move(gDependents.names);
    remove_list(gDependents);
    for (const std::string &user : users)
      if (!names.contains(user))
        return *target.name;
  }
  return {};
}

void remove_of_family(const std::vector<Target> &targets, Family family) {
  for (const Target &target : targets) {
    symbol *sym = symbol_of(target);
    if (sym == nullptr || !target.declare || family_of(sym) != family)
      continue;
    if (family != Family::none)
      remove_sym_block(sym, 0);
    unlink_symbol(sym);
  }
}

// Oldest first, as they were declared.
int declare_of_family(const std::vector<Target> &targets, Family family) {
  for (auto target = targets.rbegin(); target != targets.rend(); ++target) {
    const SymbolState &state = *target->state;
    if (!target->declare || !state.exists || family_of_kind(state.stype) != family)
      continue;
    const int declared = family == Family::type          ? cint_tdec(state.declaration)
                         : family == Family::constructor ? cint_cdec(state.declaration)
                                                         : cint_fdec(state.declaration);
    if (declared == 0)
      return 0;
    symbol_of(*target)->stype = state.stype;
  }
  return 1;
}

int define_clauses(const std::vector<Target> &targets) {
  for (const Target &target : targets)
    for (const std::string &clause : target.state->clauses)
      if (cint_fdef(clause) == 0)
        return 0;
  return 1;
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

// Brings the values of each enumerated type into the order of the table, oldest first, as a file
// gives it.
void order_values(const std::unordered_set<const symbol *> &types) {
  for (const symbol *type : types) {
    std::unordered_set<const symbol *> values;
    for (const symbol *value = type->b.en->head; value != nullptr; value = value->b.cs->link)
      values.insert(value);
    type->b.en->head = type->b.en->tail = nullptr;
    for (symbol *sym = Symbol_table; sym != nullptr; sym = sym->next) {
      if (!values.contains(sym))
        continue;
      sym->b.cs->link = type->b.en->head;
      type->b.en->head = sym;
      if (type->b.en->tail == nullptr)
        type->b.en->tail = sym;
    }
  }
}

// The enumerated types that constants among the targets belong to now.
std::unordered_set<const symbol *> types_of_values(const std::vector<Target> &targets) {
  std::unordered_set<const symbol *> types;
  for (const Target &target : targets) {
    const symbol *sym = symbol_of(target);
    if (sym == nullptr || family_of(sym) != Family::constructor)
      continue;
    const top_node *type = sym->b.cs->types;
    if (type != nullptr && type->top_code == kTypeUser && (type->tnu.u.s->stype & kEnumBit) != 0)
      types.insert(type->tnu.u.s);
  }
  return types;
}

} // namespace

namespace {

// Reading clauses names them in the console; here nobody asked for them. Complaints come through.
class QuietConsole : public NullConsole {
public:
  QuietConsole() : behind_(gConsole) { gConsole = this; }
  ~QuietConsole() override { gConsole = behind_; }
  QuietConsole(const QuietConsole &) = delete;
  QuietConsole &operator=(const QuietConsole &) = delete;
  void warn(std::string_view text, int level) override { behind_->warn(text, level); }
  void note(std::string_view text) override { behind_->note(text); }
  bool interrupted() override { return false; } // half of it must not stand

private:
  Console *behind_;
};

} // namespace

int put_changes(const std::vector<SymbolChange> &changes, bool back) {
  if (changes.empty())
    return 1;
  const std::vector<Target> targets = targets_of(changes, back);
  if (const std::string used = outsider(targets); !used.empty()) {
    BeepMsgef(1, "Sorry! Others use %s by now: nothing was changed\n", used.c_str());
    return 0;
  }
  const QuietConsole quiet;
  for (const Target &target : targets)
    if (symbol *sym = symbol_of(target); sym != nullptr && family_of(sym) == Family::function)
      free_function_defs(sym->b.fc);
  // Kindless names stand for no more than their mention; they go last and come back by it.
  for (const Family family : {Family::function, Family::constructor, Family::type, Family::none})
    remove_of_family(targets, family);
  for (const Family family : {Family::type, Family::constructor, Family::function})
    if (declare_of_family(targets, family) == 0)
      return 0;
  if (define_clauses(targets) == 0)
    return 0;
  // Newest first, so that each finds the one before it in its place.
  for (const Target &target : targets)
    if (symbol *sym = symbol_of(target); sym != nullptr)
      move_behind(sym, target.state->newer);
  order_values(types_of_values(targets));
  gSymbolTableChanged = 1;
  return 1;
}

int put_code_back(const CodeState &before) {
  return put_changes(code_changes(before, take_code()), true);
}

} // namespace velora
