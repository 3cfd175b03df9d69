// What the compiler of clause bodies and their owner share; for these two alone.
#pragma once

#include <memory>

#include "eval/clause_code.h"

namespace velora {

// Compiles the body of a clause; the result may say that the body must be taken the plain way.
std::unique_ptr<clause_code> compile_clause(const rhs_link &clause, const choice_node *lhs_tree,
                                            std::uint32_t mask);

// A new template record owned by `owner`, and access to it.
std::uint32_t new_template(clause_code *owner);
template_code &template_record(std::uint32_t id);

// The one static leaf I.
node *static_combinator_i();

} // namespace velora
