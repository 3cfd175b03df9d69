// Escapes for XML.
#include "platform/xml_text.h"

#include <algorithm>

#include "platform/utf8.h"

namespace velora {

std::string xml_text(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = whole_character(text);
    const char c = text.front();
    const bool no_character =
        length == 3 && text.starts_with("\xEF\xBF") && static_cast<unsigned char>(text[2]) >= 0xBE;
    if (length == 0 || no_character || (length == 1 && static_cast<unsigned char>(c) < ' ') ||
        c == 0x7F)
      out += "\xEF\xBF\xBD"; // the replacement character
    else if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else if (c == '&')
      out += "&amp;";
    else if (c == '"')
      out += "&quot;";
    else
      out += text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(1, length));
  }
  return out;
}

} // namespace velora
