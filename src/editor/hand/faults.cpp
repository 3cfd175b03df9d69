// Remembering faults by the number of their segment; the picture is known by its address, which is
// only compared until the record is seen to stand in the list.
#include "editor/hand/faults.h"

#include <algorithm>
#include <optional>

#include "editor/hand/tools.h"
#include "editor/model/wininfo.h"
#include "platform/desktop.h"

namespace velora {

namespace {

const WinInfo *faulty = nullptr;
std::vector<PictureFault> noted;
std::size_t at = 0;

// The picture of the faults, when it is still shown; null otherwise.
WinInfo *faulty_picture() {
  WinInfo *wi = gWinInfo;
  while (wi != nullptr && wi != faulty)
    wi = wi->next;
  return wi;
}

// The fault of whose message `line` is a whole line.
std::optional<std::size_t> fault_told_by(const std::vector<PictureFault> &faults,
                                         const std::string &line) {
  for (std::size_t i = 0; i < faults.size() && !line.empty(); ++i)
    if (("\n" + faults[i].message + "\n").find("\n" + line + "\n") != std::string::npos)
      return i;
  return std::nullopt;
}

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

bool leads_to_fault(const std::string &line) {
  WinInfo *wi = faulty_picture();
  return wi != nullptr && fault_told_by(faults_of(wi), line);
}

WinInfo *go_to_fault(const std::string &line) {
  WinInfo *wi = faulty_picture();
  if (wi == nullptr)
    return nullptr;
  const std::vector<PictureFault> faults = faults_of(wi);
  const std::optional<std::size_t> told = fault_told_by(faults, line);
  if (!told)
    return nullptr;
  at = *told;
  select_fault(wi, faults[at]);
  return wi;
}

} // namespace velora
