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

  Sight() : head(nullptr), count(0), shared(false) {}
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

// Shared code that may be written over is bound as a node of its own.
inline void bind_flat(Match &m, int v, node **slot) {
  if (((*slot)->flags & (kStaticNode | kShareLeaf)) == kStaticNode) [[unlikely]]
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

// Whether a pattern other than a variable holds the term `n`, which has been forced and looks like
// `term`; then its variables are bound.
inline bool holds(Match &m, const flat_pattern &pattern, const node *n, const Sight &term) {
  if (pattern.kind == FlatKind::application)
    return fits_flat(m, pattern, term);
  return n->type == pattern.type && flat_value(n) == pattern.value;
}

// The argument of one position before it is compared; null when the straight call must be given up.
// Forcing may rewrite the spine's own node when the argument stands in it too.
inline node *forced_argument(Match &m, node **spine, Sight &term) {
  node *const n = (*spine)->val.a.a2;
  term = Sight(n);
  if (!needs_forcing(n) || (term.is_value() && may_skip_forcing(n)))
    return n;
  if (!force_position(m, n))
    return nullptr;
  node *const now = (*spine)->val.a.a2;
  term = Sight(now);
  return now;
}

// Matches the arguments from `spine[0]` on, whose patterns begin at `lists`, for the clauses in
// `wanted`; answers those that match, the first way through in the order of the trees.
std::uint32_t match_flat(Match &m, const std::vector<flat_pattern> *lists, std::size_t left,
                         node **spine, std::uint32_t wanted) {
  for (;; ++lists, ++spine, --left) {
    // The patterns of a position cover every clause, so while one is wanted its pattern is still to
    // come; those of variables stand last, so whether to force is settled by the first.
    const flat_pattern *pattern = lists->data();
    while ((pattern->mask & wanted) == 0)
      ++pattern;
    Sight term;
    const node *n = nullptr;
    if (pattern->kind != FlatKind::variable) {
      n = forced_argument(m, spine, term);
      if (n == nullptr)
        return 0;
    }
    for (;; ++pattern) {
      const std::uint32_t common = pattern->mask & wanted;
      if (common == 0)
        continue;
      wanted &= ~common;
      if (pattern->kind == FlatKind::variable) {
        bind_flat(m, pattern->vars[0], &(*spine)->val.a.a2);
      } else if (!holds(m, *pattern, n, term)) {
        if (wanted == 0)
          return 0;
        continue;
      }
      if (left == 1)
        return common;
      wanted &= pattern->later;
      if (wanted == 0) { // nothing to come back for
        wanted = common;
        break;
      }
      const std::uint32_t found = match_flat(m, lists + 1, left - 1, spine + 1, common);
      if (found != 0 || m.unsettled != nullptr)
        return found;
    }
  }
}

} // namespace

int call_straight(const func_block *fc, node **call_stack, int spine_len) {
  if (spine_len < fc->arity)
    return -1;
  const group_plan &group = fc->plan->groups[0];
  const MatchScope scope; // the plan and its clauses stay until the body is built
  std::array<node *, kStraightVariables> bindings;
  Match m{Pass::single, bindings};
  const std::uint32_t matched =
      match_flat(m, group.patterns.data(), group.patterns.size(), call_stack + 1, group.clauses);
  // The single pass stands as the two passes' answer only while every forced argument ended as a
  // value; else these decide, and the first to reach that argument takes it as forced.
  if (m.unsettled != nullptr) [[unlikely]]
    return match_twice(call_stack, spine_len, m.unsettled);
  if (matched == 0)
    return -1;
  const int number = std::bit_width(matched) - 1;
  rhs_link *const clause = group.by_number[static_cast<std::size_t>(number)];
  const clause_code &code = *code_of(clause, group.group->lhs_tree, 1U << number);
  node *const target = own_target(call_stack, fc->arity, spine_len);
  if (code.plain || !code.unbound.empty()) [[unlikely]]
    apply_clause(*clause, code, bindings.data(), target);
  else
    build_body(code.body, bindings.data(), target);
  return fc->arity;
}

} // namespace velora
