// The layered layout of a network: every function gets a level above those it calls and a place in
// it, and a set of call links becomes the segments of a network picture.
#pragma once

#include "editor/model/records.h"

namespace velora {

// Lays out the pairs in `ipairs`. "There are no links in the Network" through the error exit.
void FixNetNodeLevels();
// Makes the segments of what was laid out last, frees the layout and answers the number of
// segments.
int do_layout(SegmArray &seg_ments);
// Lays out the network of the whole database from its file; answers the number of segments.
int MakeNetworkSegs(SegmArray &seg_ments);

} // namespace velora
