// Turning what was read of one picture into its segments. Private to the segment file.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"
#include "editor/model/seg_reader.h"

namespace velora {

// What a file says of one slot; `filled` false for an empty slot and for one that was unreadable.
struct SegEntry {
  bool filled = false;
  std::size_t line = 0;
  SegmentLine fields;
  std::string annot;
  std::vector<int> back;
  std::vector<int> forward;
};

// Gives a cleared picture the segments of entries 1 and up, and joins them. Links that lead
// nowhere, arcs without two ends and one-sided links are mended and noted, so that afterwards the
// invariants of segments hold. 1, or 0 when memory is short.
int fill_picture(WinInfo *wi, const std::vector<SegEntry> &entries, DamageList &damage);

} // namespace velora
