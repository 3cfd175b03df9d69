// HOLD and HOLDN. Called while a clause is compiled.
#include "front/hold.h"

#include <utility>

#include "core/events.h"
#include "core/walks.h"
#include "front/comb.h"

namespace velora {

namespace {

using Test = bool (*)(const node *);
using Inside = bool (*)(const node *, const node *);

// Calls `visit` for the applications of a tree, root first, function parts before arguments, until
// it answers true.
template <typename Visit> bool walk(const node *root, Visit visit) {
  return any_node(root, [&visit](const node *n) {
    if (!is_apply(n))
      return false;
    CheckForUserEvents(82);
    return visit(n);
  });
}

const node *choose(const node *body, Test test, Inside inside) {
  const node *taken = nullptr;
  walk(body, [&](const node *n) {
    if (test(n) && (taken == nullptr || inside(n->val.a.a2, taken)))
      taken = n;
    return false;
  });
  return taken;
}

// body := (body held)
void apply_to(Tree &body, Tree held) {
  node *applied = make_apply_node(body.get(), held.get());
  body.release();
  held.release();
  body.reset(applied);
}

} // namespace

bool any_hold(const node *body) {
  return walk(body, [](const node *n) { return is_hold(n) || is_holdn(n); });
}

bool inside_exp(const node *body, const node *hold) {
  return walk(body, [hold](const node *n) {
    return is_hold(n) && equal_expression(n->val.a.a2, hold->val.a.a2) != 0;
  });
}

bool inside_HOLDN_exp(const node *body, const node *hold) {
  return walk(body, [hold](const node *n) { return is_holdn(n) && holdn_id(n) == holdn_id(hold); });
}

const node *get_held_exp(const node *body) {
  return choose(body, is_hold, inside_exp);
}

const node *get_HOLDN_exp(const node *body) {
  return choose(body, is_holdn, inside_HOLDN_exp);
}

// body -> (([HOLD e] body) e), where [h] is the abstraction of every occurrence of h.
void share_held_expressions(Tree &body) {
  while (const node *hold = get_HOLDN_exp(body.get())) {
    const int id = holdn_id(hold);
    Tree held(copy_tree(hold->val.a.a2));
    body.reset(abst_HOLDN_exp(body.release(), id));
    apply_to(body, std::move(held));
  }
  while (const node *hold = get_held_exp(body.get())) {
    Tree held(copy_tree(hold->val.a.a2));
    body.reset(abst_held_exp(body.release(), held.get()));
    apply_to(body, std::move(held));
  }
}

} // namespace velora
