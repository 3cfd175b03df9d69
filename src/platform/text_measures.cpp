// The widths of texts in pictures.
#include "platform/text_measures.h"

#include "platform/utf8.h"

namespace velora {

int measured_width(std::string_view text, const Font &font) {
  int cells = 0;
  while (!text.empty()) {
    text.remove_prefix(std::max<std::size_t>(1, whole_character(text)));
    ++cells;
  }
  return (cells * font.size * 2 + 2) / 3;
}

} // namespace velora
