// Rows of tables as lines of text: fields joined by tabs, and lists as the console prints them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velora {

using TableRow = std::vector<std::string>;

// The fields of a line between its tabs; a line without tabs is one field.
TableRow split_row(std::string_view line);
// The fields joined by tabs.
std::string join_row(const TableRow &row);
// 1 when a text can stand in a field: it holds neither a tab nor a line end.
int fits_field(std::string_view text);

// The elements of a list printed on one line, such as [ #1 "two words" 'c' ], without their marks;
// the brackets around the whole may be missing. An element in brackets or parentheses is taken as
// it is written. Tabs inside an element become blanks.
TableRow list_line_fields(std::string_view line);

} // namespace velora
