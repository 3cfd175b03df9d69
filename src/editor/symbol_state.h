// A symbol as a value: its declaration, its clauses as text in order, its place in the table, its
// kind and flags. Compound steps keep such values and put them back whole.
#pragma once

#include <cstdint>
#include <string>
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
// Makes the symbol what `state` says, whatever stands now; 1, or 0 after a message.
int put_symbol_state(const std::string &name, const SymbolState &state);

} // namespace velora
