// Breaking and joining of typed text. Touches nothing but its arguments.
#include "shell/win32/w_breaks.h"

#include "shell/shown_text.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

std::wstring broken(std::wstring_view text, std::size_t longest_line) {
  std::wstring out;
  out.reserve(text.size() + (text.size() / longest_line + 1) * kBreak.size());
  LineBreaker line{longest_line};
  for (const wchar_t c : text) {
    if (line.breaks_before(c, begins_character(c)))
      out += kBreak;
    out += c;
    if (line.breaks_behind(c))
      out += kBreak;
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
