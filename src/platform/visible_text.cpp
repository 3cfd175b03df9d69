// Escapes for terminals: control characters but newline and tab, also those of U+0080 to U+009F,
// and bytes that are no UTF-8.
#include "platform/visible_text.h"

#include <cstdint>
#include <cstdio>

namespace velora {

namespace {

constexpr std::uint32_t kDelete = 0x7F;
constexpr std::uint32_t kLastControl = 0x9F;

// The length that the first byte of a letter promises; 0 for a byte that begins none.
std::size_t promised_length(unsigned char c) {
  if (c < 0x80)
    return 1;
  if (c >= 0xC2 && c <= 0xDF)
    return 2;
  if (c >= 0xE0 && c <= 0xEF)
    return 3;
  return c >= 0xF0 && c <= 0xF4 ? 4 : 0;
}

// True when `text` may still become, or is, a letter: shortest forms only, no surrogates.
bool can_be_letter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  for (std::size_t i = 1; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if ((c & 0xC0) != 0x80)
      return false;
    const bool too_low = (first == 0xE0 && c < 0xA0) || (first == 0xF0 && c < 0x90);
    const bool too_high = (first == 0xED && c > 0x9F) || (first == 0xF4 && c > 0x8F);
    if (i == 1 && (too_low || too_high))
      return false;
  }
  return true;
}

std::string byte_escape(char c) {
  char text[8];
  std::snprintf(text, sizeof text, "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
  return text;
}

// A whole letter as it is shown.
std::string shown_letter(std::string_view letter) {
  const auto first = static_cast<unsigned char>(letter.front());
  if (letter.size() == 1 && (first >= ' ' || first == '\n' || first == '\t') && first != kDelete)
    return std::string(letter);
  if (letter.size() == 1)
    return byte_escape(letter.front());
  const std::uint32_t code =
      letter.size() == 2 ? (first & 0x1Fu) << 6 | (static_cast<unsigned char>(letter[1]) & 0x3Fu)
                         : kLastControl + 1;
  if (code > kLastControl)
    return std::string(letter);
  char text[8];
  std::snprintf(text, sizeof text, "\\u%04x", code);
  return text;
}

std::string escapes(std::string_view bytes) {
  std::string text;
  for (const char c : bytes)
    text += byte_escape(c);
  return text;
}

} // namespace

std::string VisibleText::add(std::string_view text) {
  std::string out;
  for (const char c : text) {
    begun_ += c;
    // A byte that does not go on with the letter begun ends it as no letter, and begins anew.
    if (begun_.size() > 1 && !can_be_letter(begun_)) {
      out += escapes(std::string_view(begun_).substr(0, begun_.size() - 1));
      begun_.assign(1, c);
    }
    const std::size_t length = promised_length(static_cast<unsigned char>(begun_.front()));
    if (length == 0)
      out += escapes(begun_);
    else if (begun_.size() == length)
      out += shown_letter(begun_);
    else
      continue;
    begun_.clear();
  }
  return out;
}

std::string VisibleText::rest() {
  const std::string out = escapes(begun_);
  begun_.clear();
  return out;
}

std::string visible(std::string_view text) {
  VisibleText all;
  std::string out = all.add(text);
  return out + all.rest();
}

} // namespace velora
