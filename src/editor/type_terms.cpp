// Reading of types from labels. The parser of the language is not used: labels need not name
// declared types, and a wrong one must not print anything.
#include "editor/type_terms.h"

#include <utility>

#include "core/events.h"
#include "front/type_names.h"

namespace velora {

namespace {

class Reader {
public:
  explicit Reader(std::string_view text) : text_(text) {}

  // Types joined by arrows; the arrow binds to the right.
  TypeTerm arrows() {
    check_stack();
    TypeTerm type = applied();
    if (!skip_arrow())
      return type;
    TypeTerm function{kArrowHead, {}};
    function.args.push_back(std::move(type));
    function.args.push_back(arrows());
    return function;
  }

private:
  void skip_blanks() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\n' || text_[at_] == '\t'))
      ++at_;
  }
  bool at_arrow() const { return text_.substr(at_, 2) == "->"; }
  bool skip_arrow() {
    skip_blanks();
    if (!at_arrow())
      return false;
    at_ += 2;
    return true;
  }
  // A word or a type in brackets; empty at the end of a level.
  bool item(TypeTerm &type) {
    skip_blanks();
    if (at_ >= text_.size() || text_[at_] == ')' || at_arrow())
      return false;
    if (text_[at_] == '(') {
      ++at_;
      type = arrows();
      skip_blanks();
      at_ += at_ < text_.size() ? 1 : 0; // the closing bracket
      return true;
    }
    const std::size_t from = at_;
    while (at_ < text_.size() && !at_arrow() &&
           std::string_view(" \t\n()").find(text_[at_]) == std::string_view::npos)
      ++at_;
    type = TypeTerm{std::string(text_.substr(from, at_ - from)), {}};
    return true;
  }
  // A head with its arguments.
  TypeTerm applied() {
    TypeTerm type;
    if (!item(type))
      return type;
    for (TypeTerm argument; item(argument);)
      type.args.push_back(std::move(argument));
    return type;
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

} // namespace

TypeTerm read_type(std::string_view text) {
  return Reader(text).arrows();
}

std::string type_text(const TypeTerm &type) {
  check_stack();
  const auto argument = [](const TypeTerm &t) {
    return t.args.empty() ? type_text(t) : "(" + type_text(t) + ")";
  };
  if (type.head == kArrowHead && type.args.size() == 2) {
    const std::string from = type.args[0].head == kArrowHead ? "(" + type_text(type.args[0]) + ")"
                                                             : type_text(type.args[0]);
    return from + " -> " + type_text(type.args[1]);
  }
  std::string text = type.head;
  for (const TypeTerm &arg : type.args)
    text += " " + argument(arg);
  return text;
}

bool agrees_with_all(const TypeTerm &type) {
  return type.head.empty() || VariableType(type.head) != 0;
}

bool types_agree(const TypeTerm &a, const TypeTerm &b) {
  check_stack();
  if (agrees_with_all(a) || agrees_with_all(b))
    return true;
  if (a.head != b.head || a.args.size() != b.args.size())
    return false;
  for (std::size_t i = 0; i < a.args.size(); ++i)
    if (!types_agree(a.args[i], b.args[i]))
      return false;
  return true;
}

} // namespace velora
