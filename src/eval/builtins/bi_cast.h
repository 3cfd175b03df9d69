// The texts of values, for the families that write values to files or compare them by their text.
#pragma once

#include <string>

#include "core/records.h"

namespace velora {

// The text of a value as symtostr gives it: numbers in decimal, characters, strings and names
// without marks. 0 when the value has none (an application, a combinator).
int value_text(const node *n, std::string &text);

} // namespace velora
