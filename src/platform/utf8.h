// Characters of UTF-8 texts, for whoever counts, cuts or breaks them.
#pragma once

#include <cstddef>
#include <string_view>

namespace velora {

// True for the bytes of a character behind its first one.
constexpr bool continues_character(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

constexpr std::size_t count_characters(std::string_view text) {
  std::size_t count = 0;
  for (const char c : text)
    count += continues_character(c) ? 0 : 1;
  return count;
}

// The length in bytes of the character that `text`, which is not empty, begins with.
constexpr std::size_t first_character(std::string_view text) {
  std::size_t end = 1;
  while (end < text.size() && continues_character(text[end]))
    ++end;
  return end;
}

// Length in bytes of the valid character at the start of `text`, which is not empty; 0 when there
// is none.
constexpr std::size_t whole_character(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  std::size_t length = 1;
  if (lead >= 0x80)
    length = lead >= 0xF0 && lead <= 0xF4 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  if (lead > 0xF4 || length > text.size())
    return 0;
  for (std::size_t i = 1; i < length; ++i)
    if (!continues_character(text[i]))
      return 0;
  // Neither overlong forms nor surrogates are characters of a document.
  const auto second = length > 1 ? static_cast<unsigned char>(text[1]) : 0;
  if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
      (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
    return 0;
  return length;
}

} // namespace velora
