// Making and asking the index over clause groups. Plans are dropped whenever clauses change; one
// that a match still reads is kept until that match has ended.
#include "eval/match_plan.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <memory>
#include <string_view>

#include "core/needs.h"
#include "core/symbols.h"
#include "core/trees.h"

namespace velora {

namespace {

// Fewer groups are walked as fast as they are looked up.
constexpr std::size_t kFewGroups = 3;
// Calls after a change before an index is worth its making.
constexpr int kCallsBeforePlan = 4;

std::vector<std::unique_ptr<match_plan>> forgotten;

bool is_constant(const node *n) {
  return n->type == kConstructorNode || (n->type >= kInteger && n->type <= kString);
}

// Equal constants have equal keys.
std::uint64_t key_of(const node *n) {
  std::uint64_t value = 0;
  switch (n->type) {
  case kConstructorNode:
    value = reinterpret_cast<std::uintptr_t>(n->val.cs);
    break;
  case kInteger:
    value = static_cast<std::uint32_t>(n->val.i);
    break;
  case kCharacter:
    value = static_cast<unsigned char>(n->val.c);
    break;
  case kReal: // 0.0 and -0.0 are equal
    value = n->val.r == 0 ? 0 : std::bit_cast<std::uint32_t>(n->val.r);
    break;
  default:
    value = std::hash<std::string_view>{}({n->val.s.str, static_cast<std::size_t>(n->val.s.len)});
  }
  return value * 0x9E3779B97F4A7C15ULL + n->type;
}

// The alternatives for the first of `arity` arguments; null unless every head of the group takes
// exactly so many.
const choice_node *first_argument(const defs_link *group, int arity) {
  const choice_node *at = group->lhs_tree;
  const choice_node *args = nullptr;
  for (int i = 0; i < arity; ++i) {
    if (at == nullptr || at->next != nullptr || !is_apply(&at->n))
      return nullptr;
    args = choice_list(at->n.val.a.a2);
    at = choice_list(at->n.val.a.a1);
  }
  return at != nullptr && at->next == nullptr && at->n.type == kFunctionNode ? args : nullptr;
}

bool add_group(match_plan &plan, const defs_link *group, int arity) {
  const auto number = static_cast<std::uint32_t>(plan.groups.size());
  const choice_node *alternative = first_argument(group, arity);
  if (alternative == nullptr)
    return false;
  plan.groups.push_back(group);
  for (const choice_node *a = alternative; a != nullptr; a = a->next)
    if (!is_constant(&a->n)) {
      plan.general.push_back(number);
      return true;
    }
  for (; alternative != nullptr; alternative = alternative->next)
    plan.by_constant[key_of(&alternative->n)].push_back(number);
  return true;
}

void make_plan(match_plan &plan, const func_block *fc) {
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next)
    if (fc->arity == 0 || !add_group(plan, group, fc->arity))
      return;
  plan.usable = plan.groups.size() > kFewGroups;
}

std::size_t first_from(const std::vector<std::uint32_t> &numbers, std::size_t from,
                       std::size_t none) {
  const auto at = std::lower_bound(numbers.begin(), numbers.end(), from);
  return at == numbers.end() ? none : *at;
}

} // namespace

const match_plan *plan_of(func_block *fc) {
  if (fc->plan == nullptr)
    fc->plan = new match_plan;
  match_plan &plan = *fc->plan;
  if (++plan.calls == kCallsBeforePlan)
    make_plan(plan, fc);
  return plan.usable ? &plan : nullptr;
}

std::size_t next_group(const match_plan &plan, const node *arg, std::size_t from) {
  if (!is_constant(arg) || arg->quote != 0)
    return from;
  const std::size_t none = plan.groups.size();
  const auto found = plan.by_constant.find(key_of(arg));
  const std::size_t general = first_from(plan.general, from, none);
  return found == plan.by_constant.end() ? general
                                         : std::min(general, first_from(found->second, from, none));
}

void forget_plan(func_block *fc) {
  ++gClauseChanges;
  if (fc->plan == nullptr)
    return;
  forgotten.emplace_back(fc->plan);
  fc->plan = nullptr;
  if (gMatchDepth == 0)
    forgotten.clear();
}

} // namespace velora
