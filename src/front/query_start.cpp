// What a query that cannot be read may have been meant as.
#include "front/query_start.h"

#include "front/notes.h"
#include "front/parse.h"
#include "front/putils.h"
#include "front/source.h"

namespace velora {

QueryStart::QueryStart()
    : name_(pp_token == kTokName ? pp_start : ""),
      defines_(pp_token == kTokName && definition_follows()), declares_(false) {
  // "f ::= int -> int" has types behind the sign and nothing between it and the name.
  if (!defines_)
    return;
  const auto start = static_cast<std::size_t>(pp_start - pp_line_buffer.data());
  std::string line;
  std::size_t sign = 0;
  // Pieces of the line, until the statement's end stands in one.
  for (std::size_t piece = 256;; piece *= 2) {
    line = pp_line_part(start, start + piece);
    sign = line.find("::=");
    if (line.size() < piece ||
        (sign != std::string::npos && line.find(';', sign) != std::string::npos))
      break;
  }
  const std::string behind = line.substr(sign + 3, line.find(';', sign) - sign - 3);
  const std::size_t first = behind.find_first_not_of(' ');
  const std::string word = first == std::string::npos
                               ? ""
                               : behind.substr(first, behind.find_first_of(" ;", first) - first);
  declares_ = behind.find("->") != std::string::npos || word == "int" || word == "str" ||
              word == "real" || word == "char" || word == "sym";
}

int QueryStart::failed() const {
  if (defines_)
    advise(declares_ ? Note::declaration_outside : Note::clause_outside, {name_});
  return 0;
}

} // namespace velora
