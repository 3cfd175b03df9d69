// The conversion built-ins: between numbers, characters, strings, names, truth values, lists and
// terms. Called by the dispatcher with the spine.
#include "eval/builtins/bi_cast.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include "core/symbols.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "eval/builtins/user_terms.h"
#include "front/parse.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr std::int64_t kMostInteger = 2147483647;

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// The value that a name of the symbol table stands for; null when it stands for none.
node *symbol_value(const symbol *sym) {
  std::uint8_t kind = sym->stype & kKindMask;
  if (kind & kTypeNameBit)
    return LMakeName(const_cast<symbol *>(sym));
  if (kind == kConstructor)
    return LMakeConstructor(sym->b.cs);
  if (!(kind & kFunctionBit))
    return nullptr;
  if (sym->stype & kBuiltinBit)
    return LMakeBuiltin(sym->b.fc, sym->b.fc->max_var);
  return LMakeFunction(sym->b.fc);
}

// 1 when a completely forced value is of the basic kind that `name` gives.
bool is_of_kind(const node *value, std::string_view name) {
  struct Kind {
    std::string_view name;
    std::uint8_t type;
  };
  static constexpr Kind kinds[] = {{"char", kCharacter},
                                   {"int", kInteger},
                                   {"real", kReal},
                                   {"str", kString},
                                   {"var", kVariable}};
  for (const Kind &kind : kinds)
    if (kind.name == name)
      return value->type == kind.type;
  if (name == "list")
    return is_list(value) != 0;
  return name == "exp" && is_apply(value) && !is_list(value);
}

} // namespace

int value_text(const node *n, std::string &text) {
  switch (n->type) {
  case kVariable:
    text = format_text("?%d", n->val.v);
    return 1;
  case kBuiltin:
    text = n->val.bi.fc->name;
    return 1;
  case kFunctionNode:
    text = n->val.fc->name;
    return 1;
  case kConstructorNode:
    text = n->val.cs->name;
    return 1;
  case kInteger:
    text = format_text("%d", n->val.i);
    return 1;
  case kCharacter:
    text = n->val.c == '\0' ? std::string() : std::string(1, n->val.c);
    return 1;
  case kReal:
    text = format_text("%f", static_cast<double>(n->val.r));
    return 1;
  case kString:
    text = text_of(n);
    return 1;
  case kName:
    text = n->val.sym->name;
    return 1;
  default:
    return 0;
  }
}

int bi_symtostr(node **stack, int) {
  evaluate(bi_arg(stack, 1));
  std::string text;
  if (!value_text(bi_arg(stack, 1), text))
    return 0;
  return set_string(stack[1], text);
}

int bi_strtosym(node **stack, int) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr || s->val.s.len == 0)
    return 0;
  const symbol *sym = find_symbol(s->val.s.str, static_cast<std::size_t>(s->val.s.len));
  const node *value = sym == nullptr ? nullptr : symbol_value(sym);
  if (value == nullptr)
    return 0;
  overwrite_node(stack[1], value);
  return 1;
}

// Everything but the digits is dropped first; a number beyond 32 bits gives the nearest one that
// fits, with the note that such a literal gets.
int bi_str_to_int(node **stack, int) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr)
    return 0;
  bool any = false;
  std::int64_t number = 0;
  for (char c : text_of(s)) {
    if (!is_digit(c))
      continue;
    any = true;
    if (number <= kMostInteger)
      number = number * 10 + (c - '0');
  }
  if (number > kMostInteger) {
    number = kMostInteger;
    note_integer_bounds(format_text("%lld", static_cast<long long>(number)));
  }
  return any ? set_int(stack[1], static_cast<std::int32_t>(number)) : 0;
}

int bi_int_to_str(node **stack, int) {
  const node *n = force_arg(stack, 1, kInteger);
  return n == nullptr ? 0 : set_string(stack[1], format_text("%d", n->val.i));
}

// Everything but digits and points is dropped first; what follows a second point is not read.
int bi_str_to_real(node **stack, int) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr)
    return 0;
  std::string digits;
  for (char c : text_of(s))
    if (is_digit(c) || c == '.')
      digits += c;
  char *end = nullptr;
  float number = std::strtof(digits.c_str(), &end);
  return end == digits.c_str() ? 0 : set_real(stack[1], number);
}

int bi_real_to_str(node **stack, int) {
  const node *x = force_number(stack, 1);
  std::string text;
  return x == nullptr || !value_text(x, text) ? 0 : set_string(stack[1], text);
}

// A real that no integer can hold is refused.
int bi_fix(node **stack, int) {
  const node *x = force_number(stack, 1);
  if (x == nullptr)
    return 0;
  if (x->type == kInteger)
    return set_int(stack[1], x->val.i);
  double whole = std::trunc(static_cast<double>(x->val.r));
  if (!(whole >= -2147483648.0 && whole <= 2147483647.0))
    return 0;
  return set_int(stack[1], static_cast<std::int32_t>(whole));
}

int bi_float(node **stack, int) {
  const node *x = bi_arg(stack, 1);
  if (x->type != kInteger && x->type != kCharacter)
    evaluate(bi_arg(stack, 1));
  if (x->type == kInteger)
    return set_real(stack[1], static_cast<float>(x->val.i));
  if (x->type == kCharacter)
    return set_real(stack[1], static_cast<float>(static_cast<signed char>(x->val.c)));
  return 0;
}

int bi_inttovar(node **stack, int) {
  const node *n = force_arg(stack, 1, kInteger);
  if (n == nullptr || n->val.i < 0)
    return 0;
  overwrite_node(stack[1], LMakeVariable(n->val.i));
  return 1;
}

int bi_vartoint(node **stack, int) {
  const node *v = force_arg(stack, 1, kVariable);
  return v == nullptr ? 0 : set_int(stack[1], v->val.v);
}

// Binary digits, most significant first; 0 has none.
int bi_inttobool(node **stack, int) {
  const node *n = force_arg(stack, 1, kInteger);
  if (n == nullptr || n->val.i < 0)
    return 0;
  auto number = static_cast<std::uint32_t>(n->val.i);
  int top = 31;
  while (top >= 0 && (number >> top) == 0)
    --top;
  ListBuilder digits;
  for (int bit = top; bit >= 0; --bit) {
    Root digit(LMakeConstructor(bi_cons_table[(number >> bit) & 1 ? kTrue : kFalse].cs));
    digits.add_shared(digit);
  }
  return digits.write_over(stack[1]);
}

int bi_booltoint(node **stack, int) {
  const node *list = force_list(stack, 1);
  if (list == nullptr)
    return 0;
  std::int64_t number = 0;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell)) {
    const node *digit = cell_head(cell);
    if (!is_true(digit) && !is_cons_node(digit, kFalse))
      return 0;
    number = number * 2 + (is_true(digit) ? 1 : 0);
    if (number > kMostInteger)
      return 0;
  }
  return set_int(stack[1], static_cast<std::int32_t>(number));
}

int bi_isbitype(node **stack, int) {
  full_evaluate(bi_arg(stack, 1));
  const node *name = force_arg(stack, 2, kString);
  if (name == nullptr)
    return 0;
  return set_bool(stack[2], is_of_kind(bi_arg(stack, 1), text_of(name)));
}

int bi_exptolist(node **stack, int spine_len) {
  evaluate(bi_arg(stack, 1));
  return bi_exptolistq(stack, spine_len);
}

int bi_exptolistq(node **stack, int) {
  overwrite_node(stack[1], user_expr_to_list(bi_arg(stack, 1)));
  return 1;
}

int bi_listtoexp(node **stack, int) {
  const node *list = force_list(stack, 1);
  if (list == nullptr)
    return 0;
  overwrite_node(stack[1], user_list_to_expr(list));
  return 1;
}

} // namespace velora
