// What the graphics families share: whole numbers, points and colours from arguments, and adding
// to the current window.
#pragma once

#include <optional>

#include "core/records.h"
#include "eval/graphics_model.h"

namespace velora {

// The n arguments from `first` on, each an integer, cut to what a canvas can hold; false when one
// is none.
bool force_coordinates(node **stack, int first, int n, int *out);
// Argument i as one of the eight colours.
std::optional<Colour> force_colour(node **stack, int i);
// Shows what was added to the current window.
void redraw_current();

} // namespace velora
