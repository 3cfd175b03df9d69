// Matching a term against a pattern that is itself a term: match looks at values, matchq at terms
// as they are written. Called by the dispatcher.
#include <map>
#include <vector>

#include "core/events.h"
#include "core/trees.h"
#include "eval/bi_support.h"
#include "eval/builtins/bi_maths.h"
#include "eval/builtins/families.h"

namespace velora {

namespace {

bool needs_forcing(const node *n) {
  return is_apply(n) || n->type == kBuiltin || n->type == kFunctionNode;
}

// One attempt. The terms matched hang off the expression, so what variables stand for does too.
class Matcher {
public:
  explicit Matcher(bool forcing) : forcing_(forcing) {}

  // A variable stands for any term, the same variable for equal terms; an application matches
  // part by part; anything else matches its equal.
  bool matches(node *pattern, node *term) {
    pending_.emplace_back(pattern, term);
    while (!pending_.empty()) {
      CheckForUserEvents(800);
      const auto [p, t] = pending_.back();
      pending_.pop_back();
      if (!step(p, t))
        return false;
    }
    return true;
  }

private:
  bool step(node *pattern, node *term) {
    if (pattern->type == kVariable)
      return bind(pattern->val.v, term);
    if (forcing_ && needs_forcing(term))
      evaluate(term);
    if (!is_apply(pattern))
      return equal_node(pattern, term) != 0;
    if (!is_apply(term))
      return false;
    return spine_step(pattern, term);
  }

  // Two spines: function parts are not forced, since the whole was.
  bool spine_step(node *pattern, node *term) {
    std::vector<std::pair<node *, node *>> arguments;
    while (is_apply(pattern) && is_apply(term)) {
      arguments.emplace_back(pattern->val.a.a2, term->val.a.a2);
      pattern = pattern->val.a.a1;
      term = term->val.a.a1;
    }
    if (pattern->type == kVariable) {
      if (!bind(pattern->val.v, term))
        return false;
    } else if (equal_node(pattern, term) == 0) {
      return false;
    }
    pending_.insert(pending_.end(), arguments.begin(), arguments.end());
    return true;
  }

  bool bind(int v, node *term) {
    const auto [place, fresh] = bound_.emplace(v, term);
    if (fresh)
      return true;
    return (forcing_ ? bi_equal_node(place->second, term)
                     : equal_expression(place->second, term)) != 0;
  }

  bool forcing_;
  std::map<int, node *> bound_;
  std::vector<std::pair<node *, node *>> pending_;
};

} // namespace

// match p x: "True" when x has the form p; p is forced completely, x as far as p looks into it.
int bi_match(node **stack, int) {
  full_evaluate(bi_arg(stack, 1));
  return set_bool(stack[2], Matcher(true).matches(bi_arg(stack, 1), bi_arg(stack, 2)));
}

// matchq p x: the same on both terms as they stand.
int bi_matchq(node **stack, int) {
  return set_bool(stack[2], Matcher(false).matches(bi_arg(stack, 1), bi_arg(stack, 2)));
}

} // namespace velora
