// The notes about a clause that can be read and yet is hardly what was meant.
#pragma once

#include "core/records.h"

namespace velora {

// Looks at a clause of `fc` before it is entered: its arguments beside the declaration's, and the
// variables of its body that nothing binds.
void note_clause(const func_block *fc, const node *lhs, const node *rhs);

} // namespace velora
