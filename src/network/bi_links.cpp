// The built-ins of the function network: link_build, link_ffrom, link_fto, link_show. A link set is
// known to programs as the term `Linkage N`.
#include "core/print.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "network/links.h"

namespace velora {

namespace {

constexpr int kFilterFrom = 155;
constexpr int kFilterTo = 156;

// The number of the link set that an argument evaluates to; 0 when it is no `Linkage N`.
int linkage_number(node *arg) {
  evaluate(arg);
  if (!is_apply(arg) || !is_cons_node(arg->val.a.a1, kLinkage))
    return 0;
  node *number = arg->val.a.a2;
  if (number->type != kInteger)
    evaluate(number);
  return number->type == kInteger && number->val.i > 0 ? number->val.i : -1;
}

// Writes `Linkage num` over `target`.
int set_linkage(node *target, int num) {
  const Root cons(LMakeConstructor(bi_cons_table[kLinkage].cs));
  const Root number(LMakeInteger(num));
  return set_apply(target, cons, number);
}

// The name that stands for a function in an argument: its own node, or a text.
bool function_name(node **stack, int i, std::string &name) {
  node *arg = bi_arg(stack, i);
  switch (arg->type) {
  case kFunctionNode:
  case kBuiltin:
  case kConstructorNode:
  case kName:
    break;
  default:
    evaluate(arg);
  }
  switch (arg->type) {
  case kFunctionNode:
  case kBuiltin:
  case kConstructorNode:
  case kName:
    name = leaf_text(arg);
    return true;
  case kString:
    name = text_of(arg);
    return true;
  default:
    return false;
  }
}

int link_filter(node **stack, int spine_len, int op) {
  constexpr int kArguments = 2;
  if (spine_len < kArguments)
    return 0;
  const int num = linkage_number(bi_arg(stack, 1));
  std::string name;
  if (num == 0 || !function_name(stack, 2, name))
    return 0;
  return set_linkage(stack[kArguments], bi_link_filters(op, num, name));
}

} // namespace

int bi_link_build(node **stack, int) {
  if (links.empty())
    MakeFirstLinkage();
  return set_linkage(stack[0], 1);
}

int bi_link_ffrom(node **stack, int spine_len) {
  return link_filter(stack, spine_len, kFilterFrom);
}

int bi_link_fto(node **stack, int spine_len) {
  return link_filter(stack, spine_len, kFilterTo);
}

int bi_link_show(node **stack, int spine_len) {
  if (spine_len < 1)
    return 0;
  const int num = linkage_number(bi_arg(stack, 1));
  if (num == 0)
    return 0;
  return set_bool(stack[1], bi_link_show(num) != 0);
}

} // namespace velora
