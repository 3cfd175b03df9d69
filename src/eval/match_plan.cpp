// Making plans and asking their index. Plans are dropped whenever clauses change; one
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
// Calls after a change before a plan is worth its making.
constexpr int kCallsBeforePlan = 3;

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

// The plan of one group; false unless every head takes exactly `arity` arguments.
bool plan_group(group_plan &plan, const defs_link *group, int arity) {
  const choice_node *at = group->lhs_tree;
  plan.group = group;
  plan.args.resize(static_cast<std::size_t>(arity));
  for (auto arg = plan.args.rbegin(); arg != plan.args.rend(); ++arg) {
    if (at == nullptr || at->next != nullptr || !is_apply(&at->n))
      return false;
    *arg = choice_list(at->n.val.a.a2);
    at = choice_list(at->n.val.a.a1);
  }
  if (at == nullptr || at->next != nullptr || at->n.type != kFunctionNode)
    return false;
  plan.clauses = at->mask;
  return true;
}

void index_group(match_plan &plan, std::uint32_t number) {
  const choice_node *const first = plan.groups[number].args[0];
  for (const choice_node *a = first; a != nullptr; a = a->next)
    if (!is_constant(&a->n)) {
      plan.general.push_back(number);
      return;
    }
  for (const choice_node *a = first; a != nullptr; a = a->next)
    plan.by_constant[key_of(&a->n)].push_back(number);
}

void make_plan(match_plan &plan, const func_block *fc) {
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next)
    if (!plan_group(plan.groups.emplace_back(), group, fc->arity))
      return;
  plan.flat = true;
  plan.indexed = fc->arity > 0 && plan.groups.size() > kFewGroups;
  for (std::uint32_t i = 0; plan.indexed && i < plan.groups.size(); ++i)
    index_group(plan, i);
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
  return plan.flat ? &plan : nullptr;
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
