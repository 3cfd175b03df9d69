// The beginning of a query, kept while it is read: when it turns out to be a clause or a
// declaration that stands outside its section, a note says where it belongs.
#pragma once

#include <string>

namespace velora {

class QueryStart {
public:
  // The first token of the query is current.
  QueryStart();
  // Called when the query could not be read. Answers 0.
  int failed() const;

private:
  std::string name_;
  bool defines_;
  bool declares_;
};

} // namespace velora
