// The stack of spines. A step of the reducer unwinds the left spine of its expression onto it,
// growing towards lower addresses, so that stack[0] is the head, stack[i] the application to the
// i-th argument. Nested evaluations go on below; the entries of a step stay where they are.
#pragma once

#include "core/records.h"

namespace velora {

struct SpineStack {
  node **low;  // first entry of the chunk in use
  node **next; // entries from here up are in use
  int chunks;  // chunks made beyond the first
};
extern SpineStack gSpines;

// Makes room for more entries below `*at` for the frame whose entries are [*at, *top): moves them
// to a larger chunk and changes both. Takes the error exit with "CAlloc failed".
void grow_spines(node ***at, node ***top);
// Gives back the chunks made beyond the first `chunks`, and everything below `mark`.
void release_spines(node **mark, int chunks);
// Forgets every spine (when a command was abandoned).
void reset_spines();

} // namespace velora
