// The reducer's form of a clause body. The body is not copied and reduced combinator by combinator:
// its result is built in one go from the bindings. What the reducer has not reached yet must look
// as the combinators would have left it, so an argument that is still to be evaluated is the
// application of its own abstraction, a static combinator term shared by all calls, to the
// variables it uses in ascending order. Evaluating such an argument builds its result in one go in
// turn; whoever looks at it unevaluated sees ordinary combinators.
//
// A part of an argument without variables is one node for one call: the copies that are made of the
// argument share it, so it is computed once. Where that could be told, because evaluating the part
// may do something, the call gets an abstraction of its own, which is reduced combinator by
// combinator.
#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "core/records.h"
#include "core/space.h"

namespace velora {

enum class ArgOp : std::uint8_t {
  variable, // the binding itself
  held,     // the application of I to the binding: the variable occurs further left too
  shared,   // a static leaf
  fresh,    // a new copy of a leaf
  apply,    // a new application of two parts without variables
  suspended // the application of an abstraction to variables
};

struct arg_code {
  ArgOp op = ArgOp::shared;
  bool first_direct = false;       // suspended: the first variable stands for the abstraction I
  bool own = false;                // suspended: each call gets a copy of the abstraction
  std::uint32_t var = 0;           // variable, held
  node *leaf = nullptr;            // shared, fresh; suspended: the abstraction
  std::vector<std::uint32_t> vars; // suspended: the variables it is applied to
  std::vector<arg_code> parts;     // apply: function part and argument
};

// How to build one level: the head and the arguments of its spine.
struct body_code {
  bool head_is_variable = false;
  std::uint32_t head_var = 0;
  node *head = nullptr; // a static leaf otherwise
  std::vector<arg_code> args;
  std::int64_t need = 0; // query-space nodes taken at the most
  std::int64_t taken =
      0; // those of them that the building takes itself, without copies and constants
};

// A static combinator term; a node flagged kTemplateNode has its number in `aux`.
struct template_code {
  clause_code *owner = nullptr;
  std::uint32_t nargs = 0; // variables it must be applied to before it can be built
  std::int64_t weight = 1; // nodes of the term
  body_code body;
};

struct clause_code {
  bool plain = false; // the body is copied and reduced as it stands
  body_code body;
  std::vector<int> unbound; // variables up to the clause's highest that its head does not bind
  std::deque<node> nodes;   // the static nodes
  std::vector<std::uint32_t> templates;
  std::vector<char *> texts;     // held for the static string leaves
  std::uint32_t leaf_record = 0; // the template record that static leaves of this clause carry
  unsigned epoch = 0;            // the last collection that found a reference
};

// The compiled form of a clause, made at the first call. `lhs_tree` and `mask` say which variables
// the head binds.
clause_code *make_code(rhs_link *clause, const choice_node *lhs_tree, std::uint32_t mask);
inline clause_code *code_of(rhs_link *clause, const choice_node *lhs_tree, std::uint32_t mask) {
  return clause->code != nullptr ? clause->code : make_code(clause, lhs_tree, mask);
}

// Builds `body` with `bindings` over the application or leaf `target`.
void build_spine(const body_code &body, node *const *bindings, node *target);
inline void build_body(const body_code &body, node *const *bindings, node *target) {
  if (!body.args.empty())
    build_spine(body, bindings, target);
  else
    overwrite_node(target, body.head_is_variable ? bindings[body.head_var] : body.head);
}

// The record of a template node.
extern std::vector<const template_code *> gTemplates; // by their numbers
inline const template_code &template_of(const node *n) {
  return *gTemplates[n->aux];
}

// Non-zero makes every clause take the plain way (for tests that compare the two).
extern int gPlainBodies;

} // namespace velora
