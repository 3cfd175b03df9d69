// Splitting and joining of table rows, and reading of printed lists field by field.
#include "eval/builtins/table_rows.h"

#include <algorithm>

namespace velora {

TableRow split_row(std::string_view line) {
  TableRow row;
  for (;;) {
    std::size_t tab = line.find('\t');
    row.emplace_back(line.substr(0, tab));
    if (tab == std::string_view::npos)
      return row;
    line.remove_prefix(tab + 1);
  }
}

std::string join_row(const TableRow &row) {
  std::string line;
  for (std::size_t i = 0; i < row.size(); ++i)
    line += (i == 0 ? "" : "\t") + row[i];
  return line;
}

int fits_field(std::string_view text) {
  return text.find_first_of("\t\n\r") == std::string_view::npos ? 1 : 0;
}

namespace {

constexpr std::string_view kBlanks = " \t\r";

// Cuts `count` characters from the front of `rest`.
std::string_view cut(std::string_view &rest, std::size_t count) {
  std::string_view front = rest.substr(0, count);
  rest.remove_prefix(front.size());
  return front;
}

void skip_blanks(std::string_view &rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
}

// The element in brackets at the front, through the bracket that closes it.
std::string_view cut_nested(std::string_view &rest) {
  int open = 0;
  bool quoted = false;
  std::size_t at = 0;
  for (; at < rest.size(); ++at) {
    char c = rest[at];
    quoted = c == '"' ? !quoted : quoted;
    if (quoted)
      continue;
    open += c == '[' || c == '(' ? 1 : 0;
    open -= c == ']' || c == ')' ? 1 : 0;
    if (open == 0)
      return cut(rest, at + 1);
  }
  return cut(rest, at);
}

std::string_view cut_element(std::string_view &rest) {
  if (rest.front() == '"') {
    cut(rest, 1);
    std::string_view text = cut(rest, rest.find('"'));
    cut(rest, 1);
    return text;
  }
  if (rest.size() > 2 && rest[0] == '\'' && rest[2] == '\'')
    return cut(rest, 3).substr(1, 1);
  if (rest.front() == '[' || rest.front() == '(')
    return cut_nested(rest);
  if (rest.front() == '#')
    cut(rest, rest.size() > 1 && rest[1] == 'r' ? 2 : 1);
  return cut(rest, rest.find_first_of(" \t\r]"));
}

} // namespace

TableRow list_line_fields(std::string_view line) {
  TableRow row;
  std::string_view rest = line;
  skip_blanks(rest);
  if (!rest.empty() && rest.front() == '[')
    cut(rest, 1);
  else if (rest == "nil")
    return row;
  for (skip_blanks(rest); !rest.empty() && rest.front() != ']'; skip_blanks(rest)) {
    std::string field(cut_element(rest));
    std::replace(field.begin(), field.end(), '\t', ' ');
    row.push_back(field);
  }
  return row;
}

} // namespace velora
