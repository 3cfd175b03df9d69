// Breaks for showing in what the user typed or pasted: edit controls are slow on long lines. Such a
// break is a line end of three units, which controls take for one of their own; it moves with the
// text while that is edited, and is left out when the text is read.
#pragma once

#include <string>
#include <string_view>

namespace velora::win32 {

inline constexpr std::wstring_view kBreak = L"\r\r\n";

// The text of an edit control with its longer lines broken, at a blank where there is one, and
// without breaks.
std::wstring broken(std::wstring_view text, std::size_t longest_line);
std::wstring without_breaks(std::wstring_view text);
bool has_longer_line(std::wstring_view text, std::size_t longest_line);

} // namespace velora::win32
