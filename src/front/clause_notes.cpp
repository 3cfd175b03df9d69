// Looking at a clause that has just been read.
#include "front/clause_notes.h"

#include <cstdint>
#include <set>

#include "core/walks.h"
#include "front/notes.h"
#include "platform/response.h"
#include "platform/trust.h"

namespace velora {

namespace {

std::size_t arguments_of(const node *head) {
  std::size_t count = 0;
  for (; head != nullptr && is_apply(head); head = head->val.a.a1)
    ++count;
  return count;
}

// A result type that may itself be a function takes further arguments in a clause.
bool result_takes_more(const top_node *types) {
  while (types != nullptr && types->top_code == kTypeArrow && types->tnu.bia[1] != nullptr)
    types = types->tnu.bia[1];
  if (types != nullptr && types->top_code == kTypeArrow)
    types = types->tnu.bia[0];
  return types == nullptr || types->top_code == kTypeArrow || types->top_code == kTypeSym ||
         (types->top_code & kTypeVariable) != 0;
}

std::size_t declared_arguments(const top_node *types) {
  std::size_t arrows = 0;
  for (; types != nullptr && types->top_code == kTypeArrow && types->tnu.bia[1] != nullptr;
       types = types->tnu.bia[1])
    ++arrows;
  return arrows;
}

std::set<int> variables_in(const node *root, std::uint8_t behind) {
  std::set<int> found;
  each_node(root, [&](const node *n) {
    const bool bound = behind == kLambda && is_apply(n) && n->val.a.a1 != nullptr &&
                       n->val.a.a1->type == kLambda && n->val.a.a2 != nullptr &&
                       n->val.a.a2->type == kVariable;
    if (bound)
      found.insert(n->val.a.a2->val.v);
    else if (behind == kVariable && n->type == kVariable)
      found.insert(n->val.v);
  });
  return found;
}

// The variables of a term as bits; all bits when one has a number beyond them.
std::uint64_t variable_bits(const node *root) {
  std::uint64_t bits = 0;
  each_node(root, [&bits](const node *n) {
    if (n->type == kVariable)
      bits |= n->val.v >= 0 && n->val.v < 64 ? std::uint64_t{1} << n->val.v : ~std::uint64_t{0};
  });
  return bits;
}

} // namespace

void note_clause(const func_block *fc, const node *lhs, const node *rhs) {
  if (gNotes == 0 || DatabaseReading::depth > 0) // what a program wrote
    return;
  const std::size_t has = arguments_of(lhs);
  const std::size_t declared = declared_arguments(fc->types);
  if (has > declared && has > fc->arity && !result_takes_more(fc->types))
    advise(Note::more_arguments, {fc->name, counted(declared, "argument"), std::to_string(has)});
  // Nearly every clause ends here, without sets.
  const std::uint64_t used = variable_bits(rhs);
  if ((used & ~variable_bits(lhs)) == 0 && used != ~std::uint64_t{0})
    return;
  std::set<int> bound = variables_in(lhs, kVariable);
  bound.merge(variables_in(rhs, kLambda));
  for (const int v : variables_in(rhs, kVariable))
    if (!bound.contains(v))
      advise(Note::unbound_variable, {std::to_string(v)});
}

} // namespace velora
