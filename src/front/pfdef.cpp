// Clauses: the parser of one clause, and add_defs, which the parser and the built-ins that assert
// clauses call. A clause is compiled before the function is touched, so that a command abandoned
// in between leaves the function as it was.
#include "front/pfdef.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "core/needs.h"
#include "core/symbols.h"
#include "core/walks.h"
#include "front/clause_index.h"
#include "front/clause_notes.h"
#include "front/comb.h"
#include "front/hold.h"
#include "front/notes.h"
#include "front/parse.h"
#include "front/pexpr.h"
#include "front/plhs.h"
#include "front/putils.h"
#include "front/source.h"
#include "front/type_check.h"

namespace velora {

namespace {

// What a clause head amounts to.
struct Head {
  int arguments = 0;
  int max_var = -1;
  int min_var = 0;
};

Head measure(const node *lhs) {
  Head head;
  for (const node *n = lhs; is_apply(n); n = n->val.a.a1)
    ++head.arguments;
  each_node(lhs, [&head](const node *n) {
    if (n->type != kVariable)
      return;
    head.max_var = std::max(head.max_var, n->val.v);
    head.min_var = std::min(head.min_var, n->val.v);
  });
  return head;
}

bool in_bounds(const Head &head) {
  if (head.arguments > kMostArguments)
    return refuse("Sorry! A clause has at most 255 arguments\n") != 0;
  if (head.min_var < 0 || head.max_var > kMostVariable)
    return refuse("Sorry! Variables of a clause run from ?0 to ?32767\n") != 0;
  return true;
}

std::vector<bool> variables_of(const node *body, int max_var) {
  std::vector<bool> used(static_cast<std::size_t>(max_var + 1));
  each_node(body, [&](const node *n) {
    if (n->type == kVariable && n->val.v >= 0 && n->val.v <= max_var)
      used[static_cast<std::size_t>(n->val.v)] = true;
  });
  return used;
}

// body := (K body)
void ignore_argument(Tree &body) {
  Tree k(make_leaf(kCombK));
  node *applied = make_apply_node(k.get(), body.get());
  k.release();
  body.release();
  body.reset(applied);
}

// [?0] ([?1] (... [?max_var] body)). A variable that the body does not use needs no walk.
void abstract_variables(int max_var, Tree &body) {
  const std::vector<bool> used = variables_of(body.get(), max_var);
  for (int v = max_var; v >= 0; --v)
    if (used[static_cast<std::size_t>(v)])
      body.reset(abso(v, body.release()));
    else
      ignore_argument(body);
}

void replace_body(func_block *fc, rhs_link *clause, Tree compiled, Tree original) {
  GrowingIndex index(fc);
  forget_plan(fc);
  index.keep(); // the heads stay
  retire_code(clause->code);
  clause->code = nullptr;
  Tree old_rhs(clause->rhs);
  Tree old_original(clause->original);
  clause->rhs = compiled.release();
  clause->original = original.release();
  gSymbolTableChanged = 1;
}

// The group that takes the next clause, with its number of clauses and the place for the clause.
struct Place {
  defs_link *group;
  int count;
  rhs_link **end;
};

Place place_for_clause(func_block *fc) {
  const ClauseIndex *index = clause_index(fc);
  defs_link *last = index != nullptr ? index->last : nullptr;
  defs_link **link = &fc->defs;
  while (last == nullptr && *link != nullptr && (*link)->next != nullptr)
    link = &(*link)->next;
  if (last != nullptr)
    link = &last;
  if (*link != nullptr) {
    Place place{*link, 0, &(*link)->defs};
    for (; *place.end != nullptr; place.end = &(*place.end)->next)
      ++place.count;
    if (place.count < kGroupSize)
      return place;
    link = &(*link)->next;
  }
  *link = new defs_link{nullptr, nullptr, nullptr};
  return {*link, 0, &(*link)->defs};
}

void append_clause(func_block *fc, const node *lhs, const Head &head, Tree compiled,
                   Tree original) {
  auto clause = std::make_unique<rhs_link>(rhs_link{-1, nullptr, nullptr, nullptr, nullptr});
  const std::uint32_t hash = head_hash(lhs);
  const Place place = place_for_clause(fc);
  GrowingIndex index(fc);
  forget_plan(fc);
  note_head(fc, head.arguments);
  merge_lhs(lhs, &place.group->lhs_tree, 1u << place.count, &clause->max_var);
  clause->rhs = compiled.release();
  clause->original = original.release();
  fc->arity = static_cast<std::uint8_t>(std::max<int>(fc->arity, head.arguments));
  fc->max_var = static_cast<std::int16_t>(std::max<int>(fc->max_var, clause->max_var));
  *place.end = clause.release();
  if (place.group->hashed == static_cast<std::uint32_t>(place.count))
    place.group->head_hash[place.group->hashed++] = hash;
  index.grow(place.group, hash);
  gSymbolTableChanged = 1;
}

// The function whose clause begins with the current token, or null after a message.
symbol *clause_function() {
  if (pp_token != kTokName) {
    report_error(pp_start, "function name");
    return nullptr;
  }
  symbol *s = find_symbol(pp_str_val, static_cast<std::size_t>(pp_str_len));
  if (s != nullptr && (s->stype == kFunction || s->stype == kDbFunction))
    return s;
  if (s != nullptr && (s->stype & kBuiltinBit) != 0 && (s->stype & kFunctionBit) != 0)
    report_error("built-in", "user-defined function name");
  else {
    report_error(pp_start, "declared function name");
    if (s == nullptr && pp_token == kTokName && definition_follows())
      advise(Note::declare_first, {pp_start});
  }
  return nullptr;
}

} // namespace

Tree compile_body(int max_var, const node *body) {
  Tree compiled;
  if (any_hold(body)) {
    Tree shared(copy_tree(body));
    share_held_expressions(shared);
    compiled.reset(comb(shared.get()));
  } else {
    compiled.reset(comb(body));
  }
  abstract_variables(max_var, compiled);
  return compiled;
}

int add_defs(func_block *fc, int db_f, node *lhs, node *rhs, int freelhs) {
  (void)db_f;
  Tree original(rhs);
  Tree owned_head(freelhs != 0 ? lhs : nullptr);
  const Head head = measure(lhs);
  if (!in_bounds(head))
    return 0;
  Tree compiled = compile_body(head.max_var, rhs);
  if (rhs_link *clause = find_lhs_match(fc, lhs))
    replace_body(fc, clause, std::move(compiled), std::move(original));
  else
    append_clause(fc, lhs, head, std::move(compiled), std::move(original));
  return 1;
}

int p_f_def() {
  symbol *s = clause_function();
  if (s == nullptr)
    return 0;
  const std::string name(s->name, s->name_len);
  if (!reading_console())
    pprintf(name.c_str());
  Tree lhs(p_expression(0));
  if (!lhs) {
    report_error(name, "decent lhs");
    if (pp_token == kTokName && find_symbol(pp_start, 0) == nullptr)
      advise(Note::pattern_variable, {name});
    return 0;
  }
  if (pp_token != kTokDefine) {
    report_error(name, "::=");
    if (measure(lhs.get()).max_var >= 0)
      advise(Note::sign_missing);
    return 0;
  }
  pp_get_token();
  Tree rhs(p_expression(0));
  if (!rhs)
    return report_error(name, "decent rhs");
  if (p_end() == 0)
    return 0;
  note_clause(s->b.fc, lhs.get(), rhs.get());
  check_clause(lhs.get(), rhs.get());
  return add_defs(s->b.fc, s->stype == kDbFunction, lhs.release(), rhs.release(), 1);
}

} // namespace velora
