// Text between the program (bytes, UTF-8, lines ended by "\n") and the window system (UTF-16, lines
// in edit controls ended by "\r\n"). Used by every file of this folder.
#pragma once

#include <string>
#include <string_view>

namespace velora::win32 {

std::wstring widen(std::string_view text);
std::string narrow(std::wstring_view text);
// The same for the text of edit controls, with their line ends.
std::wstring to_edit(std::string_view text);
std::string from_edit(std::wstring_view text);
// Whether a unit of an edit control's text begins a character of the program's text: the second
// half of a pair and the "\r" of a line end do not.
bool begins_character(wchar_t c);
// Where byte `at` of from_edit(text) stands in `text`.
std::size_t edit_place(std::wstring_view text, std::size_t at);

} // namespace velora::win32
