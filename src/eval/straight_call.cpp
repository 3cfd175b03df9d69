// The straight call. A function with one group of clauses whose patterns are all flat is matched
// without its tree and without clearing bindings: every variable of the clause that wins is bound
// on the way to it. It is one pass: an argument that does not end as a plain value sends the call
// to the two passes of matcher.cpp.
#include <array>
#include <bit>
#include <vector>

#include "core/trees.h"
#include "eval/evaluate.h"
#include "eval/failed_runs.h"
#include "eval/match_plan.h"
#include "eval/match_state.h"

namespace velora {

namespace {

// What a term is as far as flat patterns look: its head and the cells of its arguments, last first.
struct Sight {
  const node *head;
  int count;   // arguments, as far as they were walked
  bool shared; // one of the cells is shared code
  std::array<node *, kFlatArguments> cells;

  explicit Sight(node *n) : count(0), shared(false) {
    for (; is_apply(n); n = n->val.a.a1) {
      shared |= (n->flags & kStaticNode) != 0;
      if (count < kFlatArguments)
        cells[static_cast<std::size_t>(count)] = n;
      ++count;
    }
    head = n;
  }

  // A constructor with its arguments, whose parts may be bound and forced.
  [[nodiscard]] bool is_value() const {
    return head->type == kConstructorNode && head->val.cs->arity == count && !shared;
  }
};

// Whether nobody could tell that a value is not evaluated once more: evaluating nests one deeper
// for a moment, which only matters at the limit and where nesting is watched.
inline bool may_skip_forcing(const node *value) {
  return value->quote == 0 && Evaluates + 1 < gNestingLimit && Evaluates < gDeepest;
}

inline void bind_flat(Match &m, int v, node **slot) {
  if (((*slot)->flags & kStaticNode) != 0) [[unlikely]]
    bind(m, v, slot);
  else
    m.bindings[static_cast<std::size_t>(v)] = *slot;
}

// Binds the arguments of an application of the constructor; false when it is another one's.
inline bool fits_flat(Match &m, const flat_pattern &pattern, const Sight &term) {
  if (term.count != pattern.count || term.head->type != kConstructorNode ||
      flat_value(term.head) != pattern.value)
    return false;
  for (std::size_t i = 0; i < pattern.count; ++i)
    bind_flat(m, pattern.vars[i], &term.cells[pattern.count - 1 - i]->val.a.a2);
  return true;
}

std::uint32_t match_flat(Match &m, const std::vector<flat_pattern> *lists, std::size_t left,
                         node **spine, std::uint32_t wanted);

inline std::uint32_t match_rest(Match &m, const std::vector<flat_pattern> *lists, std::size_t left,
                                node **spine, std::uint32_t common) {
  return left == 1 ? common : match_flat(m, lists + 1, left - 1, spine + 1, common);
}

// The patterns from `pattern` on, of which the first is none of a variable: the argument is forced
// first. Forcing may rewrite the spine's own node when the argument stands in it too.
std::uint32_t match_forced(Match &m, const flat_pattern *pattern,
                           const std::vector<flat_pattern> *lists, std::size_t left, node **spine,
                           std::uint32_t wanted) {
  node *n = (*spine)->val.a.a2;
  Sight term(n);
  if (needs_forcing(n) && !(term.is_value() && may_skip_forcing(n))) {
    if (!force_position(m, n))
      return 0;
    n = (*spine)->val.a.a2;
    term = Sight(n);
  }
  for (; wanted != 0; ++pattern) {
    const std::uint32_t common = pattern->mask & wanted;
    if (common == 0)
      continue;
    wanted &= ~common;
    if (pattern->kind == FlatKind::application) {
      if (!fits_flat(m, *pattern, term))
        continue;
    } else if (pattern->kind == FlatKind::variable) {
      bind_flat(m, pattern->vars[0], &(*spine)->val.a.a2);
    } else if (n->type != pattern->type || flat_value(n) != pattern->value) {
      continue;
    }
    if (wanted == 0) // nothing to come back for
      return match_rest(m, lists, left, spine, common);
    const std::uint32_t found = match_rest(m, lists, left, spine, common);
    if (found != 0 || m.unsettled != nullptr)
      return found;
  }
  return 0;
}

// Matches the arguments from `spine[0]` on, whose patterns begin at `lists`, for the clauses in
// `wanted`; answers those that match, the first way through in the order of the trees. The patterns
// of a position cover every clause, so while one is wanted its pattern is still to come.
std::uint32_t match_flat(Match &m, const std::vector<flat_pattern> *lists, std::size_t left,
                         node **spine, std::uint32_t wanted) {
  const flat_pattern *pattern = lists->data();
  while (wanted != 0) {
    const std::uint32_t common = pattern->mask & wanted;
    if (common == 0) {
      ++pattern;
      continue;
    }
    if (pattern->kind != FlatKind::variable)
      return match_forced(m, pattern, lists, left, spine, wanted);
    if (common == wanted) { // nothing to come back for
      bind_flat(m, pattern->vars[0], &(*spine)->val.a.a2);
      if (left == 1)
        return common;
      pattern = (++lists)->data();
      --left;
      ++spine;
      continue;
    }
    wanted &= ~common;
    bind_flat(m, pattern->vars[0], &(*spine)->val.a.a2);
    ++pattern;
    const std::uint32_t found = match_rest(m, lists, left, spine, common);
    if (found != 0 || m.unsettled != nullptr)
      return found;
  }
  return 0;
}

} // namespace

int call_straight(const func_block *fc, node **call_stack, int spine_len, node *&unsettled) {
  if (spine_len < fc->arity)
    return -1;
  const group_plan &group = fc->plan->groups[0];
  const MatchScope scope; // the plan and its clauses stay until the body is built
  std::array<node *, kStraightVariables> bindings;
  Match m{Pass::single, bindings};
  const std::uint32_t matched =
      match_flat(m, group.patterns.data(), group.patterns.size(), call_stack + 1, group.clauses);
  unsettled = m.unsettled;
  if (matched == 0 || unsettled != nullptr)
    return -1;
  const int number = std::bit_width(matched) - 1;
  rhs_link *const clause = group.by_number[static_cast<std::size_t>(number)];
  const clause_code &code = *code_of(clause, group.group->lhs_tree, 1U << number);
  node *const target = own_target(call_stack, fc->arity, spine_len);
  if (code.plain || !code.unbound.empty())
    apply_clause(*clause, code, bindings.data(), target);
  else
    build_body(code.body, bindings.data(), target);
  return fc->arity;
}

} // namespace velora
