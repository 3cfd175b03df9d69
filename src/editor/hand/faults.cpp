// Remembering faults by the number of their segment; the picture is known by its address, which is
// only compared until the record is seen to stand in the list.
#include "editor/hand/faults.h"

#include <algorithm>

#include "editor/hand/tools.h"
#include "editor/model/wininfo.h"
#include "platform/desktop.h"

namespace velora {

namespace {

const WinInfo *faulty = nullptr;
std::vector<PictureFault> noted;
std::size_t at = 0;

void select_fault(WinInfo *wi, const PictureFault &fault) {
  select_only(wi, fault.slot);
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
}

} // namespace

void note_faults(const WinInfo *wi, std::vector<PictureFault> faults) {
  faulty = wi;
  noted = std::move(faults);
  at = 0;
}

std::vector<PictureFault> faults_of(const WinInfo *wi) {
  std::vector<PictureFault> standing;
  if (wi == faulty)
    std::copy_if(noted.begin(), noted.end(), std::back_inserter(standing),
                 [wi](const PictureFault &f) { return wi->seg_ments[f.slot] != nullptr; });
  return standing;
}

std::size_t shown_fault() {
  return at;
}

bool go_to_next_fault(WinInfo *wi) {
  const std::vector<PictureFault> faults = faults_of(wi);
  if (faults.empty())
    return false;
  // The first call goes to the first fault unless that is chosen already.
  const std::vector<int> chosen = selected_slots(wi);
  const bool there = at < faults.size() && chosen == std::vector<int>{faults[at].slot};
  at = there ? (at + 1) % faults.size() : std::min(at, faults.size() - 1);
  select_fault(wi, faults[at]);
  return true;
}

WinInfo *go_to_fault(const std::string &line) {
  WinInfo *wi = gWinInfo;
  while (wi != nullptr && wi != faulty)
    wi = wi->next;
  if (wi == nullptr || line.empty())
    return nullptr;
  const std::vector<PictureFault> faults = faults_of(wi);
  for (std::size_t i = 0; i < faults.size(); ++i) {
    if (faults[i].message.find(line) == std::string::npos)
      continue;
    at = i;
    select_fault(wi, faults[i]);
    return wi;
  }
  return nullptr;
}

} // namespace velora
