// The page of keys, made from the tables that the program acts on: docs/keys.md is this text.
#pragma once

#include <string>

namespace velora {

std::string keys_page();

} // namespace velora
