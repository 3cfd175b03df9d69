// Breaking and joining of typed text. Touches nothing but its arguments.
#include "shell/win32/w_breaks.h"

#include "shell/shown_text.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

std::size_t longest_line_of(std::size_t size) {
  return size > kBulk ? kLongestBulkLine : kLongestShownLine;
}

// A line without a blank may be a quarter longer, as in the text that the program writes.
std::wstring broken(std::wstring_view text, std::size_t longest_line) {
  std::wstring out;
  out.reserve(text.size() + (text.size() / longest_line + 1) * kBreak.size());
  std::size_t column = 0;
  const auto add_break = [&] {
    out += kBreak;
    column = 0;
  };
  for (const wchar_t c : text) {
    if (column >= longest_line + longest_line / 4 && begins_character(c) && c != L'\n')
      add_break();
    out += c;
    column = c == L'\n' ? 0 : column + 1;
    if (c == L' ' && column >= longest_line)
      add_break();
  }
  return out;
}

std::wstring without_breaks(std::wstring_view text) {
  std::wstring out;
  out.reserve(text.size());
  for (std::size_t at; (at = text.find(kBreak)) != std::wstring_view::npos;) {
    out += text.substr(0, at);
    text.remove_prefix(at + kBreak.size());
  }
  return out += text;
}

bool has_longer_line(std::wstring_view text, std::size_t longest_line) {
  for (std::size_t end; (end = text.find(L'\n')) != std::wstring_view::npos;) {
    if (end > longest_line)
      return true;
    text.remove_prefix(end + 1);
  }
  return text.size() > longest_line;
}

} // namespace velora::win32
