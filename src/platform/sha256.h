// The SHA-256 sum of a text: what a file holds, in a form that nobody can match on purpose.
#pragma once

#include <string>
#include <string_view>

namespace velora {

// The sum as 64 hexadecimal digits in lower case.
std::string sha256(std::string_view text);

} // namespace velora
