// A picture as words, for who cannot see it and for texts about pictures.
#pragma once

#include <string>

#include "editor/model/records.h"

namespace velora {

// "f: result list int; box 2 append, inputs box 3, box 4; hexagon 3 ?0": the name, then each node
// by its kind, number and label with what feeds it, from left to right. Selected nodes are so
// called.
std::string picture_outline(const WinInfo *wi);

} // namespace velora
