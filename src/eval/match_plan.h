// The matcher's own view of a function's clauses. When every head takes exactly the function's
// arguments, the alternatives for each argument are matched straight from the spine. With many
// groups an index over the constants of the first argument tells which groups can match at all:
// skipping the others changes nothing that can be seen, since comparing with a constant forces
// nothing.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "core/records.h"

namespace velora {

// A group whose heads all take the function's arguments, with the alternatives of each argument.
struct group_plan {
  const defs_link *group;
  std::uint32_t clauses; // the bits of all its clauses
  std::vector<const choice_node *> args;
};

struct match_plan {
  int calls = 0;        // since the clauses changed
  bool flat = false;    // `groups` holds for the whole function
  bool indexed = false; // and so does the index
  std::vector<group_plan> groups;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> by_constant; // ascending
  std::vector<std::uint32_t> general; // groups to be tried for every constant, ascending
};

// The plan of a function, made once it has been called a few times since its clauses changed; null
// when there is none.
const match_plan *plan_of(func_block *fc);

// The first group from number `from` on that can match when the first argument is `arg`; the
// number of groups when there is none. The plan must be indexed.
std::size_t next_group(const match_plan &plan, const node *arg, std::size_t from);

} // namespace velora
