// Telling what does not fit the declarations. Called by the parsers and by `:type`.
#include "front/type_check.h"

#include <string>

#include "front/infer.h"
#include "front/notes.h"
#include "front/putils.h"

namespace velora {

int gCheckTypes = 0;

namespace {

constexpr std::size_t kMostShown = 400;

} // namespace

void note_finding(const TypeFinding &finding, const node *expression) {
  if (finding.fits)
    return;
  const TypeClash &clash = finding.clash;
  if (clash.argument == 0)
    advise(Note::body_clash, {clash.function, clash.wanted, clash.found});
  else
    advise(Note::type_clash,
           {std::to_string(clash.argument), clash.function, clash.wanted, clash.found});
  std::size_t place = 0;
  const std::string text = expression_text(expression, kMostShown, clash.where, &place);
  show_excerpt(text, place);
}

void check_query(const node *expression) {
  if (gCheckTypes != 0)
    note_finding(type_of_expression(expression), expression);
}

void check_clause(const node *lhs, const node *rhs) {
  if (gCheckTypes == 0)
    return;
  // A fault of the head has its place there, one of the body in the body.
  const TypeFinding head = type_of_expression(lhs);
  if (!head.fits)
    note_finding(head, lhs);
  else
    note_finding(type_of_clause(lhs, rhs), rhs);
}

} // namespace velora
