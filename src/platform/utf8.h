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

} // namespace velora
