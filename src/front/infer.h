// The types of expressions, worked out from the declarations of the names in them: each name brings
// its declared type with fresh variables, an application makes the function's argument and what it
// is given one type. Nothing is evaluated. Used by `:type`, by `:set check on` and by the notes
// beside answers that could not be reduced.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/records.h"

namespace velora {

// Where the types of an expression do not fit.
struct TypeClash {
  std::string function; // whose argument it is
  int argument = 0;     // counted from 1
  std::string wanted;
  std::string found;
  const node *where = nullptr; // the argument, in the tree that was looked at
};

// Either a type or a clash. An expression of which nothing is known has the type "?0".
struct TypeFinding {
  bool fits = true;
  std::string type;
  TypeClash clash;
};

// The type of a parsed expression.
TypeFinding type_of_expression(const node *expression);
// Whether a clause fits the declaration of its function, and its body the result.
TypeFinding type_of_clause(const node *lhs, const node *rhs);
// The same of a call that stands in the query space, its last argument apart; looked at as far as
// a bounded number of nodes goes, what lies beyond counting as anything.
TypeFinding type_of_call(const node *function_part, const node *last);

// A parsed expression as it is written, on one line; `place` receives where the part `part` of it
// begins, if it is met. Cut behind `most` characters.
std::string expression_text(const node *root, std::size_t most, const node *part = nullptr,
                            std::size_t *place = nullptr);

} // namespace velora
