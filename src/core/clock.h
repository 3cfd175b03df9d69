// A clock of everything that an evaluation may depend on. It moves when a node is overwritten or
// written in place, a guard is cleared, a clause or symbol comes, goes or changes, when something
// is shown, and when a built-in has touched the outside. The reducer compares two readings to know
// whether anything can have changed in between; nobody else needs it. Moving it too often costs
// time, never an answer.
//
// Reductions move it by being counted: each of them overwrites a node.
#pragma once

#include <cstdint>

#include "platform/shown_count.h"

namespace velora {

// Reductions since the program started, for `:time` too.
extern std::uint64_t gReductions;
// Everything else that moves the clock.
extern std::uint64_t gOtherChanges;

inline void note_change() {
  ++gOtherChanges;
}
inline std::uint64_t clock_reading() {
  return gReductions + gOtherChanges + gShown;
}

} // namespace velora
