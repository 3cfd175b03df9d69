// An index over the clause groups of a function with many clauses: when its first argument is a
// plain constant, only the groups that mention that constant there, or that take anything else
// there than constants, can match. Skipping the others changes nothing that can be seen, since
// comparing with a constant forces nothing and every head takes all the arguments.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "core/records.h"

namespace velora {

struct match_plan {
  int calls = 0;       // since the clauses changed
  bool usable = false; // the index is made and holds
  std::vector<const defs_link *> groups;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> by_constant; // ascending
  std::vector<std::uint32_t> general; // groups to be tried for every constant, ascending
};

// The index of a function with several groups, made once it has been called a few times since its
// clauses changed; null when there is none.
const match_plan *plan_of(func_block *fc);

// The first group from number `from` on that can match when the first argument is `arg`; the
// number of groups when there is none.
std::size_t next_group(const match_plan &plan, const node *arg, std::size_t from);

} // namespace velora
