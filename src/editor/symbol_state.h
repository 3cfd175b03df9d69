// A symbol as a value: its declaration, its clauses as text in order, its place in the table, its
// kind and flags. Compound steps keep such values and put them back whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace velora {

struct SymbolState {
  bool exists = false;
  std::uint8_t stype = 0;
  std::string declaration;          // "fac ::= int -> int", empty for none
  std::vector<std::string> clauses; // each "fac ?0 ::= ...", in order
  std::string newer;                // the name of the next newer symbol; empty for the newest
  friend bool operator==(const SymbolState &, const SymbolState &) = default;
};

SymbolState take_symbol_state(const std::string &name);

// All symbols of the user by name, newest first.
using CodeState = std::vector<std::pair<std::string, SymbolState>>;
CodeState take_code();

// A symbol that a command made, changed, moved in the table or removed.
struct SymbolChange {
  std::string name;
  SymbolState before;
  SymbolState after;
  std::size_t place_before = 0; // in the table, from the newest
  std::size_t place_after = 0;
};
std::vector<SymbolChange> code_changes(const CodeState &before, const CodeState &after);

// The name of a symbol that does not stand as its change left it; empty when all do. The symbols
// beside it may have changed meanwhile, so its place does not count.
std::string symbol_changed_since(const std::vector<SymbolChange> &changes, bool back);
// Gives all these symbols together the state before the changes (`back`) or after them. 1; 0 after
// a message, and nothing is changed, when symbols that are no part of the changes use one that
// would go.
int put_changes(const std::vector<SymbolChange> &changes, bool back);
// Puts the code back to what it was.
int put_code_back(const CodeState &before);

} // namespace velora
