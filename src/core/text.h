// The registry of string texts. A string node points to a text made here. Heap trees (parsed
// expressions and clauses) hold counted references; the query space holds none, and the collector
// finds what it still uses. A text is freed by the first collection that finds neither.
#pragma once

#include <cstddef>
#include <string_view>

namespace velora {

// A new text of `len` characters plus a NUL, zero-filled, without references. It survives until
// the next collection, so store it in a node (or hold it) before the next node is taken.
// Takes the error exit with "Alloc_string failed" when there is no memory.
char *new_text(std::size_t len);
char *new_text(std::string_view text);

// Adds or drops one reference from a heap tree.
void hold_text(char *str);
void drop_text(char *str);

// Notes that the query space uses `str` in the collection numbered `epoch`.
void mark_text(char *str, unsigned epoch);
// Frees every text without references that collection `epoch` did not reach.
void sweep_texts(unsigned epoch);

// Bytes of texts made since the last collection, and how many of them call for the next one: long
// texts fill the memory long before their nodes fill the query space.
extern std::size_t gTextBytes;
inline constexpr std::size_t kTextBytesBetweenCollections = 64 << 20;

// How many texts the registry holds (for tests and for `:space`).
std::size_t text_count();

} // namespace velora
