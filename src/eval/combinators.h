// The run-time rules of the combinators and of lambda.
#pragma once

#include "core/records.h"

namespace velora {

// Reduces a combinator redex: stack[0] is the combinator, `spine_len` the number of arguments. 1
// when reduced, 0 when there are too few arguments or the head is no combinator.
int comb_redex(node **stack, int spine_len);
// The number of arguments that the combinator of this node type consumes; 0 for other nodes.
int comb_arguments(std::uint8_t type);

// `lambda v body x`, exactly three arguments with v a variable: puts x in place of v wherever v
// stands as an argument inside `body`, and answers the body. 1 when reduced.
int bi_lambda(node **stack, int spine_len);

} // namespace velora
