// Clause selection: matching an application against the decision trees of its function, forcing
// arguments only as far as the patterns need, and rewriting it with the chosen clause's body.
#pragma once

#include "core/records.h"

namespace velora {

// Tries to reduce the application of a user function whose spine is `call_stack` (element 0 the
// function, `spine_len` arguments). Ground clauses (without variables) are preferred to others.
// Answers the number of arguments that the rewritten application covers, or -1 when no clause
// applies.
int reduce_function(node **call_stack, int spine_len);

} // namespace velora
