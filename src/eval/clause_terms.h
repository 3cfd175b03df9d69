// The clauses of a function as terms: reading their heads back out of the decision trees, listing
// them, adding clauses from terms and removing some. Used by the definition built-ins and by
// whoever asks which clauses a function has.
#pragma once

#include <functional>
#include <vector>

#include "core/records.h"
#include "core/trees.h"

namespace velora {

// The head `f p1 ... pn` of clause `k` (0, 1, ...) of the group, as a new heap tree: at every depth
// the clause's own patterns.
node *clause_head(const defs_link *group, int k);

// All clauses of `fc` in order of definition.
struct ClauseRef {
  const defs_link *group;
  const rhs_link *clause;
  int index; // its place in the group
};
std::vector<ClauseRef> clauses_of(const func_block *fc);

// The arguments of an application, first to last.
std::vector<node *> arguments_of(const node *term);

// The clause terms of `fc`: a list in the query space of one list [f p1 ... pn body] for each
// clause, the body as written, every node guarded with `quote`. Such an element, forced, is what
// assertl takes. The result is not yet reachable.
node *getb_fdefs(func_block *fc, std::uint8_t quote);

// Removes the clauses that `unwanted` picks by their heads and keeps the others in order; the
// number of clauses removed. `unwanted` may evaluate, but must not change the function's clauses.
int remove_clauses(func_block *fc, const std::function<bool(const node *head)> &unwanted);

// Adds the clause `fc p1 ... pn ::= body` from terms of any kind (they are copied as written); 1,
// or 0 when the function is not the user's or, after a message, when the head cannot be one.
int add_clause(func_block *fc, const node *const *patterns, int count, const node *body);

// The function's entry when clauses may be added to it and taken away: a function of the user's,
// not of the libraries. Else null.
symbol *own_function(const func_block *fc);

} // namespace velora
