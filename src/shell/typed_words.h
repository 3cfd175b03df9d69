// Reading of what is typed as a command: blanks cut off, and names that may be cut short.
#pragma once

#include <cstddef>
#include <string_view>

namespace velora {

// The text without what stands of `blanks` before and behind it; a part of `text` itself.
inline std::string_view trimmed(std::string_view text, std::string_view blanks = " \t\r\n") {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos)
    return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// The row of a table of commands that is called `name`, or the only one whose name begins so; null
// when there is none.
template <typename Row, std::size_t count>
const Row *row_called(const Row (&rows)[count], std::string_view name) {
  const Row *found = nullptr;
  int candidates = 0;
  for (const Row &row : rows) {
    if (name == row.name)
      return &row;
    if (std::string_view(row.name).starts_with(name)) {
      found = &row;
      ++candidates;
    }
  }
  return candidates == 1 ? found : nullptr;
}

} // namespace velora
