// Making plans and asking their index. Plans are dropped whenever clauses change; one
// that a match still reads is kept until that match has ended.
#include "eval/match_plan.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <memory>
#include <string_view>

#include "core/clock.h"
#include "core/needs.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "eval/clause_code.h"
#include "front/clause_index.h"

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

// The patterns of applications of a constructor below one alternative, in the order of the tree
// walk: the function part decides first, and each of its ways goes on with the argument.
class FlatApplications {
public:
  // False when one of them is not flat.
  bool collect(const choice_node *application, std::uint32_t mask, std::vector<flat_pattern> &out) {
    std::vector<flat_pattern> found;
    if (!function_part(application, mask, found))
      return false;
    out.insert(out.end(), found.begin(), found.end());
    return true;
  }

private:
  bool function_part(const choice_node *application, std::uint32_t mask,
                     std::vector<flat_pattern> &out) {
    const choice_node *f = choice_list(application->n.val.a.a1);
    for (; f != nullptr; f = f->next) {
      const std::uint32_t common = f->mask & mask;
      if (common == 0)
        continue;
      std::vector<flat_pattern> ways;
      if (is_apply(&f->n)) {
        if (!function_part(f, common, ways))
          return false;
      } else if (f->n.type == kConstructorNode) {
        ways.push_back(
            {common, 0, FlatKind::application, kConstructorNode, 0, {}, flat_value(&f->n)});
      } else {
        return false;
      }
      for (const flat_pattern &way : ways)
        if (!add_argument(way, choice_list(application->n.val.a.a2), out))
          return false;
    }
    return true;
  }

  static bool add_argument(flat_pattern way, const choice_node *list,
                           std::vector<flat_pattern> &out) {
    const std::uint32_t mask = way.mask;
    if (way.count == kFlatArguments)
      return false;
    const int place = way.count++;
    for (; list != nullptr; list = list->next) {
      way.mask = list->mask & mask;
      if (way.mask == 0)
        continue;
      if (list->n.type != kVariable)
        return false;
      way.vars[place] = static_cast<std::int16_t>(list->n.val.v);
      out.push_back(way);
    }
    return true;
  }
};

// The patterns of one position; false when one of them is not flat.
bool flatten(const choice_node *list, std::uint32_t clauses, std::vector<flat_pattern> &out) {
  for (; list != nullptr; list = list->next) {
    const std::uint32_t mask = list->mask & clauses;
    if (mask == 0)
      continue;
    // The order of the list is kept, so variables stay last and the first pattern of a clause says
    // whether its argument is forced.
    flat_pattern pattern{mask, 0, FlatKind::constant, list->n.type, 0, {}, 0};
    switch (list->n.type) {
    case kApply:
      if (!FlatApplications().collect(list, mask, out))
        return false;
      continue;
    case kVariable:
      pattern.kind = FlatKind::variable;
      pattern.vars[0] = static_cast<std::int16_t>(list->n.val.v);
      break;
    case kConstructorNode:
    case kInteger:
    case kCharacter:
      pattern.value = flat_value(&list->n);
      break;
    default:
      return false;
    }
    out.push_back(pattern);
  }
  return true;
}

// Adds the variables of one pattern to those of its clauses; false when one of these had it before.
bool add_variables(const flat_pattern &pattern, std::array<std::uint32_t, kGroupSize> &seen) {
  const int count = pattern.kind == FlatKind::variable      ? 1
                    : pattern.kind == FlatKind::application ? pattern.count
                                                            : 0;
  for (int i = 0; i < count; ++i)
    for (std::size_t k = 0; k < seen.size(); ++k) {
      const std::uint32_t bit = 1U << pattern.vars[i];
      if ((pattern.mask >> k & 1U) == 0)
        continue;
      if ((seen[k] & bit) != 0)
        return false;
      seen[k] |= bit;
    }
  return true;
}

// Whether some clause has a variable twice. On the way to it another clause may bind that variable
// before it fails; walking back, the straight call does not bind again what stands further left.
bool repeats_variable(const group_plan &plan) {
  std::array<std::uint32_t, kGroupSize> seen{};
  for (const std::vector<flat_pattern> &patterns : plan.patterns)
    for (const flat_pattern &pattern : patterns)
      if (!add_variables(pattern, seen))
        return true;
  return false;
}

// Whether a term that one pattern holds may be held by the other.
bool overlap(const flat_pattern &one, const flat_pattern &other) {
  if (one.kind == FlatKind::variable || other.kind == FlatKind::variable)
    return true;
  return one.kind == other.kind && one.type == other.type && one.count == other.count &&
         one.value == other.value;
}

void note_later(std::vector<flat_pattern> &patterns) {
  for (std::size_t i = 0; i < patterns.size(); ++i)
    for (std::size_t k = i + 1; k < patterns.size(); ++k)
      if (overlap(patterns[i], patterns[k]))
        patterns[i].later |= patterns[k].mask;
}

// Whether the group has flat patterns at all positions; then notes them and its clauses.
bool flatten_group(group_plan &plan) {
  std::size_t number = 0;
  for (rhs_link *clause = plan.group->defs; clause != nullptr; clause = clause->next)
    plan.by_number[number++] = clause;
  for (const choice_node *arg : plan.args)
    if (!flatten(arg, plan.clauses, plan.patterns.emplace_back()))
      return false;
  for (std::vector<flat_pattern> &patterns : plan.patterns)
    note_later(patterns);
  return !repeats_variable(plan);
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
  plan.straight = plan.groups.size() == 1 && fc->arity > 0 && fc->max_var < kStraightVariables &&
                  flatten_group(plan.groups[0]);
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
  if (++plan.calls == kCallsBeforePlan && gPlainBodies == 0)
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
  note_change();
  drop_clause_index(fc);
  if (fc->plan == nullptr)
    return;
  forgotten.emplace_back(fc->plan);
  fc->plan = nullptr;
  if (gMatchDepth == 0)
    forgotten.clear();
}

} // namespace velora
