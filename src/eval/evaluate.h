// The reducer: lazy graph reduction to head normal form, results written in place.
#pragma once

#include <cstdint>

#include "core/needs.h"
#include "core/records.h"

namespace velora {

// Current nesting of evaluate and the bound at which a query is abandoned with
// "Too many nested calls within the Query\n".
extern int Evaluates;
extern int gNestingLimit;
inline constexpr char kTooNested[] = "Too many nested calls within the Query\n";
inline constexpr int kDefaultNesting = 120;
inline constexpr int kMostNesting = 10000;

// How often `error` has reported something; a command in which it did counts as failed.
extern int gUserErrors;

// Non-zero while functions and built-ins are traced on the console.
extern int stack_trace;

// Forces a term completely; the result of the last evaluation.
int full_evaluate(node *root);
// Forces the arguments along the function part of a spine.
void eval_args(node *root);

// Forgets what an abandoned query left behind: nesting and spines.
void reset_reducer();

// Appends a textual drawing of a term to the file "apptrees"; two forms, for developers.
void draw_apply_tree(const char *msg, const node *root);
void draw_apply_tree1(const char *msg, const node *root);

} // namespace velora
