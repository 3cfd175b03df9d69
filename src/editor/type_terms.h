// Types of labels as trees, and whether two of them can be the same type. The type check of
// pictures and its checks of higher-order functions are made of this.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

// A type: its head word and arguments; a function type has the head "->" with what it takes and
// what it gives. An empty head is a type that nothing is known of.
struct TypeTerm {
  std::string head;
  std::vector<TypeTerm> args;
};

inline constexpr const char *kArrowHead = "->";

// The tree of a type's text. What is no type comes out as something with a strange head.
TypeTerm read_type(std::string_view text);
std::string type_text(const TypeTerm &type);
// True for `sym`, `?n` and the unknown type, which agree with every type.
bool agrees_with_all(const TypeTerm &type);
// True when some choice for the variables makes both the same; each variable by itself.
bool types_agree(const TypeTerm &a, const TypeTerm &b);

// What the variables of a signature stand for so far.
using TypeBindings = std::map<std::string, TypeTerm>;
// Holds `actual` against a declared type: calls `clash(bound, found)` for each variable that would
// have to be two types at once.
template <typename Clash>
void bind_types(const TypeTerm &declared, const TypeTerm &actual, TypeBindings &bound,
                const Clash &clash) {
  if (agrees_with_all(actual))
    return;
  if (agrees_with_all(declared)) {
    if (!declared.head.starts_with('?'))
      return;
    const auto [at, fresh] = bound.emplace(declared.head, actual);
    if (!fresh)
      clash(at->second, actual);
    return;
  }
  if (declared.head != actual.head || declared.args.size() != actual.args.size())
    return; // a plain difference is told elsewhere
  for (std::size_t i = 0; i < declared.args.size(); ++i)
    bind_types(declared.args[i], actual.args[i], bound, clash);
}

} // namespace velora
