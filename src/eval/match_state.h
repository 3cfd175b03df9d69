// What the two ways of matching share: walking the decision trees (matcher.cpp) and the straight
// call (straight_call.cpp). For these two alone.
#pragma once

#include <span>

#include "core/records.h"
#include "eval/clause_code.h"

namespace velora {

enum class Pass { single, without_variables, with_variables };

// The state of one match.
struct Match {
  Pass pass;
  std::span<node *> bindings;
  std::uint32_t live = ~0U;    // clauses not yet proved not to match
  node *forced_once = nullptr; // already forced for the pass that runs: not forced again
  node *unsettled = nullptr;   // single pass: the argument that did not end as a plain value
};

inline bool needs_forcing(const node *n) {
  return n->type == kApply || n->type == kBuiltin || n->type == kFunctionNode;
}

// Forces the node at one position; false when the single pass must be given up.
bool force_position(Match &m, node *n);
// Binds a variable to the node at `*slot`; what is shared code and may be written over becomes a
// node of its own there. False for a variable that the function does not have.
bool bind(const Match &m, int v, node **slot);
// Writes the body of a clause over `target`.
void apply_clause(const rhs_link &clause, const clause_code &code, node **bindings, node *target);
// The node of the spine that a result covering `place` arguments is written over; null when it is
// shared code that cannot be replaced.
node *own_target(node **call_stack, int place, int spine_len);

// The call of a function whose plan is straight, like reduce_function; `unsettled` is the argument
// at which it had to be given up, or null.
int call_straight(const func_block *fc, node **call_stack, int spine_len, node *&unsettled);

} // namespace velora
