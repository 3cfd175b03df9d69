// The matcher's own view of a function's clauses. When every head takes exactly the function's
// arguments, the alternatives for each argument are matched straight from the spine. With many
// groups an index over the constants of the first argument tells which groups can match at all:
// skipping the others changes nothing that can be seen, since comparing with a constant forces
// nothing.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "core/records.h"

namespace velora {

// What one position of a group may hold, said in one record: a variable, a constant that compares
// by a word, or a constructor applied to variables. Patterns that look deeper, and constants of
// other kinds, have none.
enum class FlatKind : std::uint8_t { variable, constant, application };
inline constexpr int kFlatArguments = 4; // arguments of a constructor at the most
struct flat_pattern {
  std::uint32_t mask;  // the clauses that it belongs to
  std::uint32_t later; // clauses whose patterns further down may hold what this one holds
  FlatKind kind;
  std::uint8_t type;                 // constant: the kind of its node
  std::uint8_t count;                // application: number of arguments
  std::int16_t vars[kFlatArguments]; // the variable; those of the arguments, first to last
  std::uint64_t value;               // the constant, or the constructor (see flat_value)
};
// The word that tells a constructor, an integer or a character from others of its kind.
inline std::uint64_t flat_value(const node *n) {
  switch (n->type) {
  case kInteger:
    return static_cast<std::uint32_t>(n->val.i);
  case kCharacter:
    return static_cast<unsigned char>(n->val.c);
  default:
    return reinterpret_cast<std::uintptr_t>(n->val.cs);
  }
}

// A group whose heads all take the function's arguments, with the alternatives of each argument.
struct group_plan {
  const defs_link *group;
  std::uint32_t clauses; // the bits of all its clauses
  std::vector<const choice_node *> args;
  // The patterns of each argument in the order in which the tree has them, when all are flat. Each
  // list covers all clauses.
  std::vector<std::vector<flat_pattern>> patterns;
  std::array<rhs_link *, kGroupSize> by_number; // the clauses by their bits
};

struct match_plan {
  int calls = 0;         // since the clauses changed
  bool flat = false;     // `groups` holds for the whole function
  bool straight = false; // it is one group, all of whose patterns are flat, with few variables
  bool indexed = false;  // and so does the index
  std::vector<group_plan> groups;
  std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> by_constant; // ascending
  std::vector<std::uint32_t> general; // groups to be tried for every constant, ascending
};

// Functions with at most this many variables may be called straight.
inline constexpr int kStraightVariables = 12;

// The plan of a function, made once it has been called a few times since its clauses changed; null
// when there is none.
const match_plan *plan_of(func_block *fc);

// The first group from number `from` on that can match when the first argument is `arg`; the
// number of groups when there is none. The plan must be indexed.
std::size_t next_group(const match_plan &plan, const node *arg, std::size_t from);

} // namespace velora
