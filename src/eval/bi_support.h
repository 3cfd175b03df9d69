// What every built-in family uses: reading arguments off the spine, forcing them, writing results
// and building lists. A built-in gets the spine: stack[0] is its own node, stack[i] the application
// to its i-th argument. It answers 1 when it has rewritten the expression and 0 when it refuses.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/needs.h"
#include "core/print.h"
#include "core/space.h"
#include "eval/evaluate.h"

namespace velora {

// Rows of the table of built-in constructors.
enum ConsRow {
  kCons,
  kNil,
  kTrue,
  kFalse,
  kPair,
  kConsBlack,
  kConsWhite,
  kConsRed,
  kConsGreen,
  kConsBlue,
  kConsCyan,
  kConsMagenta,
  kConsYellow,
  kQuoteCons,
  kNorth,
  kSouth,
  kEast,
  kWest,
  kNEast,
  kSEast,
  kNWest,
  kSWest,
  kLinkage,
  kConsRows
};
struct ConsEntry {
  const char *name;
  cons_block *cs; // filled at start-up
};
extern ConsEntry bi_cons_table[kConsRows];

// --- arguments ---------------------------------------------------------------------------------
// The i-th argument (1, 2, ...) as it stands.
inline node *bi_arg(node **stack, int i) {
  return stack[i]->val.a.a2;
}
// The two that follow, once an argument must be evaluated.
node *force_arg_slowly(node **stack, int i, NodeType type);
node *force_number_slowly(node **stack, int i);
// The i-th argument, evaluated unless it already is of `type`; null when it then is not.
// The node stays reachable through the spine.
inline node *force_arg(node **stack, int i, NodeType type) {
  node *arg = bi_arg(stack, i);
  return arg->type == type ? arg : force_arg_slowly(stack, i, type);
}
// The i-th argument evaluated unless it is an integer or real already; null when neither.
inline node *force_number(node **stack, int i) {
  node *arg = bi_arg(stack, i);
  const bool ready = arg->type == kInteger || arg->type == kReal;
  return ready ? arg : force_number_slowly(stack, i);
}
// The i-th argument forced completely; null unless it then is a proper list.
node *force_list(node **stack, int i);

// Texts of string nodes (they may hold any byte but NUL).
inline std::string_view text_of(const node *n) {
  return {n->val.s.str, static_cast<std::size_t>(n->val.s.len)};
}

// --- results -----------------------------------------------------------------------------------
// Each writes over `target` (an application node, or a built-in's own node) and answers 1.
inline int set_int(node *target, std::int32_t i) {
  target->type = kInteger;
  target->quote = 0;
  target->val.i = i;
  return 1;
}
int set_real(node *target, float r);
int set_char(node *target, char c);
int set_string(node *target, std::string_view text);
inline int set_cons(node *target, ConsRow row) {
  target->type = kConstructorNode;
  target->quote = 0;
  target->val.cs = bi_cons_table[row].cs;
  return 1;
}
inline int set_bool(node *target, bool truth) {
  return set_cons(target, truth ? kTrue : kFalse);
}
int set_copy(node *target, const node *source);
// Makes `target` the application of `fun` to `arg`.
int set_apply(node *target, node *fun, node *arg);

// --- lists -------------------------------------------------------------------------------------
inline bool is_cons_node(const node *n, ConsRow row) {
  return n->type == kConstructorNode && n->val.cs == bi_cons_table[row].cs;
}
inline bool is_nil(const node *n) {
  return is_cons_node(n, kNil);
}
inline bool is_true(const node *n) {
  return is_cons_node(n, kTrue);
}
// A cell ((: head) tail).
inline bool is_cell(const node *n) {
  return is_apply(n) && is_apply(n->val.a.a1) && is_cons_node(n->val.a.a1->val.a.a1, kCons);
}
inline node *cell_head(const node *cell) {
  return cell->val.a.a1->val.a.a2;
}
inline node *cell_tail(const node *cell) {
  return cell->val.a.a2;
}
// 1 when every cell down to "nil" is in place; looks only, forces nothing.
int is_list(const node *n);
// Length of a proper list.
std::int32_t list_length(const node *n);

// Builds a list in order with a pointer to its end. Keeps itself reachable. Values handed to
// add_shared must be reachable through other roots while they are added.
class ListBuilder {
public:
  ListBuilder();
  // Appends a cell that shares `value`.
  void add_shared(node *value);
  // Appends a cell with a copy of `value`.
  void add_copy(const node *value);
  void add_int(std::int32_t i);
  void add_real(float r);
  void add_char(char c);
  void add_string(std::string_view text);
  // Appends a cell that holds the list of `inner`, which is finished by it.
  void add_list(ListBuilder &inner);
  // The list so far, ending in nil; no more may be added afterwards.
  node *finish();
  // finish() and overwrite `target` with it; answers 1.
  int write_over(node *target);

private:
  // Makes and appends a cell; answers its ((: value)) part.
  node *append(node *value);
  Root end_; // the nil at the end
  Root first_;
  Root work_;
  node *last_ = nullptr;
};

// 1 when a function argument must be copied unforced for each use: it contains a lambda, or one of
// the built-ins that look at their arguments unevaluated.
int ContainVarParFun(const node *f);

// A query-space application of fresh copies, as the list built-ins apply their function.
node *apply_copies(const node *f, const node *x);

// --- errors ------------------------------------------------------------------------------------
// Reports an argument of the wrong sort through the error display:
// "Error (%s):  %s found when { %s } expected\n". Answers 0.
int report_bad_argument(const char *fun, const char *found, const char *expected);

// Every character of "[]():;-'" and '"' becomes '_'.
std::string MakeStringValid(std::string text);

} // namespace velora
