// Which part of a picture its window shows and how large: zooming about a point, fitting, moving
// with the hand. The stored text size of the picture stays what it is.
#pragma once

#include "editor/model/records.h"

namespace velora {

// Zooms about the middle of the window by steps, larger for positive ones; 1, or 0 without picture.
int zoom_by(const WinInfo *wi, int steps);
// Zooms to so many hundredths of the natural size.
int zoom_to(const WinInfo *wi, int percent);
// Shows the whole picture, at its natural size at the most.
int zoom_to_fit(const WinInfo *wi);

} // namespace velora
