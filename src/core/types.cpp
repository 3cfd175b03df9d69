// Type trees: making, freeing and comparing them. Called by the declarations, the database layer
// and the type checks of pictures.
#include <cstdlib>
#include <vector>

#include "core/events.h"
#include "core/needs.h"
#include "core/trees.h"

namespace velora {

namespace {

top_node *new_top_node(std::uint8_t code, unsigned args, const char *failure) {
  // The record itself has room for one argument.
  const std::size_t extra = args > 1 ? (args - 1) * sizeof(top_node::tnu.u.ua) : 0;
  auto *t = static_cast<top_node *>(std::calloc(1, sizeof(top_node) + extra));
  if (t == nullptr)
    error_exit(failure);
  t->top_code = code;
  return t;
}

bool is_variable_type(const top_node *t) {
  return (t->top_code & kTypeVariable) != 0;
}
bool is_user_type(const top_node *t) {
  return (t->top_code & kTypeUser) != 0;
}

} // namespace

top_node *make_bi_top_node(std::uint8_t code) {
  return new_top_node(code, 0, "Alloc_bi_top_node failed");
}

top_node *make_arrow_node(top_node *type, top_node *next) {
  top_node *t = make_bi_top_node(kTypeArrow);
  t->tnu.bia[0] = type;
  t->tnu.bia[1] = next;
  return t;
}

top_node *make_user_top_node(symbol *s, unsigned args) {
  top_node *t =
      new_top_node(static_cast<std::uint8_t>(kTypeUser + args), args, "Alloc_user_top_node failed");
  t->tnu.u.s = s;
  return t;
}

void free_type_tree(top_node *t) {
  std::vector<top_node *> open;
  if (t != nullptr)
    open.push_back(t);
  while (!open.empty()) {
    top_node *const node = open.back();
    open.pop_back();
    if (node == nullptr)
      continue;
    if (!is_variable_type(node) && is_user_type(node)) {
      for (unsigned i = 0; i < type_arg_count(node); ++i)
        open.push_back(node->tnu.u.ua[i]);
    } else if (node->top_code == kTypeArrow) {
      open.push_back(node->tnu.bia[0]);
      open.push_back(node->tnu.bia[1]);
    }
    std::free(node);
  }
}

// Kept: a variable on the left equals whatever has the same low seven bits on the right.
int equal_type_tree(const top_node *tt1, const top_node *tt2) {
  check_stack();
  if (tt1 == nullptr || tt2 == nullptr)
    return tt1 == tt2;
  if (is_variable_type(tt1))
    return (tt1->top_code & 0x7F) == (tt2->top_code & 0x7F);
  if (is_user_type(tt1)) {
    if (is_variable_type(tt2) || !is_user_type(tt2) || tt1->tnu.u.s != tt2->tnu.u.s ||
        type_arg_count(tt1) != type_arg_count(tt2))
      return 0;
    for (unsigned i = type_arg_count(tt1); i-- > 0;)
      if (equal_type_tree(tt1->tnu.u.ua[i], tt2->tnu.u.ua[i]) == 0)
        return 0;
    return 1;
  }
  if (tt1->top_code == kTypeArrow)
    return tt2->top_code == kTypeArrow && equal_type_tree(tt1->tnu.bia[0], tt2->tnu.bia[0]) != 0 &&
           equal_type_tree(tt1->tnu.bia[1], tt2->tnu.bia[1]) != 0;
  return tt1->top_code == tt2->top_code;
}

} // namespace velora
