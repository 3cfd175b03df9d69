// The word `it`: in a typed query it stands for the text of the last answer, as long as that text
// reads back and no symbol has the name. Nothing is entered anywhere; the word is replaced in the
// line before it is read.
#pragma once

#include <string>

namespace velora {

class LastAnswer {
public:
  // Keeps the answer of a query, or forgets the last one when this text is no expression.
  void keep(const std::string &text);
  // The line with every word `it` outside of texts replaced; the line itself when there is nothing
  // to put there.
  [[nodiscard]] std::string put_into(const std::string &line) const;

private:
  std::string text_;
};

// True when `line`, the first of a command, begins a query.
bool begins_query(const std::string &line);

} // namespace velora
