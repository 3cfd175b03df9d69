// The check of types that `:set check on` asks for: what is typed or loaded is held against the
// declarations, and a note tells what does not fit. Nothing is refused.
#pragma once

#include "core/records.h"

namespace velora {

// Non-zero while the check is on.
extern int gCheckTypes;

void check_query(const node *expression);
void check_clause(const node *lhs, const node *rhs);

// Tells what does not fit in an expression, with its place. Nothing when all of it does.
struct TypeFinding;
void note_finding(const TypeFinding &finding, const node *expression);

} // namespace velora
