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

// The part of the stack that one evaluation uses: [at, top) is the spine of its step, the head
// first. It lies below everything that enclosing evaluations use.
struct Frame {
  node **at;
  node **top;
};

// Makes room for more entries below a frame by moving it to a larger chunk; answers where it is
// now. (Handed over by value, so that the reducer's own frame stays in registers.) Takes the error
// exit with "CAlloc failed".
Frame grow_spines(Frame frame);
// Gives back the chunks made beyond the first `chunks`, and everything below `mark`.
void release_spines(node **mark, int chunks);
// Forgets every spine (when a command was abandoned).
void reset_spines();

} // namespace velora
