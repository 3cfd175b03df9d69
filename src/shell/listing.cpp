// Writes declarations and clauses for people: a clause stays on one line where it fits, lists stand
// in brackets, and a section that would be empty is left out.
#include "shell/listing.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "core/print.h"
#include "core/symbols.h"
#include "db/term_text.h"
#include "front/infer.h"
#include "platform/response.h"

namespace velora {

namespace {

using Symbols = std::vector<const symbol *>;

constexpr std::size_t kWidth = 90;
constexpr std::size_t kMostOfClause = std::size_t{1} << 16;

// "int->list ?0 " as people write it: "int -> list ?0".
std::string spaced(const std::string &types) {
  std::string text;
  for (std::size_t i = 0; i < types.size(); ++i) {
    if (types.compare(i, 2, "->") == 0) {
      text += text.ends_with(' ') ? "-> " : " -> ";
      ++i;
    } else if (types[i] != ' ' || (!text.empty() && text.back() != ' ')) {
      text += types[i];
    }
  }
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

// A section with a line for every symbol that has one.
std::string section(const char *keyword, const Symbols &symbols,
                    const std::function<std::string(const symbol &)> &lines) {
  std::string text;
  for (const symbol *s : symbols)
    text += lines(*s);
  return text.empty() ? text : std::string(keyword) + "\n" + text + ";\n";
}

std::string statement(const std::string &name, const std::string &meaning) {
  return "  " + name + " ::= " + meaning + " ;\n";
}

std::string type_line(const symbol &s) {
  if ((s.stype & kTypeNameBit) == 0)
    return {};
  if ((s.stype & kEnumBit) == 0)
    return statement(s.name, "typeop #" + std::to_string(s.b.tp->arity));
  return statement(s.name, (s.stype & 2) != 0 ? "nonlex" : "enum");
}

bool is_constructor(const symbol &s) {
  return (s.stype & kFunctionBit) == 0 && (s.stype & kConstructorBit) != 0;
}

std::string constructor_line(const symbol &s) {
  return is_constructor(s) ? statement(s.name, spaced(tspecs_text(s.b.cs->types))) : "";
}

std::string function_line(const symbol &s) {
  if ((s.stype & kFunctionBit) == 0)
    return {};
  const bool arity = (s.stype & kKindMask) == kDbFunction;
  return statement(s.name + (arity ? " #" + std::to_string(s.b.fc->arity) : std::string()),
                   spaced(tspecs_text(s.b.fc->types)));
}

// One clause; a long one goes on behind its sign on a line of its own.
std::string clause_line(const choice_node *heads, std::uint32_t mask, const node *body) {
  std::string head;
  fprint_lhs_args(head, heads, mask, ' ');
  const std::string text = expression_text(body, kMostOfClause);
  const bool fits = head.size() + text.size() + 8 <= kWidth;
  return "  " + head + "::=" + (fits ? " " : "\n      ") + text + " ;\n";
}

std::string clause_lines(const symbol &s) {
  std::string text;
  if ((s.stype & kFunctionBit) == 0)
    return text;
  for (const defs_link *group = s.b.fc->defs; group != nullptr; group = group->next) {
    std::uint32_t mask = 1;
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next) {
      text += clause_line(group->lhs_tree, mask, clause->original);
      mask <<= 1;
    }
  }
  return text;
}

std::string sections(const Symbols &symbols) {
  return section("tdec", symbols, type_line) + section("cdec", symbols, constructor_line) +
         section("fdec", symbols, function_line) + section("fdef", symbols, clause_lines);
}

// Those for which `wanted` answers true, oldest first.
Symbols symbols_where(const std::function<bool(const symbol &)> &wanted) {
  Symbols found;
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next)
    if (wanted(*s))
      found.push_back(s);
  std::reverse(found.begin(), found.end());
  return found;
}

} // namespace

std::string listing_of(const symbol &s) {
  Symbols shown{&s};
  if ((s.stype & kTypeNameBit) != 0)
    for (const symbol *c : symbols_where([&s](const symbol &other) {
           return is_constructor(other) && GetSymbolOutput(other.b.cs->types) == &s;
         }))
      shown.push_back(c);
  const std::string text = sections(shown);
  const char *origin = (s.stype & kBuiltinBit) != 0  ? "built in"
                       : (s.stype & kSystemBit) != 0 ? "a system function"
                                                     : nullptr;
  return origin == nullptr ? text : "/* " + std::string(s.name) + " is " + origin + " */\n" + text;
}

std::string own_listing() {
  return sections(symbols_where([](const symbol &s) {
    return (s.stype & (kBuiltinBit | kSystemBit)) == 0 && s.stype != kKindless;
  }));
}

} // namespace velora
