// Lambda abstraction to combinators, after Turner. The abstraction works in place: while a tree is
// walked it stays a well-formed tree that its owner frees if the command is abandoned in between.
//
// [v] e, for a subtree e, is kept in one of three forms until its parent is known:
//   kConstant    K e      e does not mention v; the K is not made yet
//   kIdentity    I        e is the thing abstracted; the I is not made yet
//   kCompound    e        e has been rewritten to the abstraction itself
#include "front/comb.h"

#include <vector>

#include "core/builtin_ids.h"
#include "core/events.h"
#include "core/walks.h"

namespace velora {

namespace {

enum Form { kConstant, kIdentity, kCompound };

bool is_builtin(const node *n, int id) {
  return n != nullptr && n->type == kBuiltin && n->val.bi.id == id;
}

// What is abstracted: a variable, the holds of one expression, or the holds of one number.
struct Target {
  enum Kind { kVar, kHold, kHoldN } kind;
  int number;
  const node *held;

  bool matches(const node *n) const {
    switch (kind) {
    case kVar:
      return n->type == kVariable && n->val.v == number;
    case kHold:
      return is_hold(n) && equal_expression(n->val.a.a2, held) != 0;
    default:
      return is_holdn(n) && holdn_id(n) == number;
    }
  }
};

// Frees an application node alone.
void free_shell(node *n) {
  n->val.a.a1 = n->val.a.a2 = nullptr;
  free_struct(n);
}

// The form of a tree as it stands: a rewriting may give `K p` or `I` by itself.
Form form_of(node **slot) {
  node *e = *slot;
  if (e->type == kCombI)
    return kIdentity;
  if (!is_apply(e) || e->val.a.a1 == nullptr || e->val.a.a1->type != kCombK)
    return kCompound;
  *slot = e->val.a.a2;
  free_struct(e->val.a.a1);
  free_shell(e);
  return kConstant;
}

// Makes `e` the application of (comb fun) to its argument.
void prefix(node *e, NodeType code) {
  Tree head(make_leaf(code));
  node *inner = make_apply_node(head.get(), e->val.a.a1);
  head.release();
  e->val.a.a1 = inner;
}

// Writes the abstraction of a form into its slot.
void complete(node **slot, Form form) {
  if (form == kCompound)
    return;
  Tree leaf(make_leaf(form == kConstant ? kCombK : kCombI));
  if (form == kConstant) {
    *slot = make_apply_node(leaf.get(), *slot);
    leaf.release();
  } else {
    free_struct(*slot);
    *slot = leaf.release();
  }
}

// [v] (f g) from the forms of f and g:
//   K p, I -> p     K p, K q -> K (p q)     K p, g' -> B p g'     f', K q -> C f' q
//   f', g' -> S f' g'
Form combine(node **slot, Form fun, Form arg) {
  node *e = *slot;
  if (fun == kConstant && arg == kConstant)
    return kConstant;
  if (fun == kConstant && arg == kIdentity) {
    *slot = e->val.a.a1;
    free_struct(e->val.a.a2);
    free_shell(e);
    return form_of(slot);
  }
  if (fun == kConstant) {
    prefix(e, kCombB);
    return kCompound;
  }
  complete(&e->val.a.a1, fun);
  if (arg == kConstant) {
    prefix(e, kCombC);
    return kCompound;
  }
  complete(&e->val.a.a2, arg);
  prefix(e, kCombS);
  return kCompound;
}

struct Frame {
  node **slot;
  Form fun;
  bool in_argument;
};

// Rewrites the tree in `*root` to its abstraction. Function parts are walked first.
void abstract(node **root, const Target &target) {
  std::vector<Frame> open;
  node **slot = root;
  for (;;) {
    CheckForUserEvents(80);
    Form form = kConstant;
    if (target.matches(*slot)) {
      form = kIdentity;
    } else if (is_apply(*slot)) {
      open.push_back({slot, kConstant, false});
      slot = &(*slot)->val.a.a1;
      continue;
    }
    while (!open.empty() && open.back().in_argument) {
      form = combine(open.back().slot, open.back().fun, form);
      open.pop_back();
    }
    if (open.empty()) {
      complete(root, form);
      return;
    }
    open.back().fun = form;
    open.back().in_argument = true;
    slot = &(*open.back().slot)->val.a.a2;
  }
}

node *abstraction(node *e, const Target &target) {
  Tree tree(e);
  node *root = tree.release();
  struct Owner {
    node *&root;
    bool done = false;
    ~Owner() {
      if (!done)
        free_struct(root);
    }
  } owner{root};
  abstract(&root, target);
  owner.done = true;
  return root;
}

// True for `((lambda ?v) body)`.
bool is_lambda(const node *n) {
  const node *head = n->val.a.a1;
  return head != nullptr && is_apply(head) && head->val.a.a1 != nullptr &&
         head->val.a.a1->type == kLambda && head->val.a.a2 != nullptr &&
         head->val.a.a2->type == kVariable;
}

// One step of the compilation: copy a subtree into a slot, or abstract a variable out of it once
// it is there.
struct Task {
  const node *from; // null: abstract `variable` out of the tree in `to`
  node **to;
  int variable;
};

} // namespace

node *comb(const node *e) {
  if (e == nullptr)
    return nullptr;
  Tree holder(make_apply_node(nullptr, nullptr));
  node **result = &holder->val.a.a2;
  std::vector<Task> open{{e, result, 0}};
  while (!open.empty()) {
    CheckForUserEvents(80);
    const Task task = open.back();
    open.pop_back();
    if (task.from == nullptr) {
      abstract(task.to, {Target::kVar, task.variable, nullptr});
    } else if (!is_apply(task.from)) {
      *task.to = copy_leaf(task.from);
    } else if (is_lambda(task.from)) {
      open.push_back({nullptr, task.to, task.from->val.a.a1->val.a.a2->val.v});
      open.push_back({task.from->val.a.a2, task.to, 0});
    } else {
      node *copy = make_apply_node(nullptr, nullptr);
      *task.to = copy;
      open.push_back({task.from->val.a.a2, &copy->val.a.a2, 0});
      open.push_back({task.from->val.a.a1, &copy->val.a.a1, 0});
    }
  }
  node *compiled = *result;
  *result = nullptr;
  return compiled;
}

node *abso(int v, node *e) {
  return abstraction(e, {Target::kVar, v, nullptr});
}

node *abst_held_exp(node *e, const node *held) {
  return abstraction(e, {Target::kHold, 0, held});
}

node *abst_HOLDN_exp(node *e, int id) {
  return abstraction(e, {Target::kHoldN, id, nullptr});
}

bool is_hold(const node *n) {
  return is_apply(n) && is_builtin(n->val.a.a1, kBiHold);
}

bool is_holdn(const node *n) {
  if (!is_apply(n) || n->val.a.a1 == nullptr || !is_apply(n->val.a.a1))
    return false;
  const node *head = n->val.a.a1;
  return is_builtin(head->val.a.a1, kBiHoldn) && head->val.a.a2 != nullptr &&
         head->val.a.a2->type == kInteger;
}

int constructor_in(const node *root) {
  const bool found = any_node(
      root, [](const node *n) { return n->type == kConstructorNode && n->val.cs->arity > 1; });
  return found ? 1 : 0;
}

} // namespace velora
