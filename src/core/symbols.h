// The symbol table: one list, newest entry first, with a hash beside it for finding names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/records.h"

namespace velora {

// The head of the table: the newest entry.
extern symbol *Symbol_table;
// Set to 1 whenever the table or a definition changes; cleared by a save.
extern int gSymbolTableChanged;
// Counts the changes of clauses since the program started, for what is derived from them.
extern std::uint64_t gClauseChanges;

// Enters `name` at the head of the table; `name_len` 0 takes the length of the NUL-terminated
// name. An existing entry is first removed under the rules for dependants; when that is refused,
// prints "Cannot replace symbol %s\n" and answers null. A name of more than 255 characters is
// refused with a message and null. `stype` and `b` are left zero for the caller.
symbol *insert_symbol(const char *name, std::size_t name_len);

// The entry of that name, or null. `name_len` 0 takes the length of the NUL-terminated name.
symbol *find_symbol(const char *name, std::size_t name_len);

// Takes `sym` out of the table and frees it and its name; its block must be gone already. While a
// query runs the memory is kept until the query ends, since the query space may refer to it.
void unlink_symbol(symbol *sym);

// Takes `sym` out of the table and leaves the record and its name to the caller.
void detach_symbol(symbol *sym);

// Hands memory that running queries may still refer to over to be freed when no query runs.
void retire_block(void *block);
// Frees what was retired; called when the query space holds nothing.
void free_retired();

// Up to `most` names of the table that are near `name` in spelling, nearest first.
std::vector<std::string> nearest_names(const std::string &name, std::size_t most);

} // namespace velora
