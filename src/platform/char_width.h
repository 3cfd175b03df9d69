// How many columns of a terminal a text takes: letters of East Asia and pictographs take two, marks
// that stand on the letter before them none.
#pragma once

#include <string_view>

namespace velora {

// Columns of the one character that `character` holds.
int columns_of_character(std::string_view character);

} // namespace velora
