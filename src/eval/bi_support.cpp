// The helpers that every built-in family uses. What is held across the taking of a node is either
// part of the expression being reduced, and so reachable, or stands in a Root.
#include "eval/bi_support.h"

#include <array>

#include "core/events.h"
#include "core/text.h"
#include "core/walks.h"
#include "platform/response.h"

namespace velora {

ConsEntry bi_cons_table[kConsRows] = {
    {":", nullptr},      {"nil", nullptr},   {"True", nullptr},    {"False", nullptr},
    {"Pair", nullptr},   {"Black", nullptr}, {"White", nullptr},   {"Red", nullptr},
    {"Green", nullptr},  {"Blue", nullptr},  {"Cyan", nullptr},    {"Magenta", nullptr},
    {"Yellow", nullptr}, {"Quote", nullptr}, {"North", nullptr},   {"South", nullptr},
    {"East", nullptr},   {"West", nullptr},  {"NEast", nullptr},   {"SEast", nullptr},
    {"NWest", nullptr},  {"SWest", nullptr}, {"Linkage", nullptr},
};

// --- arguments ---------------------------------------------------------------------------------

node *force_arg_slowly(node **stack, int i, NodeType type) {
  evaluate(bi_arg(stack, i));
  node *arg = bi_arg(stack, i);
  return arg->type == type ? arg : nullptr;
}

node *force_number_slowly(node **stack, int i) {
  evaluate(bi_arg(stack, i));
  node *arg = bi_arg(stack, i);
  return arg->type == kInteger || arg->type == kReal ? arg : nullptr;
}

node *force_list(node **stack, int i) {
  full_evaluate(bi_arg(stack, i));
  node *arg = bi_arg(stack, i);
  return is_list(arg) ? arg : nullptr;
}

// --- results -----------------------------------------------------------------------------------

int set_real(node *target, float r) {
  target->type = kReal;
  target->quote = 0;
  target->val.r = r;
  return 1;
}

int set_char(node *target, char c) {
  target->type = kCharacter;
  target->quote = 0;
  target->val.c = c;
  return 1;
}

int set_string(node *target, std::string_view text) {
  char *str = new_text(text);
  target->type = kString;
  target->quote = 0;
  target->val.s.len = static_cast<int>(text.size());
  target->val.s.str = str;
  return 1;
}

int set_copy(node *target, const node *source) {
  overwrite_node(target, source);
  return 1;
}

int set_apply(node *target, node *fun, node *arg) {
  target->type = kApply;
  target->quote = 0;
  target->val.a.a1 = fun;
  target->val.a.a2 = arg;
  return 1;
}

// --- lists -------------------------------------------------------------------------------------

int is_list(const node *n) {
  while (is_cell(n))
    n = cell_tail(n);
  return is_nil(n) ? 1 : 0;
}

std::int32_t list_length(const node *n) {
  std::int32_t length = 0;
  for (; is_cell(n); n = cell_tail(n))
    ++length;
  return length;
}

ListBuilder::ListBuilder() {
  end_ = LMakeConstructor(bi_cons_table[kNil].cs);
}

// Every cell made ends in the one nil of the builder until the next cell takes its place, so the
// list is well formed at every moment.
node *ListBuilder::append(node *value) {
  CheckForUserEvents(800);
  work_ = LMakeConstructor(bi_cons_table[kCons].cs);
  work_ = LMakeApplyNode(work_, value);
  node *cell = LMakeApplyNode(work_, end_);
  if (last_ == nullptr)
    first_ = cell;
  else
    last_->val.a.a2 = cell;
  last_ = cell;
  return cell->val.a.a1;
}

void ListBuilder::add_shared(node *value) {
  append(value);
}

// The value of a new cell is nil until the one wanted has been made, so that the cell, and through
// it the value, is reachable from the start.
void ListBuilder::add_copy(const node *value) {
  node *place = append(end_);
  place->val.a.a2 = LCopy(value);
}

void ListBuilder::add_int(std::int32_t i) {
  node *place = append(end_);
  place->val.a.a2 = LMakeInteger(i);
}

void ListBuilder::add_real(float r) {
  node *place = append(end_);
  place->val.a.a2 = LMakeReal(r);
}

void ListBuilder::add_char(char c) {
  node *place = append(end_);
  place->val.a.a2 = LMakeCharacter(c);
}

void ListBuilder::add_string(std::string_view text) {
  node *place = append(end_);
  place->val.a.a2 = LMakeString(text);
}

void ListBuilder::add_list(ListBuilder &inner) {
  append(inner.finish());
}

node *ListBuilder::finish() {
  return last_ == nullptr ? end_.get() : first_.get();
}

int ListBuilder::write_over(node *target) {
  return set_copy(target, finish());
}

// --- function arguments ------------------------------------------------------------------------

namespace {

// A built-in that looks at its arguments as they stand, or has an effect each time it is applied.
bool is_special_builtin(std::string_view name) {
  static constexpr std::array<std::string_view, 11> names = {
      "lambda",   "assert", "assertq", "makelist", "compose", "permuteN",
      "remember", "prog",   "prog1",   "progN",    "nar_line"};
  if (name.starts_with("mp_"))
    return true;
  for (std::string_view special : names)
    if (name == special)
      return true;
  return false;
}

} // namespace

int ContainVarParFun(const node *f) {
  const bool contains = any_node(f, [](const node *n) {
    CheckForUserEvents(800);
    return n->type == kLambda || (n->type == kBuiltin && n->val.bi.fc != nullptr &&
                                  is_special_builtin(n->val.bi.fc->name));
  });
  return contains ? 1 : 0;
}

node *apply_copies(const node *f, const node *x) {
  const Root fun(LCopy(f));
  const Root arg(LCopy(x));
  return LMakeApplyNode(fun, arg);
}

// --- errors ------------------------------------------------------------------------------------

int report_bad_argument(const char *fun, const char *found, const char *expected) {
  orvek_errorf("Error (%s):  %s found when { %s } expected\n", fun, found, expected);
  return 0;
}

std::string MakeStringValid(std::string text) {
  for (char &c : text)
    if (std::string_view("[]():;-'\"").find(c) != std::string_view::npos)
      c = '_';
  return text;
}

} // namespace velora
