// The ranges of wide characters and of marks, as terminals take them. The table is coarse on
// purpose: whole blocks, no single letters.
#include "platform/char_width.h"

#include <cstddef>
#include <cstdint>

namespace velora {

namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

constexpr Range kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},
    {0xA000, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};
constexpr Range kMarks[] = {
    {0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
};

template <std::size_t N> bool is_in(const Range (&ranges)[N], std::uint32_t code) {
  for (const Range &range : ranges)
    if (code >= range.first && code <= range.last)
      return true;
  return false;
}

std::uint32_t code_of(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character[0]);
  if (lead < 0xC0)
    return lead;
  std::uint32_t code = lead < 0xE0 ? lead & 0x1F : lead < 0xF0 ? lead & 0x0F : lead & 0x07;
  for (const char c : character.substr(1))
    code = code << 6 | (static_cast<unsigned char>(c) & 0x3F);
  return code;
}

} // namespace

int columns_of_character(std::string_view character) {
  if (character.empty())
    return 0;
  const std::uint32_t code = code_of(character);
  return is_in(kMarks, code) ? 0 : is_in(kWide, code) ? 2 : 1;
}

} // namespace velora
