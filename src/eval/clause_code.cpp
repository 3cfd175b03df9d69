// Lifetime of compiled clauses, and building results from them. The compiler is in
// clause_compile.cpp.
#include "eval/clause_code.h"

#include <memory>

#include "core/needs.h"
#include "core/space.h"
#include "core/text.h"
#include "eval/clause_compile.h"

namespace velora {

int gPlainBodies = 0;

namespace {

std::deque<template_code> templates(1); // record 0 belongs to no clause
std::vector<std::uint32_t> free_records;
std::vector<std::unique_ptr<clause_code>> retired;

void free_code(clause_code *code) {
  for (const std::uint32_t id : code->templates) {
    templates[id] = template_code{};
    free_records.push_back(id);
  }
  for (char *text : code->texts)
    drop_text(text);
}

node *copy_of_leaf(const node *leaf) {
  node *n = take_node();
  n->type = leaf->type;
  n->quote = 0;
  n->val = leaf->val;
  return n;
}

node *build_suspended(const arg_code &code, node *const *bindings) {
  std::size_t next = 0;
  node *fun = code.leaf;
  if (code.first_direct)
    fun = bindings[code.vars[next++]];
  else if (!is_apply(fun) && (fun->flags & (kShareHead | kShareLeaf)) == 0)
    fun = copy_of_leaf(fun);
  for (; next < code.vars.size(); ++next)
    fun = LMakeApplyNode(fun, bindings[code.vars[next]]);
  return fun;
}

node *build_arg(const arg_code &code, node *const *bindings) {
  switch (code.op) {
  case ArgOp::variable:
    return bindings[code.var];
  case ArgOp::held:
    return LMakeApplyNode(static_combinator_i(), bindings[code.var]);
  case ArgOp::shared:
    return code.leaf;
  case ArgOp::fresh:
    return copy_of_leaf(code.leaf);
  case ArgOp::apply: {
    node *fun = build_arg(code.parts[0], bindings);
    node *arg = build_arg(code.parts[1], bindings);
    return LMakeApplyNode(fun, arg);
  }
  case ArgOp::suspended:
    break;
  }
  return build_suspended(code, bindings);
}

// The head of a spine with arguments. A variable's binding is copied, not shared: reducing the
// spine then leaves the binding as it is.
node *build_head(const body_code &body, node *const *bindings) {
  if (!body.head_is_variable)
    return (body.head->flags & (kShareHead | kShareLeaf)) != 0 ? body.head
                                                               : copy_of_leaf(body.head);
  node *n = take_node();
  overwrite_node(n, bindings[body.head_var]);
  return n;
}

} // namespace

void build_body(const body_code &body, node *const *bindings, node *target) {
  if (body.args.empty()) {
    overwrite_node(target, body.head_is_variable ? bindings[body.head_var] : body.head);
    return;
  }
  reserve_nodes(body.need);
  node *fun = build_head(body, bindings);
  const std::size_t last = body.args.size() - 1;
  for (std::size_t i = 0; i < last; ++i)
    fun = LMakeApplyNode(fun, build_arg(body.args[i], bindings));
  node *arg = build_arg(body.args[last], bindings);
  target->type = kApply;
  target->quote = 0;
  target->val.a = {fun, arg};
}

const template_code &template_of(const node *n) {
  return templates[n->aux];
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
    templates.emplace_back();
  }
  templates[id].owner = owner;
  owner->templates.push_back(id);
  return id;
}

clause_code *code_of(rhs_link *clause, const choice_node *lhs_tree, std::uint32_t mask) {
  if (clause->code == nullptr)
    clause->code = compile_clause(*clause, lhs_tree, mask).release();
  return clause->code;
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
