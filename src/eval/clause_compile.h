// What the compiler of clause bodies and their owner share; for these two alone.
#pragma once

#include <memory>

#include "eval/clause_code.h"

namespace velora {

// Compiles the body of a clause; the result may say that the body must be taken the plain way.
std::unique_ptr<clause_code> compile_clause(const rhs_link &clause, const choice_node *lhs_tree,
                                            std::uint32_t mask);

// What bodies are compiled by may change: the least number of arguments that a head of a function
// takes, and whether lists may grow where they stand, which is so once `tag` has been named. These
// answer, and see to it that the compiled forms go when the answer is no longer true.
int least_arguments_for_good(const func_block *fc);
bool lists_may_grow();

// How many nodes the building of a level takes itself (body_code::taken).
std::int64_t nodes_of_level(const body_code &body);

// A new template record owned by `owner`, and access to it.
std::uint32_t new_template(clause_code *owner);
template_code &template_record(std::uint32_t id);

// The one static leaf I.
node *static_combinator_i();

} // namespace velora
