// The indexes of all functions that have one.
#include "front/clause_index.h"

#include <utility>

namespace velora {

namespace {

// Fewer groups are walked as fast.
constexpr int kFewGroups = 4;

std::unordered_map<const func_block *, ClauseIndex> &indexes() {
  static std::unordered_map<const func_block *, ClauseIndex> all;
  return all;
}

bool has_many_groups(const func_block *fc) {
  int count = 0;
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next)
    if (++count > kFewGroups)
      return true;
  return false;
}

// False when a group does not know the hashes of all its heads.
bool fill(ClauseIndex &index, const func_block *fc) {
  for (defs_link *group = fc->defs; group != nullptr; group = group->next) {
    std::uint32_t clauses = 0;
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next)
      ++clauses;
    if (group->hashed != clauses)
      return false;
    for (std::uint32_t k = 0; k < clauses; ++k) {
      std::vector<defs_link *> &with = index.groups[group->head_hash[k]];
      if (with.empty() || with.back() != group)
        with.push_back(group);
    }
    index.last = group;
  }
  return true;
}

} // namespace

const ClauseIndex *clause_index(const func_block *fc) {
  if (const auto found = indexes().find(fc); found != indexes().end())
    return &found->second;
  if (!has_many_groups(fc))
    return nullptr;
  ClauseIndex made;
  if (!fill(made, fc))
    return nullptr;
  return &indexes().emplace(fc, std::move(made)).first->second;
}

void drop_clause_index(const func_block *fc) {
  indexes().erase(fc);
}

GrowingIndex::GrowingIndex(const func_block *fc) : kept_(indexes().extract(fc)) {}

void GrowingIndex::grow(defs_link *group, std::uint32_t hash) {
  if (kept_.empty())
    return;
  ClauseIndex &index = kept_.mapped();
  std::vector<defs_link *> &with = index.groups[hash];
  if (with.empty() || with.back() != group)
    with.push_back(group);
  index.last = group;
  keep();
}

void GrowingIndex::keep() {
  if (!kept_.empty())
    indexes().insert(std::move(kept_));
}

} // namespace velora
