// Compiles clause bodies. Each argument of the body that uses variables becomes a static combinator
// term, abstracted by the same rules as the body as a whole:
//   \v.v = I   \v.(p v) = p   \v.(p g) = B p (\v.g)   \v.(f q) = C (\v.f) q   \v.(f g) = S ...
// (p and q without v). The term of an argument is a part of the term of the argument around it, so
// one abstraction of each outermost argument yields all.
#include "eval/clause_compile.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "core/text.h"
#include "core/trees.h"
#include "core/walks.h"
#include "eval/bi_support.h"
#include "eval/registry.h"

namespace velora {

namespace {

// Larger or deeper bodies are taken the plain way.
constexpr int kMostBodyNodes = 4000;
constexpr int kMostBodyDepth = 400;

using Vars = std::vector<std::uint32_t>; // ascending

// A term while it is abstracted. `origin` is the argument that it is the abstraction of, or -1.
struct Term {
  const node *leaf = nullptr; // a leaf when not null
  int comb = 0;               // a combinator leaf when not 0
  Term *fun = nullptr;
  Term *arg = nullptr;
  int origin = -1;
  bool uses = false; // the variable being abstracted occurs in it
};

struct Argument {
  const node *expression;
  Vars vars;
  bool own;             // each call needs an abstraction of its own
  node *term = nullptr; // its static term, once made
  std::uint32_t id = 0; // its template record when the term is an application
};

bool may_compile(const node *root) {
  struct Open {
    const node *n;
    int depth;
  };
  std::vector<Open> open{{root, 0}};
  int count = 0;
  while (!open.empty()) {
    const Open at = open.back();
    open.pop_back();
    // Within these bounds whoever walks the body later may recurse.
    if (at.n == nullptr || ++count > kMostBodyNodes || at.depth > kMostBodyDepth)
      return false;
    // From kCombI on the kinds are combinators. A body that holds one, lambda or hold depends on
    // how it is abstracted, so it stays with the plain way.
    if (is_apply(at.n)) {
      open.push_back({at.n->val.a.a1, at.depth + 1});
      open.push_back({at.n->val.a.a2, at.depth + 1});
    } else if (at.n->type == kLambda || at.n->type >= kCombI ||
               (at.n->type == kBuiltin &&
                (at.n->val.bi.id == kBiHold || at.n->val.bi.id == kBiHoldn))) {
      return false;
    }
  }
  return true;
}

std::int64_t tree_size(const node *root) {
  std::int64_t count = 0;
  each_node(root, [&count](const node *) { ++count; });
  return count;
}

void collect_head_variables(const choice_node *list, std::uint32_t mask, std::set<int> &found) {
  for (; list != nullptr; list = list->next) {
    if ((list->mask & mask) == 0)
      continue;
    if (is_apply(&list->n)) {
      collect_head_variables(choice_list(list->n.val.a.a1), mask, found);
      collect_head_variables(choice_list(list->n.val.a.a2), mask, found);
    } else if (list->n.type == kVariable) {
      found.insert(list->n.val.v);
    }
  }
}

bool may_grow(const node *n) {
  return lists_may_grow() && n->type == kConstructorNode && n->val.cs == bi_cons_table[kNil].cs;
}

// Whether evaluating a term without variables of the clause can do nothing at all, so that nobody
// can tell one node from several copies: a value, or a function with too few arguments. An end of a
// list that may grow is told by its growing.
bool is_inert(const node *n) {
  int count = 0;
  for (; is_apply(n); n = n->val.a.a1, ++count)
    if (n->val.a.a2 == nullptr || !is_inert(n->val.a.a2))
      return false;
  switch (n->type) {
  case kFunctionNode:
    return count < least_arguments_for_good(n->val.fc);
  case kBuiltin:
    return count < bi_funcs_table[n->val.bi.id].arity.least;
  case kConstructorNode:
    return !may_grow(n);
  default:
    return count == 0;
  }
}

class Compiler {
public:
  Compiler(clause_code &code, int max_var) : code_(code), max_var_(max_var) {
    code_.leaf_record = new_template(&code_);
  }

  // Compiles one level of `expression`; `names` gives the place of each variable among the
  // bindings.
  void compile_level(const node *expression, const Vars &names, body_code &body) {
    std::vector<const node *> spine;
    for (; is_apply(expression); expression = expression->val.a.a1)
      spine.push_back(expression);
    if (is_binding(expression)) {
      body.head_is_variable = true;
      body.head_var = place(names, expression);
    } else {
      body.head = static_leaf(expression);
    }
    body.need = 1;
    Vars before; // variables of the function part so far
    add_vars(expression, before);
    for (auto at = spine.rbegin(); at != spine.rend(); ++at) {
      const node *const argument = (*at)->val.a.a2;
      body.args.push_back(compile_arg(argument, names, before, body.need));
      ++body.need;
      add_vars(argument, before);
    }
    body.taken = nodes_of_level(body);
  }

private:
  bool is_binding(const node *n) const { return n->type == kVariable && n->val.v <= max_var_; }

  static std::uint32_t place(const Vars &names, const node *variable) {
    const auto v = static_cast<std::uint32_t>(variable->val.v);
    return static_cast<std::uint32_t>(std::lower_bound(names.begin(), names.end(), v) -
                                      names.begin());
  }

  void add_vars(const node *n, Vars &vars) const {
    if (is_apply(n)) {
      add_vars(n->val.a.a1, vars);
      add_vars(n->val.a.a2, vars);
    } else if (is_binding(n)) {
      const auto v = static_cast<std::uint32_t>(n->val.v);
      const auto at = std::lower_bound(vars.begin(), vars.end(), v);
      if (at == vars.end() || *at != v)
        vars.insert(at, v);
    }
  }

  static bool holds(const Vars &vars, std::uint32_t v) {
    return std::binary_search(vars.begin(), vars.end(), v);
  }

  arg_code compile_arg(const node *n, const Vars &names, const Vars &before, std::int64_t &need) {
    arg_code arg;
    if (is_binding(n)) {
      arg.op = holds(before, static_cast<std::uint32_t>(n->val.v)) ? ArgOp::held : ArgOp::variable;
      arg.var = place(names, n);
      ++need;
      return arg;
    }
    Vars vars;
    add_vars(n, vars);
    if (vars.empty())
      return compile_constant(n, need);
    const int index = argument_of(n, vars);
    node *const term = arguments_[static_cast<std::size_t>(index)].term;
    arg.op = ArgOp::suspended;
    arg.leaf = term;
    arg.own = arguments_[static_cast<std::size_t>(index)].own;
    if (arg.own)
      need += tree_size(term);
    arg.first_direct = term->type == kCombI && !holds(before, vars.front());
    for (const std::uint32_t v : vars)
      arg.vars.push_back(static_cast<std::uint32_t>(
          std::lower_bound(names.begin(), names.end(), v) - names.begin()));
    need += static_cast<std::int64_t>(vars.size()) + 1;
    return arg;
  }

  arg_code compile_constant(const node *n, std::int64_t &need) {
    arg_code arg;
    ++need;
    if (is_apply(n)) {
      arg.op = ArgOp::apply;
      arg.parts.push_back(compile_constant_head(n->val.a.a1, need));
      arg.parts.push_back(compile_constant(n->val.a.a2, need));
      return arg;
    }
    arg.leaf = static_leaf(n);
    arg.op = (arg.leaf->flags & kShareLeaf) != 0 ? ArgOp::shared : ArgOp::fresh;
    return arg;
  }

  arg_code compile_constant_head(const node *n, std::int64_t &need) {
    arg_code arg = compile_constant(n, need);
    if (arg.op == ArgOp::fresh && (arg.leaf->flags & kShareHead) != 0)
      arg.op = ArgOp::shared;
    return arg;
  }

  node *new_static(std::uint8_t type, std::uint8_t flags) {
    node &n = code_.nodes.emplace_back(node{});
    n.type = type;
    n.flags = static_cast<std::uint8_t>(kStaticNode | flags);
    n.aux = code_.leaf_record;
    return &n;
  }

  // The text of a string leaf is held by the clause's own tree, and by the code while it lives.
  node *static_leaf(const node *leaf) {
    node *n = new_static(leaf->type, sharing_of(leaf));
    n->val = leaf->val;
    if (leaf->type == kString) {
      hold_text(n->val.s.str);
      code_.texts.push_back(n->val.s.str);
    }
    return n;
  }

  static std::uint8_t sharing_of(const node *leaf) {
    switch (leaf->type) {
    case kFunctionNode:
      return kShareHead;
    case kBuiltin:
      return bi_funcs_table[leaf->val.bi.id].arity.least > 0 ? kShareHead : 0;
    default:
      return may_grow(leaf) ? 0 : kShareLeaf;
    }
  }

  // The argument record of `n`, compiled with everything inside it.
  int argument_of(const node *n, const Vars &vars) {
    if (const auto known = numbers_.find(n); known != numbers_.end())
      return known->second;
    const std::size_t first = arguments_.size();
    Term *term = term_of(n, true);
    for (auto v = vars.rbegin(); v != vars.rend(); ++v)
      term = abstract(*v, term);
    make_static(term);
    // An abstraction that was the bare variable of an outer abstraction fell away with it: it is I.
    for (std::size_t i = first; i < arguments_.size(); ++i)
      if (arguments_[i].term == nullptr)
        arguments_[i].term = static_combinator_i();
    for (std::size_t i = first; i < arguments_.size(); ++i)
      if (arguments_[i].id != 0)
        compile_template(i);
    return static_cast<int>(first);
  }

  // Whether `n` holds a part without variables that must be one node for one call.
  bool holds_redex(const node *n) const {
    Vars vars;
    add_vars(n, vars);
    if (vars.empty())
      return !is_inert(n);
    return is_apply(n) && (holds_redex(n->val.a.a1) || holds_redex(n->val.a.a2));
  }

  void compile_template(std::size_t i) {
    const Argument argument = arguments_[i];
    body_code body;
    compile_level(argument.expression, argument.vars, body);
    template_code &record = template_record(argument.id);
    record.nargs = static_cast<std::uint32_t>(argument.vars.size());
    record.weight = tree_size(argument.term);
    record.body = std::move(body);
  }

  Term *new_term() { return &terms_.emplace_back(); }

  Term *comb_term(int comb) {
    Term *t = new_term();
    t->comb = comb;
    return t;
  }

  Term *apply_term(Term *fun, Term *arg) {
    Term *t = new_term();
    t->fun = fun;
    t->arg = arg;
    return t;
  }

  // The written term; every argument in it that is an application with variables gets a record.
  Term *term_of(const node *n, bool is_argument) {
    int origin = -1;
    if (is_argument && is_apply(n)) {
      Vars vars;
      add_vars(n, vars);
      if (!vars.empty()) {
        origin = static_cast<int>(arguments_.size());
        arguments_.push_back({n, std::move(vars), holds_redex(n)});
        numbers_.emplace(n, origin);
      }
    }
    Term *t = new_term();
    if (is_apply(n)) {
      Term *fun = term_of(n->val.a.a1, false);
      Term *arg = term_of(n->val.a.a2, true);
      t->fun = fun;
      t->arg = arg;
    } else {
      t->leaf = n;
    }
    t->origin = origin;
    return t;
  }

  bool is_variable(const Term *t, std::uint32_t v) const {
    return t->leaf != nullptr && is_binding(t->leaf) &&
           static_cast<std::uint32_t>(t->leaf->val.v) == v;
  }

  bool note_uses(Term *t, std::uint32_t v) {
    if (t->fun == nullptr) {
      t->uses = is_variable(t, v);
    } else {
      const bool in_fun = note_uses(t->fun, v);
      const bool in_arg = note_uses(t->arg, v);
      t->uses = in_fun || in_arg;
    }
    return t->uses;
  }

  Term *abstract(std::uint32_t v, Term *t) {
    note_uses(t, v);
    return abstract_used(v, t);
  }

  // `t` uses v.
  Term *abstract_used(std::uint32_t v, Term *t) {
    Term *result = nullptr;
    if (t->fun == nullptr)
      result = comb_term(kCombI);
    else if (!t->fun->uses && is_variable(t->arg, v))
      result = t->fun;
    else if (!t->fun->uses)
      result = apply_term(apply_term(comb_term(kCombB), t->fun), abstract_used(v, t->arg));
    else if (!t->arg->uses)
      result = apply_term(apply_term(comb_term(kCombC), abstract_used(v, t->fun)), t->arg);
    else
      result = apply_term(apply_term(comb_term(kCombS), abstract_used(v, t->fun)),
                          abstract_used(v, t->arg));
    result->origin = t->origin;
    return result;
  }

  node *make_static(const Term *t) {
    node *n = nullptr;
    if (t->fun != nullptr) {
      n = new_static(kApply, 0);
      n->val.a.a1 = make_static(t->fun);
      n->val.a.a2 = make_static(t->arg);
    } else if (t->comb != 0) {
      n = new_static(static_cast<std::uint8_t>(t->comb), kShareLeaf);
    } else {
      n = static_leaf(t->leaf);
    }
    if (t->origin >= 0) {
      Argument &argument = arguments_[static_cast<std::size_t>(t->origin)];
      argument.term = n;
      if (is_apply(n) && !argument.own) {
        argument.id = new_template(&code_);
        n->flags |= kTemplateNode;
        n->aux = argument.id;
      }
    }
    return n;
  }

  clause_code &code_;
  int max_var_;
  std::deque<Term> terms_;
  std::vector<Argument> arguments_;
  std::unordered_map<const node *, int> numbers_;
};

} // namespace

node *static_combinator_i() {
  static node leaf = [] {
    node n{};
    n.type = kCombI;
    n.flags = kStaticNode | kShareLeaf;
    return n;
  }();
  return &leaf;
}

std::unique_ptr<clause_code> compile_clause(const rhs_link &clause, const choice_node *lhs_tree,
                                            std::uint32_t mask) {
  auto code = std::make_unique<clause_code>();
  std::set<int> bound;
  collect_head_variables(lhs_tree, mask, bound);
  Vars names;
  for (int v = 0; v <= clause.max_var; ++v) {
    names.push_back(static_cast<std::uint32_t>(v));
    if (bound.count(v) == 0)
      code->unbound.push_back(v);
  }
  if (gPlainBodies != 0 || !may_compile(clause.original)) {
    code->plain = true;
    return code;
  }
  Compiler(*code, clause.max_var).compile_level(clause.original, names, code->body);
  return code;
}

} // namespace velora
