// Printing of query results. A result is only as evaluated as its printing requires, and what has
// been printed of a list is let go at once, so an endless list prints in bounded space.
#include "core/print.h"

#include <cstring>

#include "core/clock.h"
#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "core/symbols.h"
#include "platform/response.h"

namespace velora {

namespace {

int queries_printing = 0;

// Counts the queries that are being printed: one may run inside another.
struct PrintingQuery {
  PrintingQuery() { ++queries_printing; }
  ~PrintingQuery() { --queries_printing; }
};

void clear_guard(node *n) {
  if (n->quote != 0)
    note_change();
  n->quote = 0;
}

bool is_named(const node *n, const char *name) {
  return n->type == kConstructorNode && n->val.cs != nullptr &&
         std::strcmp(n->val.cs->name, name) == 0;
}

std::string number_text(const node *n) {
  switch (n->type) {
  case kInteger:
    return format_text(gNarPrint != 0 ? "%d" : "#%d", n->val.i);
  case kReal:
    return format_text(gNarPrint != 0 ? "%f" : "#r%f", static_cast<double>(n->val.r));
  case kCharacter:
    return gNarPrint != 0 ? std::string(1, n->val.c) : std::string{'\'', n->val.c, '\''};
  default: {
    const std::string text(n->val.s.str, static_cast<std::size_t>(n->val.s.len));
    return gNarPrint != 0 ? text : "\"" + text + "\"";
  }
  }
}

// Prints the term at `*p`, advancing `*p` along its right spine. `stays` tells that no rule applied
// to the term. Of such a term the function part is held until the last argument has been evaluated,
// so that both can be looked at together; what was printed of a list is still let go at once.
void print_term(node **p, bool stays) {
  bool inlist = false;
  std::size_t brackets = 0;
  while (is_apply(*p)) {
    CheckForUserEvents(0);
    Root held;
    if (part_of_list(*p) != 0) {
      if (!inlist)
        orvek_print("[ ");
      inlist = true;
      print((*p)->val.a.a1->val.a.a2);
      orvek_print(" ");
    } else {
      orvek_print("( ");
      print_args(own_function_part(*p));
      ++brackets;
      if (stays)
        held = (*p)->val.a.a1;
    }
    *p = (*p)->val.a.a2;
    if (*p == nullptr)
      break;
    stays = evaluate(*p) == 0;
    if (held.get() != nullptr)
      call_stays(held, *p, stays);
  }
  if (inlist && *p != nullptr && is_named(*p, "nil"))
    orvek_print("]");
  else
    print_node(*p);
  for (; brackets > 0; --brackets)
    orvek_print(")");
}

} // namespace

int print_spine() {
  if (Query_root == nullptr)
    return 1;
  PrintingQuery printing;
  if (queries_printing == 1)
    begin_answer();
  const int reduced = evaluate(Query_root);
  if (reduced == 0 && queries_printing == 1)
    whole_answer_stays(Query_root);
  print_term(&Query_root, reduced == 0);
  if (queries_printing == 1) {
    Query_root = nullptr;
    free_eval_roots();
    garbage_collect();
    free_retired();
    end_answer();
  }
  return 1;
}

int print(node *root) {
  check_stack();
  const bool stays = evaluate(root) == 0;
  node *at = root;
  print_term(&at, stays);
  return 1;
}

void print_out(node **p) {
  print_term(p, false);
}

void print_args(node *root) {
  check_stack();
  if (root == nullptr)
    return;
  if (is_apply(root)) {
    clear_guard(root);
    print_args(own_function_part(root));
    if (root->val.a.a2 != nullptr)
      print(root->val.a.a2);
  } else {
    print_node(root);
  }
  orvek_print(" ");
}

int part_of_list(const node *root) {
  if (!is_apply(root) || root->val.a.a1 == nullptr || root->val.a.a2 == nullptr)
    return 0;
  const node *fun = root->val.a.a1;
  if (!is_apply(fun) || fun->val.a.a1 == nullptr || fun->val.a.a2 == nullptr ||
      !is_named(fun->val.a.a1, ":"))
    return 0;
  return is_apply(root->val.a.a2) || is_named(root->val.a.a2, "nil");
}

std::string leaf_text(const node *n) {
  switch (n->type) {
  case kVariable:
    return format_text("?%d", n->val.v);
  case kLambda:
    return "lambda";
  case kBuiltin:
    return n->val.bi.fc == nullptr ? "BI?" : n->val.bi.fc->name;
  case kFunctionNode:
    return n->val.fc == nullptr ? "FN?" : n->val.fc->name;
  case kConstructorNode:
    return n->val.cs == nullptr ? "CS?" : n->val.cs->name;
  case kInteger:
  case kReal:
  case kCharacter:
  case kString:
    return number_text(n);
  case kName:
    return n->val.sym->name;
  default:
    if (n->type >= kCombI && n->type <= kCombC)
      return std::string(1, "IKSBC"[n->type - kCombI]);
    return format_text("Uninterpretable symbol found with internal code %d", n->type);
  }
}

void print_node(node *n) {
  if (n == nullptr)
    return;
  if ((n->flags & kStaticNode) == 0)
    clear_guard(n);
  if (!is_apply(n)) {
    orvek_print(leaf_text(n));
    return;
  }
  check_stack();
  orvek_print("(@");
  print_node(n->val.a.a1);
  print_node(n->val.a.a2);
  orvek_print(")");
}

} // namespace velora
