// The decision tree of a clause group: merging a clause head into it, and finding the clause whose
// head is exactly a given one. Nothing here evaluates or binds.
#pragma once

#include <cstdint>

#include "core/records.h"

namespace velora {

// Merges the head `l_t` into the decision tree `*tree` under the clause bit `mask`. Raises
// `*max_var` to the highest variable of the head. In every list the alternatives that are no
// variables come first, in order of appearance, then the variables, the latest first.
void merge_lhs(const node *l_t, choice_node **tree, std::uint32_t mask, int *max_var);

// The clauses of `mask` whose pattern at the position of the list `m_t` is exactly `l_t`: the same
// constants, variable numbers and shape. `intersect` limits the result to the clauses that other
// positions of the head allow.
std::uint32_t exact_node_match(std::uint32_t mask, const choice_node *m_t, const node *l_t,
                               std::uint32_t intersect);

// A hash under which heads that are exactly the same agree.
std::uint32_t head_hash(const node *lhs);

// The clause of `fc` whose head is exactly `lhs`, or null.
rhs_link *find_lhs_match(const func_block *fc, const node *lhs);

} // namespace velora
