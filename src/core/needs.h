// What the core needs from the levels above it, each with the one who defines it.
#pragma once

#include <cstdint>

#include "core/records.h"

namespace velora {

// Abandons the command that runs; never returns. A message beginning "Insufficient Query Space"
// doubles the query space and runs the query again, one beginning "throw" prints the query root
// as the answer, any other is shown. Defined by shell/return_point.
[[noreturn]] void error_exit(const char *msg);

// Reduces `root` in place to head normal form; 1 when it is one, 0 when no rule applies.
// Defined by eval/evaluate.
int evaluate(node *root);

// What the printing of a query's answer tells of terms that no rule reduced, for the notes beside
// the answer: its beginning, the whole answer when it stays as it is, each call with its last
// argument apart (which `last_stays` in turn or not), its end. Nothing is evaluated or kept.
// Defined by shell/answer_notes.
void begin_answer();
void whole_answer_stays(const node *root);
void call_stays(const node *function_part, const node *last, bool last_stays);
void end_answer();

// Removes a symbol from the table under the rules for dependants; 1 when removed, 0 when refused.
// Defined by db/removal.
int remove_symbol(symbol *sym);

// Tells that the clauses of `fc` change: what the reducer derived from them is dropped, and
// gClauseChanges is raised.
// Defined by eval/matcher.
void forget_plan(func_block *fc);

// Gives up the compiled form of a clause; it lives on while the query space refers to it.
// Defined by eval/clause_code.
void retire_code(clause_code *code);

// Tells that `fc` gets a clause whose head takes that many arguments, and that an expression names
// the built-in `number`: compiled forms that were made without reckoning with it are given up.
// Defined by eval/clause_code.
void note_head(const func_block *fc, int arguments);
void note_built_in(int number);

// Notes that the query space uses the static node `n` in the collection numbered `epoch`; answers
// how many nodes the term would take in the query space. Defined by eval/clause_code.
std::int64_t mark_code(const node *n, unsigned epoch);
// Frees retired clause code that collection `epoch` did not reach. Defined by eval/clause_code.
void sweep_code(unsigned epoch);

} // namespace velora
