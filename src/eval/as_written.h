// Terms as their writer wrote them. The body of a clause runs as combinators, so an unevaluated
// argument that stands in a body reaches a built-in as combinators applied to what the clause's
// variables stand for. The built-ins that look at a term itself (quote, matchq, the assertions) see
// it through this file.
#pragma once

#include <cstdint>

#include "core/records.h"

namespace velora {

// A copy of `term` (which must be reachable) that shares no node with it, in which combinators
// that have all their arguments are written out; nothing else is reduced. Every node of the copy
// gets the guard `quote`. The result is not yet reachable.
node *copy_as_written(const node *term, std::uint8_t quote);

// Writes out the combinators at the head of `term` in place, so that its function and arguments
// stand as they were written; no argument is reduced.
void write_out_head(node *term);

} // namespace velora
