// Heap trees of expressions. Freeing and copying walk with explicit stacks or through the trees
// themselves, so any depth is safe. Called by the front end, the database layer and the built-ins
// that change definitions.
#include "core/trees.h"

#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "core/needs.h"
#include "core/symbols.h"
#include "core/text.h"

namespace velora {

namespace {

node *new_heap_node() {
  node *n = new (std::nothrow) node{};
  if (n == nullptr)
    error_exit("Alloc failed");
  n->flags = kHeapNode;
  return n;
}

void free_leaf(node *leaf) {
  if (leaf->type == kString)
    drop_text(leaf->val.s.str);
  delete leaf;
}

// What was freed while a match was in progress.
std::vector<choice_node *> buried_trees;
std::vector<rhs_link *> buried_clauses;
std::vector<defs_link *> buried_groups;

} // namespace

int gMatchDepth = 0;
bool gBuried = false;

node *make_apply_node(node *a1, node *a2) {
  node *n = new_heap_node();
  n->type = kApply;
  n->val.a.a1 = a1;
  n->val.a.a2 = a2;
  return n;
}

node *make_leaf(std::uint8_t type) {
  node *n = new_heap_node();
  n->type = type;
  return n;
}

node *copy_leaf(const node *leaf) {
  node *n = new_heap_node();
  n->type = leaf->type;
  n->val = leaf->val;
  if (n->type == kString)
    hold_text(n->val.s.str);
  return n;
}

node *copy_tree(const node *root) {
  if (root == nullptr)
    return nullptr;
  if (!is_apply(root))
    return copy_leaf(root);
  Tree result(make_apply_node(nullptr, nullptr));
  std::vector<std::pair<const node *, node *>> open{{root, result.get()}};
  while (!open.empty()) {
    // `to` hangs in the result with empty parts, so what has been made is freed with the result
    // when memory ends.
    const auto [from, to] = open.back();
    open.pop_back();
    const node *const parts[2] = {from->val.a.a1, from->val.a.a2};
    node **const places[2] = {&to->val.a.a1, &to->val.a.a2};
    for (int i = 0; i < 2; ++i) {
      if (parts[i] == nullptr)
        continue;
      if (is_apply(parts[i])) {
        *places[i] = make_apply_node(nullptr, nullptr);
        open.emplace_back(parts[i], *places[i]);
      } else {
        *places[i] = copy_leaf(parts[i]);
      }
    }
  }
  return result.release();
}

// Applications whose argument is still to be freed are chained through their function part.
void free_struct(node *root) {
  node *pending = nullptr;
  node *current = root;
  for (;;) {
    while (current != nullptr && is_apply(current)) {
      node *const fun = current->val.a.a1;
      current->val.a.a1 = pending;
      pending = current;
      current = fun;
    }
    if (current != nullptr)
      free_leaf(current);
    if (pending == nullptr)
      return;
    node *const done = pending;
    pending = done->val.a.a1;
    current = done->val.a.a2;
    delete done;
  }
}

int equal_node(const node *n1, const node *n2) {
  if (n1->type != n2->type)
    return 0;
  switch (n1->type) {
  // Two applications are equal as nodes; their parts are compared by who walks them.
  case kApply:
    return (n1->val.a.a1 == nullptr) == (n2->val.a.a1 == nullptr) &&
           (n1->val.a.a2 == nullptr) == (n2->val.a.a2 == nullptr);
  case kVariable:
    return n1->val.v == n2->val.v;
  case kInteger:
    return n1->val.i == n2->val.i;
  case kFunctionNode:
    return n1->val.fc == n2->val.fc;
  case kConstructorNode:
    return n1->val.cs == n2->val.cs;
  case kName:
    return n1->val.sym == n2->val.sym;
  case kBuiltin:
    return n1->val.bi.id == n2->val.bi.id;
  case kCharacter:
    return n1->val.c == n2->val.c;
  case kReal:
    return n1->val.r == n2->val.r;
  case kString:
    return n1->val.s.len == n2->val.s.len &&
           std::memcmp(n1->val.s.str, n2->val.s.str, static_cast<std::size_t>(n1->val.s.len)) == 0;
  default:
    return n1->type >= kCombI && n1->type <= kCombC;
  }
}

int equal_expression(const node *first, const node *second) {
  std::vector<std::pair<const node *, const node *>> open{{first, second}};
  while (!open.empty()) {
    const auto [a, b] = open.back();
    open.pop_back();
    if (a == nullptr || b == nullptr) {
      if (a != b)
        return 0;
    } else if (a->type != b->type) {
      return 0;
    } else if (is_apply(a)) {
      open.emplace_back(a->val.a.a2, b->val.a.a2);
      open.emplace_back(a->val.a.a1, b->val.a.a1);
    } else if (a->type != kLambda && equal_node(a, b) == 0) {
      return 0;
    }
  }
  return 1;
}

void free_lhs_tree(choice_node *list) {
  // A match that forces an argument may run what denies its own clauses: until the last match has
  // ended the trees stay.
  if (gMatchDepth > 0) {
    if (list != nullptr) {
      gBuried = true;
      buried_trees.push_back(list);
    }
    return;
  }
  std::vector<choice_node *> open;
  if (list != nullptr)
    open.push_back(list);
  while (!open.empty()) {
    choice_node *alternative = open.back();
    open.pop_back();
    // Along the alternatives in a loop, down into the parts by the stack: neither length nor depth
    // of the heads costs nesting.
    while (alternative != nullptr) {
      if (is_apply(&alternative->n)) {
        open.push_back(choice_list(alternative->n.val.a.a1));
        open.push_back(choice_list(alternative->n.val.a.a2));
      } else if (alternative->n.type == kString) {
        drop_text(alternative->n.val.s.str);
      }
      choice_node *const next = alternative->next;
      delete alternative;
      alternative = next;
    }
  }
}

void free_clause(rhs_link *clause) {
  if (gMatchDepth > 0) {
    gBuried = true;
    buried_clauses.push_back(clause);
    return;
  }
  retire_code(clause->code);
  free_struct(clause->rhs);
  free_struct(clause->original);
  delete clause;
}

void free_buried_clauses() {
  gBuried = false;
  for (choice_node *list : std::exchange(buried_trees, {}))
    free_lhs_tree(list);
  for (rhs_link *clause : std::exchange(buried_clauses, {}))
    free_clause(clause);
  for (defs_link *group : std::exchange(buried_groups, {}))
    delete group;
}

void free_function_defs(func_block *fc) {
  // From here on nobody finds the clauses through the function; a match that runs holds its group.
  forget_plan(fc);
  defs_link *group = fc->defs;
  fc->defs = nullptr;
  while (group != nullptr) {
    free_lhs_tree(group->lhs_tree);
    rhs_link *clause = group->defs;
    while (clause != nullptr) {
      rhs_link *const next = clause->next;
      free_clause(clause);
      clause = next;
    }
    defs_link *const next = group->next;
    group->lhs_tree = nullptr;
    if (gMatchDepth > 0) {
      gBuried = true;
      buried_groups.push_back(group);
    } else {
      delete group;
    }
    group = next;
  }
  gSymbolTableChanged = 1;
}

} // namespace velora
