// Walks over trees of the language. They keep a stack of their own, so a deep tree takes memory of
// the heap and not of the machine's stack. Used wherever a whole term is looked through.
#pragma once

#include <vector>

#include "core/records.h"

namespace velora {

// Calls `visit` for every node of a term, each before its parts and a function part before the
// argument, until one call answers true; answers whether one did. Null parts are passed over.
template <typename Visit> bool any_node(const node *root, Visit visit) {
  std::vector<const node *> open{root};
  while (!open.empty()) {
    const node *n = open.back();
    open.pop_back();
    while (n != nullptr) {
      if (visit(n))
        return true;
      if (!is_apply(n))
        break;
      open.push_back(n->val.a.a2);
      n = n->val.a.a1;
    }
  }
  return false;
}

// The same without an end before the last node.
template <typename Visit> void each_node(const node *root, Visit visit) {
  any_node(root, [&visit](const node *n) {
    visit(n);
    return false;
  });
}

// Calls `visit` for the node of every alternative of a decision tree, until one call answers true;
// answers whether one did.
template <typename Visit> bool any_alternative(const choice_node *list, Visit visit) {
  std::vector<const choice_node *> open{list};
  while (!open.empty()) {
    const choice_node *alternative = open.back();
    open.pop_back();
    for (; alternative != nullptr; alternative = alternative->next) {
      const node &n = alternative->n;
      if (visit(&n))
        return true;
      if (is_apply(&n)) {
        open.push_back(choice_list(n.val.a.a1));
        open.push_back(choice_list(n.val.a.a2));
      }
    }
  }
  return false;
}

} // namespace velora
