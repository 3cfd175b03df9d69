// What the two ways of matching share: walking the decision trees (matcher.cpp) and the straight
// call (straight_call.cpp). For these two alone.
#pragma once

#include <span>

#include "core/needs.h"
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

// Whether forcing `n` again would change nothing, now that forcing it has answered `result`. A
// consumed guard answers 1 too, before any term, so the head decides: of applications only those
// of a constructor are values.
inline bool is_settled(const node *n, int result) {
  if (n->quote != 0)
    return false;
  if (!is_apply(n))
    return n->type != kBuiltin && n->type != kFunctionNode;
  const node *head = n;
  while (is_apply(head))
    head = head->val.a.a1;
  return result != 0 && head->type == kConstructorNode;
}

// Forces the node at one position; false when the single pass must be given up.
inline bool force_position(Match &m, node *n) {
  if (n == m.forced_once) {
    m.forced_once = nullptr;
    return true;
  }
  const bool guarded = n->quote != 0;
  const int result = evaluate(n);
  if (m.pass == Pass::single && (guarded || !is_settled(n, result))) {
    m.unsettled = n;
    return false;
  }
  return true;
}

// Binds a variable to the node at `*slot`; what is shared code and may be written over becomes a
// node of its own there. False for a variable that the function does not have.
bool bind(const Match &m, int v, node **slot);
// Writes the body of a clause over `target`.
void apply_clause(const rhs_link &clause, const clause_code &code, node **bindings, node *target);
// The node of the spine that a result covering `place` arguments is written over; null when it is
// shared code that cannot be replaced.
node *shared_target(node **call_stack, int place, int spine_len);
inline node *own_target(node **call_stack, int place, int spine_len) {
  node *const target = call_stack[place];
  return (target->flags & kStaticNode) == 0 ? target : shared_target(call_stack, place, spine_len);
}

// The call of a function whose plan is straight, like reduce_function.
int call_straight(const func_block *fc, node **call_stack, int spine_len);
// The two passes, after a single one that gave up at `unsettled`, which it has forced, or without
// one (null).
int match_twice(node **call_stack, int spine_len, node *unsettled);

} // namespace velora
