// A program's own definitions as data: listing clauses, taking them away, asking what is known and
// of which type. Called by the dispatcher. Clauses that run while they are removed live on until
// the query space lets go of them.
#include <algorithm>

#include "core/symbols.h"
#include "core/walks.h"
#include "eval/bi_support.h"
#include "eval/builtins/bi_maths.h"
#include "eval/builtins/families.h"
#include "eval/clause_terms.h"
#include "platform/response.h"

namespace velora {

namespace {

// Argument i as a user function, forced unless it stands as one; null when it is none.
func_block *force_function(node **stack, int i) {
  const node *f = force_arg(stack, i, kFunctionNode);
  return f == nullptr ? nullptr : f->val.fc;
}

// The function whose clauses may be changed at argument i, or null.
func_block *force_own_function(node **stack, int i) {
  func_block *fc = force_function(stack, i);
  return fc != nullptr && own_function(fc) != nullptr ? fc : nullptr;
}

int answer_fdefs(node **stack, std::uint8_t quote) {
  func_block *fc = force_function(stack, 1);
  if (fc == nullptr)
    return 0;
  return set_copy(stack[1], getb_fdefs(fc, quote));
}

bool has_variable(const node *root) {
  return any_node(root, [](const node *n) { return n->type == kVariable; });
}

// Compares the patterns of a head with the values in the cells from `list` on.
bool patterns_equal(const node *head, node *list) {
  for (const node *pattern : arguments_of(head)) {
    if (!is_cell(list))
      return false;
    const Root copy(LCopy(pattern));
    if (bi_equal_node(copy, cell_head(list)) == 0)
      return false;
    list = cell_tail(list);
  }
  return !is_cell(list);
}

std::string trimmed(std::string text) {
  while (!text.empty() && text.back() == ' ')
    text.pop_back();
  return text;
}

// The type of what a node names, or null.
const top_node *types_of(const node *n) {
  switch (n->type) {
  case kBuiltin:
    return n->val.bi.fc->types;
  case kFunctionNode:
    return n->val.fc->types;
  case kConstructorNode:
    return n->val.cs->types;
  default:
    return nullptr;
  }
}

// 1 when `sym` is a constructor of the type `type`.
bool constructs(const symbol *sym, const symbol *type) {
  const auto kind = sym->stype & kKindMask;
  if (kind != kConstructor || sym->b.cs->types == nullptr)
    return false;
  return GetSymbolOutput(sym->b.cs->types) == type;
}

} // namespace

int bi_list_fdefs(node **stack, int) {
  return answer_fdefs(stack, 1);
}

int bi_list_fdefs_eval(node **stack, int) {
  return answer_fdefs(stack, 0);
}

// deny [f p1 ... pn] removes the clauses of f whose patterns are equal to the values given.
int bi_deny(node **stack, int) {
  node *list = force_list(stack, 1);
  if (list == nullptr || !is_cell(list) || cell_head(list)->type != kFunctionNode)
    return 0;
  func_block *fc = cell_head(list)->val.fc;
  node *values = cell_tail(list);
  if (own_function(fc) == nullptr)
    return set_bool(stack[1], false);
  const int removed =
      remove_clauses(fc, [values](const node *head) { return patterns_equal(head, values); });
  return set_bool(stack[1], removed != 0);
}

// forget f removes the clauses of f whose patterns hold no variable.
int bi_forget(node **stack, int) {
  func_block *fc = force_own_function(stack, 1);
  if (fc == nullptr)
    return 0;
  const int removed = remove_clauses(fc, [](const node *head) { return !has_variable(head); });
  return set_bool(stack[1], removed != 0);
}

// denyall f removes the symbol of a function or constructor of the user's.
int bi_denyall(node **stack, int) {
  const node *what = force_arg(stack, 1, kFunctionNode);
  if (what == nullptr)
    what = bi_arg(stack, 1);
  symbol *sym = nullptr;
  if (what->type == kFunctionNode) {
    sym = own_function(what->val.fc);
  } else if (what->type == kConstructorNode) {
    sym = find_symbol(what->val.cs->name, 0);
    if (sym != nullptr && (sym->stype != kConstructor || sym->b.cs != what->val.cs))
      sym = nullptr;
  } else {
    return 0;
  }
  return set_bool(stack[1], sym != nullptr && remove_symbol(sym) != 0);
}

int bi_known(node **stack, int) {
  const node *name = force_arg(stack, 1, kString);
  if (name == nullptr)
    return 0;
  const std::string_view text = text_of(name);
  const bool sensible = !text.empty() && text.size() <= 255;
  return set_bool(stack[1], sensible && find_symbol(text.data(), text.size()) != nullptr);
}

// dump "fdec" names every symbol, dump "fdef" shows every definition, dump NAME that of one.
int bi_dump(node **stack, int) {
  const node *what = force_arg(stack, 1, kString);
  if (what == nullptr)
    return 0;
  const std::string text(text_of(what));
  int done = 1;
  if (text == "fdec") {
    for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next)
      orvek_printf("%s ", sym->name);
  } else if (text == "fdef") {
    print_all();
  } else {
    done = print_symbol(text.c_str());
  }
  return set_bool(stack[1], done != 0);
}

// ftypes f = the types of f's arguments and of its result, as texts.
int bi_ftypes(node **stack, int) {
  node *f = bi_arg(stack, 1);
  if (f->type != kFunctionNode)
    evaluate(f);
  const top_node *tn = types_of(bi_arg(stack, 1));
  if (tn == nullptr)
    return 0;
  ListBuilder types;
  for (; tn != nullptr; tn = tn->tnu.bia[1]) {
    std::string text;
    buffer_tspec(text, tn->top_code == kTypeArrow ? tn->tnu.bia[0] : tn);
    types.add_string(trimmed(text));
    if (tn->top_code != kTypeArrow)
      break;
  }
  return types.write_over(stack[1]);
}

// tdefs t = the constructors of the type t, in the order in which they were declared.
int bi_tdefs(node **stack, int) {
  const node *name = force_arg(stack, 1, kName);
  if (name == nullptr)
    return 0;
  const symbol *type = name->val.sym;
  std::vector<cons_block *> found;
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next)
    if (constructs(sym, type))
      found.push_back(sym->b.cs);
  std::reverse(found.begin(), found.end());
  ListBuilder constructors;
  for (cons_block *cs : found) {
    const Root one(LMakeConstructor(cs));
    constructors.add_shared(one);
  }
  return constructors.write_over(stack[1]);
}

} // namespace velora
