// Tidying a network picture: functions above those they call, few crossings, no box on another.
#pragma once

#include "editor/model/records.h"

namespace velora {

// Moves the visible boxes of a network to tidy places; pinned ones stay, and boxes that stand well
// move only where that makes a better picture. Wide ranks are dealt over several rows. Answers how
// many boxes moved. To be run inside the recording of changes for a shown picture.
int tidy_network(WinInfo *wi);

// True when two visible boxes of a picture overlap.
bool boxes_overlap(const WinInfo *wi);

} // namespace velora
