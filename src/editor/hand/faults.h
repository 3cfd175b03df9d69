// The faults that the last translation of a picture found, shown at the segments they are about.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"

namespace velora {

struct PictureFault {
  int slot = 0; // the segment, never 0
  std::string message;
};

// Puts the faults of a picture in place of those shown before, of whichever picture.
void note_faults(const WinInfo *wi, std::vector<PictureFault> faults);
// Those of a picture that still stand: a segment that is gone has none.
std::vector<PictureFault> faults_of(const WinInfo *wi);
// Selects the next faulty segment of a picture and shows its message beside it; false when there is
// none.
bool go_to_next_fault(WinInfo *wi);
// True when a line is one of the message of a fault that still stands.
bool leads_to_fault(const std::string &line);
// Selects the segment of the fault that a line tells. The picture, or null.
WinInfo *go_to_fault(const std::string &line);
// The fault whose message is shown, counted in faults_of.
std::size_t shown_fault();

} // namespace velora
