// The sharing forms of clause bodies: an expression under HOLD or HOLDN is taken out of the body
// and handed to it as an argument, so that it is evaluated once.
#pragma once

#include "core/trees.h"

namespace velora {

// True when the body contains a HOLD or HOLDN application.
bool any_hold(const node *body);
// Rewrites `body` until it holds no HOLDN and then no HOLD application.
void share_held_expressions(Tree &body);

// The occurrence that is shared next, the application itself; null when there is none. The argument
// spine is walked from the root, entering function parts that are applications; the first
// occurrence is taken, and a later one instead of it when its argument contains the one taken.
const node *get_held_exp(const node *body);
const node *get_HOLDN_exp(const node *body);
// True when `body` contains an occurrence of HOLD with an argument equal to that of `hold`; of
// HOLDN with the number of `hold`.
bool inside_exp(const node *body, const node *hold);
bool inside_HOLDN_exp(const node *body, const node *hold);

} // namespace velora
