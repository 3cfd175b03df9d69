// Terms as data: the list form of a term and the way back, for exptolist, exptolistq, listtoexp
// and whoever else takes terms apart.
//
// The list form of an application f a1 ... an (f not an application) is the list of the list forms
// of its parts, [f a1' ... an'], where a part that is not an application stands for itself. Data
// lists are terms like any other, so [#1 #2] as a part becomes [: #1 [: #2 nil]]. A whole term that
// is no application is the list of just that. So f (g #1) "a" has the form [f [g #1] "a"], and #5
// has [#5]. user_list_to_expr takes every such list back to the term it came from; it also reads
// lists that are not of this form: a list in first place is the function that the rest is applied
// to, a list of one element stands for that element, nil for itself, and a part that is an
// application but no list stays as it is.
#pragma once

#include "core/records.h"

namespace velora {

// The list form of `term`, which must be reachable. Function names without arguments are guarded
// once, so that they can be looked at before they are reduced. The result is not yet reachable.
node *user_expr_to_list(const node *term);

// The term that a proper list stands for; `list` must be reachable and completely forced. The
// result is not yet reachable.
node *user_list_to_expr(const node *list);

} // namespace velora
