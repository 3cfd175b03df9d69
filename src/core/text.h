// The registry of string texts. A string node points to a text made here. Heap trees (parsed
// expressions and clauses) hold counted references; the query space holds none, and the collector
// finds what it still uses. A text is freed by the first collection that finds neither.
#pragma once

#include <cstddef>
#include <string_view>

namespace velora {

// A new text of `len` characters plus a NUL, zero-filled, without references. It survives until
// the next collection, so store it in a node (or hold it) before the next node is taken.
// Takes the error exit with "Alloc_string failed" when there is no memory, and as a full space does
// for one that cannot fit below the ceiling.
char *new_text(std::size_t len);
char *new_text(std::string_view text);

// Adds or drops one reference from a heap tree.
void hold_text(char *str);
void drop_text(char *str);

// Notes that the query space uses `str` in the collection numbered `epoch`.
void mark_text(char *str, unsigned epoch);
// Frees every text without references that collection `epoch` did not reach.
void sweep_texts(unsigned epoch);

// Long texts fill the memory long before their nodes fill the query space. So they count against
// the ceiling of the space (gMaxNodes), and only against that: after `budget` more bytes of texts
// the space is collected at the next node, and what the texts then still use is looked at there.
void set_text_budget(std::size_t budget);
inline constexpr std::size_t kMostTextBudget = 64 << 20;
// Bytes of the texts that the last collection found in use by the query space alone.
std::size_t text_bytes_in_use();

// How many texts the registry holds (for tests and for `:space`).
std::size_t text_count();

} // namespace velora
