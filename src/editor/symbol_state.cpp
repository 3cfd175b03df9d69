// Taking the values of symbols and comparing them. The texts are those of the database file, so
// what a file carries comes back as it was.
#include "editor/symbol_state.h"

#include <unordered_map>

#include "core/print.h"
#include "core/second_names.h"
#include "core/symbols.h"
#include "db/dependants.h"
#include "editor/clause_form.h"
#include "platform/response.h"

namespace velora {

namespace {

std::string declaration_of(const symbol &s) {
  std::string text = s.name;
  if (s.stype == kDbFunction)
    text += format_text(" #%d", s.b.fc->arity);
  text += " ::= ";
  switch (family_of(&s)) {
  case Family::function:
    return text + tspecs_text(s.b.fc->types);
  case Family::constructor:
    return text + tspecs_text(s.b.cs->types);
  case Family::type:
    break;
  case Family::none:
    return {};
  }
  if (s.stype == kEnumType)
    return text + "enum";
  if (s.stype == kNonlexType)
    return text + "nonlex";
  return text + format_text("typeop #%d", s.b.tp->arity);
}

SymbolState state_of_symbol(const symbol *sym) {
  SymbolState state;
  if (sym == nullptr)
    return state;
  state.exists = true;
  state.stype = sym->stype;
  state.newer = sym->prev != nullptr ? sym->prev->name : "";
  state.declaration = declaration_of(*sym);
  if (family_of(sym) == Family::function)
    state.clauses = clauses_of(sym->b.fc);
  return state;
}

bool same_but_for_place(SymbolState a, const SymbolState &b) {
  a.newer = b.newer;
  return a == b;
}

using Places = std::unordered_map<std::string, std::size_t>;

Places places_of(const CodeState &code) {
  Places places;
  for (std::size_t i = 0; i < code.size(); ++i)
    places.emplace(code[i].first, i);
  return places;
}

// The names in both states whose symbols were declared again as they were: they moved to the head
// of the table, past those that stayed. Both walks go from the oldest.
std::vector<std::string> moved_names(const CodeState &before, const CodeState &after,
                                     const Places &was, const Places &is) {
  std::vector<std::string> moved;
  auto at = after.rbegin();
  const auto skip_new = [&] {
    while (at != after.rend() && !was.contains(at->first))
      ++at;
  };
  for (auto old = before.rbegin(); old != before.rend(); ++old) {
    if (!is.contains(old->first))
      continue;
    skip_new();
    if (at != after.rend() && at->first == old->first)
      ++at;
    else
      moved.push_back(old->first);
  }
  return moved;
}

} // namespace

SymbolState take_symbol_state(const std::string &name) {
  return state_of_symbol(name.empty() ? nullptr : find_symbol(name.c_str(), name.size()));
}

CodeState take_code() {
  CodeState code;
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next)
    if ((sym->stype & (kBuiltinBit | kSystemBit)) == 0 && !is_second_name(sym))
      code.emplace_back(sym->name, state_of_symbol(sym));
  return code;
}

std::vector<SymbolChange> code_changes(const CodeState &before, const CodeState &after) {
  std::vector<SymbolChange> changes;
  const Places was = places_of(before);
  const Places is = places_of(after);
  const auto note = [&](const std::string &name) {
    SymbolChange change{name, {}, {}, 0, 0};
    if (const auto found = was.find(name); found != was.end()) {
      change.before = before[found->second].second;
      change.place_before = found->second;
    }
    if (const auto found = is.find(name); found != is.end()) {
      change.after = after[found->second].second;
      change.place_after = found->second;
    }
    changes.push_back(std::move(change));
  };
  const std::vector<std::string> moved = moved_names(before, after, was, is);
  for (const auto &[name, state] : before) {
    const auto found = is.find(name);
    if (found == is.end() || !same_but_for_place(state, after[found->second].second))
      note(name);
  }
  for (const auto &[name, state] : after)
    if (!was.contains(name))
      note(name);
  for (const std::string &name : moved)
    if (same_but_for_place(before[was.at(name)].second, after[is.at(name)].second))
      note(name);
  return changes;
}

std::string symbol_changed_since(const std::vector<SymbolChange> &changes, bool back) {
  for (const SymbolChange &change : changes)
    if (!same_but_for_place(take_symbol_state(change.name), back ? change.after : change.before))
      return change.name;
  return {};
}

} // namespace velora
