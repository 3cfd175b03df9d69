// Removal of symbols: who depends on a symbol, the question before it is replaced, and the freeing
// of its block. The symbol table calls remove_symbol when a name is declared again; the built-in
// denyall and the picture commands call it too.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "core/needs.h"
#include "core/records.h"

namespace velora {

// Names in order of first appearance, each once.
struct NameList {
  std::vector<std::string> names;
  std::unordered_set<std::string> seen;
};

// The dependants found by the last reporting search; empty between calls of remove_symbol.
extern NameList gDependents;
// Appends `name` unless it is there already.
void NewNameToList(const char *name, NameList &list);
// Empties a list.
void remove_list(NameList &list);

// Removes the block of `sym`. `report` 1: collects the dependants in gDependents and frees the
// block only when there are none; `report` 0: takes the clauses of all dependants away and frees
// the block regardless. 1 when the block was freed, which leaves the symbol without a kind.
int remove_sym_block(symbol *sym, int report);

// 1 when a clause of another function mentions the function or constructor `sym`. `report` 1 lists
// the functions in gDependents, 0 frees their clauses.
int fun_or_cons_has_dependants(symbol *sym, int report);
// 1 when the signature of a function or constructor mentions the type `sym`; `report` as above.
int type_has_dependants(symbol *sym, int report);

// The tests on one decision tree, one body, one type.
int lhs_tree_depends_on(const symbol *sym, const choice_node *lhs_tree);
int rhs_tree_depends_on(const symbol *sym, const node *rhs_tree);
int type_appears_in_type_tree(const symbol *tp, const top_node *tp_tree);

// Removes every symbol of the user; built-ins and system functions stay.
void clear_user_symbols();

// Free the block of a function (its clauses, its signature) or of a constructor; `unlink` takes the
// constructor out of the values of its enumerated type first. The symbol itself stays.
void free_function(symbol *sym);
void free_cons(symbol *sym, int unlink);

} // namespace velora
