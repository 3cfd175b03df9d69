// Adding to the program while it runs: clauses, remembered results, declarations, second names.
// Called by the dispatcher; the clauses go through the front end's add_defs.
#include <string>

#include "core/second_names.h"
#include "core/symbols.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "eval/clause_terms.h"
#include "front/cint.h"
#include "front/type_names.h"

namespace velora {

namespace {

const char *const kFoundNone = "non-function";
const char *const kWantedFunction = "asserted function";

// Adds the clause whose parts are the function, the patterns and the body; 1 when it was added.
int assert_parts(const char *builtin, const std::vector<node *> &parts) {
  const node *f = parts.front();
  if (f->type != kFunctionNode || own_function(f->val.fc) == nullptr) {
    report_bad_argument(builtin, kFoundNone, kWantedFunction);
    return 0;
  }
  return add_clause(f->val.fc, parts.data() + 1, static_cast<int>(parts.size()) - 2, parts.back());
}

std::vector<node *> spine_arguments(node **stack, int from, int to) {
  std::vector<node *> arguments;
  for (int i = from; i <= to; ++i)
    arguments.push_back(bi_arg(stack, i));
  return arguments;
}

// The elements of the list at argument 1; empty unless it is a proper list of two or more.
std::vector<node *> clause_elements(node *list) {
  std::vector<node *> elements;
  if (is_list(list) == 0)
    return elements;
  for (; is_cell(list); list = cell_tail(list))
    elements.push_back(cell_head(list));
  if (elements.size() < 2)
    elements.clear();
  return elements;
}

int assert_list(node **stack, const char *builtin) {
  const std::vector<node *> parts = clause_elements(bi_arg(stack, 1));
  if (parts.empty())
    return 0;
  return set_bool(stack[1], assert_parts(builtin, parts) != 0);
}

// The part of a declaration that a string, or the name of a type, gives; empty when it is none.
std::string declaration_part(const node *n) {
  if (n->type == kName)
    return n->val.sym->name;
  return n->type == kString ? std::string(text_of(n)) : std::string();
}

// "name ::= t1 -> t2 -> ... -> tn" from a list of texts; empty when it is no such list.
std::string declaration_text(const node *list) {
  std::string text;
  int count = 0;
  for (; is_cell(list); list = cell_tail(list), ++count) {
    const std::string part = declaration_part(cell_head(list));
    if (part.empty() || part.find_first_of(";\n\r") != std::string::npos)
      return {};
    text += count == 0 ? part + " ::= " : count == 1 ? part : " -> " + part;
  }
  return count < 2 ? std::string() : text;
}

int assert_declaration(node **stack, int (*declare)(const std::string &text)) {
  const node *list = force_list(stack, 1);
  const std::string text = list == nullptr ? std::string() : declaration_text(list);
  if (text.empty())
    return 0;
  return set_bool(stack[1], declare(text) != 0);
}

// The head of an application.
const node *head_of(const node *n) {
  while (is_apply(n))
    n = n->val.a.a1;
  return n;
}

// The entry that holds the definition named by `n`; null when there is none.
symbol *defined_symbol(const node *n) {
  const char *name = nullptr;
  switch (n->type) {
  case kName:
    return n->val.sym;
  case kBuiltin:
    name = n->val.bi.fc->name;
    break;
  case kFunctionNode:
    name = n->val.fc->name;
    break;
  case kConstructorNode:
    name = n->val.cs->name;
    break;
  default:
    break;
  }
  return name == nullptr ? nullptr : find_symbol(name, 0);
}

} // namespace

// assert f p1 ... pk body adds the clause f p1 ... pk = body.
int bi_assert(node **stack, int spine_len) {
  evaluate(bi_arg(stack, 1));
  return set_bool(stack[spine_len],
                  assert_parts("assert", spine_arguments(stack, 1, spine_len)) != 0);
}

int bi_assertq(node **stack, int spine_len) {
  return set_bool(stack[spine_len],
                  assert_parts("assertq", spine_arguments(stack, 1, spine_len)) != 0);
}

// assertl [f p1 ... pk body] adds the clause f p1 ... pk = body.
int bi_assertl(node **stack, int) {
  full_evaluate(bi_arg(stack, 1));
  return assert_list(stack, "assertl");
}

int bi_assertql(node **stack, int) {
  return assert_list(stack, "assertql");
}

// remember f a1 ... an = f a1 ... an, which is from now on a clause of f. The arguments and the
// value are forced completely, so that the clause is found by every equal call.
int bi_remember(node **stack, int spine_len) {
  if (is_apply(bi_arg(stack, 1)))
    evaluate(bi_arg(stack, 1));
  const node *f = bi_arg(stack, 1);
  if (f->type != kFunctionNode || own_function(f->val.fc) == nullptr)
    return report_bad_argument("remember", "non user function", "user defined function");
  func_block *fc = f->val.fc;
  if (fc->defs == nullptr || fc->arity != spine_len - 1)
    return 0;
  Root call(LMakeFunction(fc));
  for (int i = 2; i <= spine_len; ++i) {
    full_evaluate(bi_arg(stack, i));
    const Root arg(LCopy(bi_arg(stack, i)));
    call = LMakeApplyNode(call, arg);
  }
  const Root value(call.get());
  full_evaluate(value);
  const node *head = head_of(value);
  if (head->type == kFunctionNode && head->val.fc == fc)
    return 0;
  std::vector<node *> parts = spine_arguments(stack, 1, spine_len);
  parts.push_back(value);
  if (assert_parts("remember", parts) == 0)
    return 0;
  return set_copy(stack[spine_len], value);
}

// alias name g makes `name` a second name of what g names.
int bi_alias(node **stack, int) {
  const node *name = force_arg(stack, 1, kString);
  if (name == nullptr || name->val.s.len == 0 || name->val.s.len > 255)
    return 0;
  const std::string text = MakeStringValid(std::string(text_of(name)));
  if (!reads_as_name(text))
    return report_bad_argument("alias", text.c_str(), "new symbol");
  node *g = bi_arg(stack, 2);
  if (g->type != kFunctionNode)
    evaluate(g);
  const symbol *meant = defined_symbol(bi_arg(stack, 2));
  if (meant == nullptr)
    return 0;
  return set_bool(stack[2], make_alias(text, meant) != 0);
}

int bi_assertlfdec(node **stack, int) {
  return assert_declaration(stack, cint_fdec);
}

int bi_assertlcdec(node **stack, int) {
  return assert_declaration(stack, cint_cdec);
}

} // namespace velora
