// Where the clauses of functions with many groups stand: which groups may hold a head, and which is
// the last. Without it defining the n-th clause of a function takes n steps. An index is made when
// it is first asked for and falls when the clauses change in any other way than by one more.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "core/records.h"

namespace velora {

struct ClauseIndex {
  std::unordered_map<std::uint32_t, std::vector<defs_link *>>
      groups; // by hashes of heads, in order
  defs_link *last = nullptr;
};

// The index of a function; null for one with few groups, or with heads whose hashes are not known.
const ClauseIndex *clause_index(const func_block *fc);
// Drops it: its clauses change.
void drop_clause_index(const func_block *fc);

// Keeps the index over a change of clauses that adds one at the end, or leaves the heads alone.
class GrowingIndex {
public:
  explicit GrowingIndex(const func_block *fc);
  // The group `group`, the last one now, has a further head with that hash.
  void grow(defs_link *group, std::uint32_t hash);
  // The heads are as they were.
  void keep();

private:
  std::unordered_map<const func_block *, ClauseIndex>::node_type kept_;
};

} // namespace velora
