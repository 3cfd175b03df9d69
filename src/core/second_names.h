// Second names: entries of the symbol table that share the definition of another entry, made by
// the built-in `alias`. Whoever frees a definition asks give_up_share first, so that it is freed
// with its last name.
#pragma once

#include <string_view>

#include "core/records.h"

namespace velora {

// Makes `name` a second name of what `meant` names: an entry of the same kind with the same block.
// What had that name is replaced under the rules for dependants. 1, or 0 when the name belongs to
// the libraries or may not be replaced.
int make_alias(std::string_view name, const symbol *meant);

// True for an entry that make_alias made.
bool is_second_name(const symbol *sym);

// An entry other than `sym` with the same definition, or null.
symbol *other_name(const symbol *sym);

// When another entry shares the definition of `sym`, leaves it to that entry and takes it away
// from `sym`, which then has no kind: 1. When `sym` alone has it: 0. Forgets that `sym` is a second
// name in both cases.
int give_up_share(symbol *sym);

} // namespace velora
