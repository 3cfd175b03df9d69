// Keeps the stored network picture in step with the database.
#include "network/net_store.h"

#include <string>
#include <unordered_map>
#include <utility>

#include "editor/model/wininfo.h"
#include "network/net_lay.h"
#include "platform/response.h"

namespace velora {

namespace {

// A function that stood in the old picture keeps its box and looks; of two nodes of one name the
// first.
void keep_places(const WinInfo *old, SegmArray &segs, int count) {
  std::unordered_map<std::string, const Segm *> places;
  for (int i = 1; i <= old->seg_ct; ++i)
    if (const Segm *seg = old->seg_ments[i]; seg != nullptr && seg->type == kBox)
      places.emplace(seg->label, seg);
  for (int i = 1; i <= count; ++i) {
    Segm *seg = segs[i];
    const auto found = seg->type == kBox ? places.find(seg->label) : places.end();
    if (found == places.end())
      continue;
    seg->lx = found->second->lx;
    seg->ly = found->second->ly;
    seg->ux = found->second->ux;
    seg->uy = found->second->uy;
    // Its colour, and whether it is hidden or pinned, stay as the user left them.
    seg->style = found->second->style;
  }
}

} // namespace

int StoreNetwork() {
  SegmArray segs;
  const int count = MakeNetworkSegs(segs);
  WinInfo *wi = FindStoredPicture(kNetworkName, 0);
  const bool is_new = wi == nullptr;
  if (is_new) {
    if (NewWinInfo(0, kNetworkPicture, &wi) == 0)
      return 0;
    wi->name = kNetworkName;
    wi->cmpnt = 0;
  } else {
    keep_places(wi, segs, count);
  }
  wi->seg_ments = std::move(segs);
  wi->seg_ct = count;
  wi->saved = 1;
  gSegsChanged = 1;
  DisplayResponse(is_new ? "Network Created and Stored\n" : "Network Created and Updated\n");
  return 1;
}

} // namespace velora
