// Texts for XML documents: drawings, graphs.
#pragma once

#include <string>
#include <string_view>

namespace velora {

// The text with its marks escaped and what a document may not hold (control characters, bytes that
// are no UTF-8) replaced, so that every document is well-formed.
std::string xml_text(std::string_view text);

} // namespace velora
