// Telling what is known of names.
#include "shell/name_help.h"

#include <algorithm>

#include "core/print.h"
#include "core/symbols.h"
#include "editor/hand/tools.h"
#include "eval/help.h"
#include "shell/picture_windows.h"

namespace velora {

namespace {

// A signature as it is printed, without the blank that may end it.
std::string signature(const top_node *types) {
  std::string text = tspecs_text(types);
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

} // namespace

std::string declaration_text(const symbol &s) {
  std::string text(s.name, s.name_len);
  if ((s.stype & kFunctionBit) != 0)
    return text.append(" ::= ").append(signature(s.b.fc->types));
  if ((s.stype & kConstructorBit) != 0)
    return text.append(" ::= ").append(signature(s.b.cs->types));
  if ((s.stype & kKindMask) == (kTypeOp & kKindMask))
    return text.append(" ::= typeop #").append(std::to_string(s.b.tp->arity));
  if ((s.stype & kTypeNameBit) == 0)
    return text;
  text += (s.stype & 2) != 0 ? " ::= nonlex" : " ::= enum";
  const symbol *value = s.b.en == nullptr ? nullptr : s.b.en->head;
  for (text += value == nullptr ? "" : "   values:"; value != nullptr; value = value->b.cs->link)
    text.append(" ").append(value->name, value->name_len);
  return text;
}

std::vector<DeclaredName> names_beginning(std::string_view start, std::size_t most) {
  std::vector<const symbol *> found;
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next)
    if (std::string_view(s->name, s->name_len).starts_with(start))
      found.push_back(s);
  const auto name_of = [](const symbol *s) { return std::string_view(s->name, s->name_len); };
  std::sort(found.begin(), found.end(),
            [&](const symbol *a, const symbol *b) { return name_of(a) < name_of(b); });
  found.resize(std::min(found.size(), most));
  std::vector<DeclaredName> names;
  names.reserve(found.size());
  for (const symbol *s : found)
    names.push_back({std::string(name_of(s)), declaration_text(*s)});
  return names;
}

std::string help_on_name(const std::string &name) {
  if (const HelpRow *row = find_help(name))
    return help_text(*row);
  const symbol *s =
      name.empty() || name.size() > 255 ? nullptr : find_symbol(name.data(), name.size());
  return s == nullptr ? std::string() : declaration_text(*s) + "\n";
}

std::string selected_name(WindowId win) {
  const WinInfo *wi = picture_of(win);
  const std::vector<int> slots = wi == nullptr ? std::vector<int>() : selected_slots(wi, true);
  return slots.empty() ? std::string() : wi->seg_ments[slots.front()]->label;
}

} // namespace velora
