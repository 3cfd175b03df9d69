// Places that a layout has to respect: pinned boxes, and those of an earlier layout. Private to
// the layered layout.
#pragma once

#include "editor/model/layered_layout.h"

namespace velora {

// Changes a fresh layout so that pinned boxes stand where they are pinned and nothing else lies on
// them. With `keep_places` the layout becomes the boxes' own one with its faults mended, when that
// reads about as well as the fresh one.
void keep_places(std::span<const LayeredBox> boxes, std::span<const LayeredArrow> arrows,
                 const LayeredOptions &options, LayeredResult &result);

} // namespace velora
