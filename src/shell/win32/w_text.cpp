// Conversion of texts and of places in them. Touches nothing but its arguments.
#include "shell/win32/w_text.h"

#include "shell/win32/w_common.h"

namespace velora::win32 {

namespace {

bool low_surrogate(wchar_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

// Bytes of UTF-8 that one unit of UTF-16 stands for; a pair counts at its first half.
std::size_t bytes_of(wchar_t c) {
  if (!begins_character(c))
    return 0;
  if (c < 0x80)
    return 1;
  if (c < 0x800)
    return 2;
  return c >= 0xD800 && c <= 0xDBFF ? 4 : 3;
}

} // namespace

std::wstring widen(std::string_view text) {
  if (text.empty())
    return {};
  const int size = static_cast<int>(text.size());
  const int wide = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
  std::wstring out(static_cast<std::size_t>(wide), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, out.data(), wide);
  return out;
}

std::string narrow(std::wstring_view text) {
  if (text.empty())
    return {};
  const int size = static_cast<int>(text.size());
  const int bytes =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, out.data(), bytes, nullptr, nullptr);
  return out;
}

std::wstring to_edit(std::string_view text) {
  std::wstring out;
  for (const wchar_t c : widen(text)) {
    if (c == L'\n')
      out += L'\r';
    if (c != L'\r' && c != L'\0')
      out += c;
  }
  return out;
}

std::string from_edit(std::wstring_view text) {
  std::wstring out;
  out.reserve(text.size());
  for (const wchar_t c : text)
    if (c != L'\r')
      out += c;
  return narrow(out);
}

bool begins_character(wchar_t c) {
  return c != L'\r' && !low_surrogate(c);
}

std::size_t edit_place(std::wstring_view text, std::size_t at) {
  std::size_t place = 0;
  while (place < text.size() && (at > 0 || low_surrogate(text[place]))) {
    const std::size_t bytes = bytes_of(text[place++]);
    at = bytes > at ? 0 : at - bytes;
  }
  return place;
}

} // namespace velora::win32
