// Lifetime of compiled clauses, and building results from them. The compiler is in
// clause_compile.cpp.
#include "eval/clause_code.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

#include "core/builtin_ids.h"
#include "core/needs.h"
#include "core/space.h"
#include "core/symbols.h"
#include "core/text.h"
#include "eval/clause_compile.h"
#include "eval/registry.h"

namespace velora {

int gPlainBodies = 0;

namespace {

std::deque<template_code> templates(1); // record 0 belongs to no clause

} // namespace

std::vector<const template_code *> gTemplates(1, &templates[0]);

namespace {

std::vector<std::uint32_t> free_records;
// Code of clauses that are gone, until no collection reaches it. Never destroyed: at the end of the
// program the texts that it holds are still counted.
std::vector<std::unique_ptr<clause_code>> &retired = *new std::vector<std::unique_ptr<clause_code>>;

void free_code(clause_code *code) {
  for (const std::uint32_t id : code->templates) {
    templates[id] = template_code{};
    free_records.push_back(id);
  }
  for (char *text : code->texts)
    drop_text(text);
}

// Whether a static leaf may be the head of an application of the query space as it stands.
bool may_stand(const node *leaf) {
  return (leaf->flags & (kShareHead | kShareLeaf)) != 0;
}

node *build_constant(const arg_code &code) {
  if (code.op == ArgOp::shared)
    return code.leaf;
  if (code.op == ArgOp::apply) {
    node *const fun = build_constant(code.parts[0]);
    return LMakeApplyNode(fun, build_constant(code.parts[1]));
  }
  node *n = take_node();
  overwrite_node(n, code.leaf);
  return n;
}

// The building of one level. Its nodes have been reserved: the budget holds them, so the pool has
// as many that the last collection did not reach, the cursor comes upon them before its end, and
// nothing is collected in between. So the cursor is held here until the level stands, and how many
// nodes it takes is known beforehand.
class Building {
public:
  explicit Building(node *const *bindings) : bindings_(bindings), next_(gSpace.cursor) {}

  // The result is written over `target`.
  void level(const body_code &body, node *target) {
    node *fun = head(body);
    const arg_code *code = body.args.data();
    const arg_code *const last = code + body.args.size() - 1;
    for (; code != last; ++code)
      fun = application(fun, argument(*code));
    node *const arg = argument(*code);
    gSpace.cursor = next_;
    gSpace.budget -= body.taken;
    target->type = kApply;
    target->quote = 0;
    target->val.a = {fun, arg};
  }

private:
  node *take() {
    node *n = next_;
    while (n->mark == gSpace.epoch)
      ++n;
    next_ = n + 1;
    return n;
  }

  node *application(node *fun, node *arg) {
    node *n = take();
    clear_header(n);
    n->val.a.a1 = fun;
    n->val.a.a2 = arg;
    return n;
  }

  node *copy_of_leaf(const node *leaf) {
    node *n = take();
    n->type = leaf->type;
    n->quote = 0;
    n->val = leaf->val;
    return n;
  }

  // The head of a spine with arguments. A variable's binding is copied, not shared: reducing the
  // spine then leaves the binding as it is.
  node *head(const body_code &body) {
    if (body.head_is_variable) {
      node *n = take();
      overwrite_node(n, bindings_[body.head_var]);
      return n;
    }
    return may_stand(body.head) ? body.head : copy_of_leaf(body.head);
  }

  // The abstraction of a suspended argument, applied to its variables.
  node *suspended(const arg_code &code) {
    const std::uint32_t *v = code.vars.data();
    const std::uint32_t *const end = v + code.vars.size();
    node *fun = code.leaf;
    if (code.first_direct)
      fun = bindings_[*v++];
    else if (code.own) [[unlikely]]
      fun = own_copy(fun);
    else if (!is_apply(fun) && !may_stand(fun)) [[unlikely]]
      fun = copy_of_leaf(fun);
    for (; v != end; ++v)
      fun = application(fun, bindings_[*v]);
    return fun;
  }

  // What is seldom needed is made with the cursor in its place, and pays for its nodes itself.
  node *own_copy(const node *term) {
    gSpace.cursor = next_;
    node *const copy = LCopy(term);
    next_ = gSpace.cursor;
    return copy;
  }
  node *constant(const arg_code &code) {
    gSpace.cursor = next_;
    node *const made = build_constant(code);
    next_ = gSpace.cursor;
    return made;
  }

  node *argument(const arg_code &code) {
    if (code.op == ArgOp::suspended)
      return suspended(code);
    switch (code.op) {
    case ArgOp::variable:
      return bindings_[code.var];
    case ArgOp::shared:
      return code.leaf;
    case ArgOp::held:
      return application(static_combinator_i(), bindings_[code.var]);
    case ArgOp::fresh:
      return copy_of_leaf(code.leaf);
    default:
      return constant(code);
    }
  }

  node *const *bindings_;
  node *next_;
};

} // namespace

std::int64_t nodes_of_level(const body_code &body) {
  if (body.args.empty())
    return 0;
  auto count = static_cast<std::int64_t>(body.args.size()) - 1;
  count += body.head_is_variable || !may_stand(body.head) ? 1 : 0;
  for (const arg_code &arg : body.args) {
    if (arg.op == ArgOp::held || arg.op == ArgOp::fresh)
      ++count;
    if (arg.op != ArgOp::suspended)
      continue;
    count += static_cast<std::int64_t>(arg.vars.size());
    if (arg.first_direct)
      --count;
    else if (!arg.own && !is_apply(arg.leaf) && !may_stand(arg.leaf))
      ++count;
  }
  return count;
}

void build_spine(const body_code &body, node *const *bindings, node *target) {
  reserve_nodes(body.need);
  Building(bindings).level(body, target);
}

template_code &template_record(std::uint32_t id) {
  return templates[id];
}

std::uint32_t new_template(clause_code *owner) {
  std::uint32_t id = 0;
  if (!free_records.empty()) {
    id = free_records.back();
    free_records.pop_back();
  } else {
    id = static_cast<std::uint32_t>(templates.size());
    gTemplates.push_back(&templates.emplace_back());
  }
  templates[id].owner = owner;
  owner->templates.push_back(id);
  return id;
}

clause_code *make_code(rhs_link *clause, const choice_node *lhs_tree, std::uint32_t mask) {
  clause->code = compile_clause(*clause, lhs_tree, mask).release();
  return clause->code;
}

namespace {

// The least number of arguments that a head of `fc` takes; 0 when there is no head.
int shortest_head(const func_block *fc) {
  int least = fc->defs == nullptr ? 0 : kNoLimit;
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next)
    for (const choice_node *head = group->lhs_tree; head != nullptr; head = head->next) {
      std::vector<std::pair<const choice_node *, int>> open{{head, 0}};
      while (!open.empty()) {
        const auto [at, count] = open.back();
        open.pop_back();
        if (!is_apply(&at->n)) {
          least = std::min(least, count);
          continue;
        }
        for (const choice_node *f = choice_list(at->n.val.a.a1); f != nullptr; f = f->next)
          open.emplace_back(f, count + 1);
      }
    }
  return least;
}

// What compiled forms rely on: functions that had no head shorter than this, and that no list grows
// where it stands.
std::unordered_map<const func_block *, int> shortest_heads;
bool tag_named = false;

// Gives up the compiled forms of all clauses; each is made again at its next call.
void give_up_all_code() {
  shortest_heads.clear();
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next) {
    if ((s->stype & kFunctionBit) == 0 || (s->stype & kBuiltinBit) != 0)
      continue;
    for (const defs_link *group = s->b.fc->defs; group != nullptr; group = group->next)
      for (rhs_link *clause = group->defs; clause != nullptr; clause = clause->next) {
        retire_code(clause->code);
        clause->code = nullptr;
      }
  }
}

} // namespace

int least_arguments_for_good(const func_block *fc) {
  const int least = shortest_head(fc);
  int &relied_on = shortest_heads[fc];
  relied_on = std::max(relied_on, least);
  return least;
}

bool lists_may_grow() {
  return tag_named;
}

void note_head(const func_block *fc, int arguments) {
  const auto found = shortest_heads.find(fc);
  if (found != shortest_heads.end() && arguments < found->second)
    give_up_all_code();
}

void note_built_in(int number) {
  if (number != kBiTag || tag_named)
    return;
  tag_named = true;
  give_up_all_code();
}

void retire_code(clause_code *code) {
  if (code != nullptr)
    retired.emplace_back(code);
}

std::int64_t mark_code(const node *n, unsigned epoch) {
  const template_code &record = templates[n->aux];
  if (record.owner != nullptr)
    record.owner->epoch = epoch;
  return record.owner != nullptr && (n->flags & kTemplateNode) != 0 ? record.weight : 1;
}

void sweep_code(unsigned epoch) {
  std::erase_if(retired, [epoch](const std::unique_ptr<clause_code> &code) {
    if (code->epoch == epoch)
      return false;
    free_code(code.get());
    return true;
  });
}

} // namespace velora
