// The matcher. Clauses are tried group by group; within a group the application is first matched
// with as many arguments as the function's arity and then, argument by argument, with fewer.
//
// Two passes decide: one in which variables match nothing, so that a clause of constants alone wins
// wherever it stands, and one with variables. When all clauses are in one group and every argument
// that is forced ends as a plain value, one pass with variables finds the same clause, since
// constants stand before variables at every position; so that is what is tried first.
#include "eval/matcher.h"

#include <array>
#include <bit>
#include <span>
#include <vector>

#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "core/trees.h"
#include "eval/clause_code.h"
#include "eval/evaluate.h"
#include "eval/failed_runs.h"
#include "eval/match_plan.h"
#include "eval/match_state.h"

namespace velora {

bool bind(const Match &m, int v, node **slot) {
  node *n = *slot;
  if (v < 0 || static_cast<std::size_t>(v) >= m.bindings.size())
    return false;
  if ((n->flags & kStaticNode) != 0 && (n->flags & kShareLeaf) == 0 && !is_apply(n)) {
    node *copy = take_node();
    overwrite_node(copy, n);
    *slot = n = copy;
  }
  m.bindings[static_cast<std::size_t>(v)] = n;
  return true;
}

namespace {

// equal_node for the kinds of pattern that nearly all clauses are made of.
bool fits(const node *pattern, const node *n) {
  if (pattern->type != n->type)
    return false;
  switch (pattern->type) {
  case kConstructorNode:
    return pattern->val.cs == n->val.cs;
  case kFunctionNode:
    return pattern->val.fc == n->val.fc;
  case kInteger:
    return pattern->val.i == n->val.i;
  default:
    return equal_node(pattern, n) != 0;
  }
}

std::uint32_t match_parts(Match &m, const choice_node *alternative, node *n, std::uint32_t common);

// Matches the node at `*slot` against one position's alternatives for the clauses in `wanted`;
// answers those that match. `evaluated` says that the node needs no forcing.
std::uint32_t node_match(Match &m, const choice_node *list, node **slot, std::uint32_t wanted,
                         bool evaluated) {
  // Set when the node is an application whose parts have been compared with the alternative of
  // applications, and do not match. All applications of a position are one alternative, and no
  // constant equals an application, so only a variable can still take the node.
  bool explored = false;
  for (; list != nullptr && wanted != 0; list = list->next) {
    const std::uint32_t common = list->mask & wanted;
    if (common == 0)
      continue;
    wanted &= ~common;
    // Variables stand behind all constants of their clauses: what comes here fitted none.
    if (list->n.type == kVariable) {
      if (m.pass == Pass::without_variables)
        return 0;
      return bind(m, list->n.val.v, slot) ? common : 0;
    }
    if (explored)
      continue;
    // The first constant that is wanted has the node forced, once for all that follow.
    node *const n = *slot;
    if (!evaluated && needs_forcing(n) && !force_position(m, n))
      return 0;
    evaluated = true;
    if (!fits(&list->n, n)) {
      m.live &= ~common;
      continue;
    }
    if (!is_apply(&list->n))
      return common;
    if (const std::uint32_t found = match_parts(m, list, n, common))
      return found;
    // An unsettled argument ends the whole pass: nothing is known of the clauses behind it.
    if (m.unsettled != nullptr)
      return 0;
    explored = true;
    m.live &= ~common;
  }
  return 0;
}

// The function part first; for the clauses that it leaves, the argument.
std::uint32_t match_parts(Match &m, const choice_node *alternative, node *n, std::uint32_t common) {
  check_stack();
  while (common != 0) {
    const std::uint32_t chosen =
        node_match(m, choice_list(alternative->n.val.a.a1), &n->val.a.a1, common, true);
    if (chosen == 0 || m.unsettled != nullptr)
      return 0;
    const std::uint32_t found =
        node_match(m, choice_list(alternative->n.val.a.a2), &n->val.a.a2, chosen, false);
    if (found != 0 || m.unsettled != nullptr)
      return found;
    common &= ~chosen;
  }
  return 0;
}

void clear(std::span<node *> bindings) {
  for (node *&b : bindings)
    b = nullptr;
}

rhs_link *clause_number(const defs_link *group, int number) {
  rhs_link *clause = group->defs;
  while (clause != nullptr && number-- > 0)
    clause = clause->next;
  return clause;
}

// Applies a clause the plain way: its combinator term is copied and applied to the bindings. A
// variable that the head does not bind stands for itself.
void apply_plain(const rhs_link &clause, node *const *bindings, node *target) {
  Root result(take_node());
  result->type = kInteger;
  result->quote = 0;
  LCopy_struct_rec(result, clause.rhs);
  for (int v = 0; v <= clause.max_var; ++v) {
    reserve_nodes(2);
    node *const binding = bindings[v] != nullptr ? bindings[v] : LMakeVariable(v);
    result = LMakeApplyNode(result, binding);
  }
  overwrite_node(target, result);
}

} // namespace

void apply_clause(const rhs_link &clause, const clause_code &code, node **bindings, node *target) {
  for (const int v : code.unbound)
    bindings[v] = nullptr;
  if (code.plain) {
    apply_plain(clause, bindings, target);
    return;
  }
  if (!code.unbound.empty()) {
    reserve_nodes(static_cast<std::int64_t>(code.unbound.size()) + code.body.need);
    for (const int v : code.unbound)
      bindings[v] = LMakeVariable(v);
  }
  build_body(code.body, bindings, target);
}

// The head of a spine as an application target: shared code is replaced by an own copy.
node *shared_target(node **call_stack, int place, int spine_len) {
  const node *target = call_stack[place];
  if (spine_len == 0)
    return nullptr;
  node *copy = take_node();
  overwrite_node(copy, target);
  call_stack[0] = call_stack[1]->val.a.a1 = copy;
  return copy;
}

namespace {

struct Found {
  rhs_link *clause = nullptr;
  const defs_link *group = nullptr;
  std::uint32_t mask = 0;
  int place = 0; // arguments covered
};

// Matches one group, from `most` arguments downwards.
bool match_group(Match &m, const defs_link *group, node **call_stack, int most, Found &found) {
  m.live = ~0U;
  for (int place = most; place >= 0; --place) {
    node *candidate = call_stack[place];
    const std::uint32_t matched = node_match(m, group->lhs_tree, &candidate, ~0U, true);
    if (m.unsettled != nullptr)
      return false;
    if (matched != 0) {
      const int number = std::bit_width(matched) - 1;
      found = {clause_number(group, number), group, 1U << number, place};
      return true;
    }
    if (m.live == 0)
      return false;
    clear(m.bindings);
  }
  return false;
}

// Matches the first `count` arguments of a planned group for the clauses in `wanted`: those before
// the last first, and for the clauses that these leave, the last.
std::uint32_t match_arguments(Match &m, const group_plan &plan, node **call_stack,
                              std::size_t count, std::uint32_t wanted) {
  if (count == 0)
    return wanted;
  while (wanted != 0) {
    const std::uint32_t chosen = match_arguments(m, plan, call_stack, count - 1, wanted);
    if (chosen == 0 || m.unsettled != nullptr)
      return 0;
    const std::uint32_t found =
        node_match(m, plan.args[count - 1], &call_stack[count]->val.a.a2, chosen, false);
    if (found != 0 || m.unsettled != nullptr)
      return found;
    wanted &= ~chosen;
  }
  return 0;
}

// A function whose heads all take all its arguments: no other number of them can match.
bool match_planned(Match &m, const match_plan &plan, node **call_stack, int arity, Found &found) {
  for (std::size_t i = 0; i < plan.groups.size(); ++i) {
    if (plan.indexed)
      i = next_group(plan, call_stack[1]->val.a.a2, i);
    if (i == plan.groups.size())
      return false;
    const group_plan &group = plan.groups[i];
    clear(m.bindings);
    const std::uint32_t matched =
        match_arguments(m, group, call_stack, group.args.size(), group.clauses);
    if (m.unsettled != nullptr)
      return false;
    if (matched != 0) {
      const int number = std::bit_width(matched) - 1;
      found = {clause_number(group.group, number), group.group, 1U << number, arity};
      return true;
    }
  }
  return false;
}

bool match_function(Match &m, func_block *fc, node **call_stack, int spine_len, Found &found) {
  if (const match_plan *plan = plan_of(fc))
    return spine_len >= fc->arity && match_planned(m, *plan, call_stack, fc->arity, found);
  const int most = spine_len < fc->arity ? spine_len : fc->arity;
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next) {
    clear(m.bindings);
    if (match_group(m, group, call_stack, most, found))
      return true;
    if (m.unsettled != nullptr)
      return false;
  }
  return false;
}

int rewrite(const Found &found, node **bindings, node **call_stack, int spine_len) {
  if (found.clause == nullptr)
    return -1;
  node *target = own_target(call_stack, found.place, spine_len);
  if (target == nullptr)
    return -1;
  const clause_code *code = code_of(found.clause, found.group->lhs_tree, found.mask);
  apply_clause(*found.clause, *code, bindings, target);
  return found.place;
}

// Room for the bindings of one match: on the stack for all but unusual functions.
class Bindings {
public:
  explicit Bindings(int max_var) : count_(static_cast<std::size_t>(max_var + 1)) {
    if (count_ > few_.size())
      many_.resize(count_);
  }
  std::span<node *> span() { return {count_ > few_.size() ? many_.data() : few_.data(), count_}; }

private:
  std::size_t count_;
  std::array<node *, 12> few_;
  std::vector<node *> many_;
};

// One pass over all groups. `forced_once` is the argument that has already been forced for the pass
// that first reaches it; it stays for the next pass when this one stops before it.
int lhs_match(Pass pass, node *&unsettled, node *&forced_once, node **call_stack, int spine_len) {
  func_block *fc = call_stack[0]->val.fc;
  const MatchScope scope; // until the clause found is applied
  Bindings bindings(fc->max_var);
  Match m{pass, bindings.span()};
  m.forced_once = forced_once;
  Found found;
  const bool matched = match_function(m, fc, call_stack, spine_len, found);
  forced_once = m.forced_once;
  if (matched)
    return rewrite(found, bindings.span().data(), call_stack, spine_len);
  unsettled = m.unsettled;
  return -1;
}

// True when all heads of a group take the same number of arguments. A shorter head of constants
// alone must win over a longer one with variables, which only two passes find.
bool is_even(const choice_node *list) {
  while (list != nullptr && list->next == nullptr && is_apply(&list->n))
    list = choice_list(list->n.val.a.a1);
  return list == nullptr || list->next == nullptr;
}

} // namespace

// The single pass gave up at `unsettled`, which it has forced: whichever of the two passes reaches
// it first finds it so, and only a second pass that reaches it too forces it again.
int match_twice(node **call_stack, int spine_len, node *unsettled) {
  node *none = nullptr;
  const int place = lhs_match(Pass::without_variables, none, unsettled, call_stack, spine_len);
  if (place >= 0)
    return place;
  return lhs_match(Pass::with_variables, none, unsettled, call_stack, spine_len);
}

namespace {

[[gnu::noinline]] int reduce_by_trees(node **call_stack, int spine_len) {
  const func_block *fc = call_stack[0]->val.fc;
  if (fc->defs == nullptr)
    return -1;
  node *unsettled = nullptr;
  if (gPlainBodies == 0 && fc->defs->next == nullptr && is_even(fc->defs->lhs_tree)) {
    node *none = nullptr;
    const int place = lhs_match(Pass::single, unsettled, none, call_stack, spine_len);
    if (unsettled == nullptr)
      return place;
  }
  return match_twice(call_stack, spine_len, unsettled);
}

} // namespace

int reduce_function(node **call_stack, int spine_len) {
  const func_block *fc = call_stack[0]->val.fc;
  if (fc->plan != nullptr && fc->plan->straight)
    return call_straight(fc, call_stack, spine_len);
  return reduce_by_trees(call_stack, spine_len);
}

} // namespace velora
