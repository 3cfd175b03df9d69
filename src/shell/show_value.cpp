// Evaluating a part of a picture: a copy of the picture whose result is that part runs as a query,
// and what the query prints goes into the bubble instead of the console.
#include "shell/show_value.h"

#include "editor/hand/hand.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/translate.h"
#include "front/cint.h"
#include "platform/response.h"
#include "shell/captured_console.h"

namespace velora {

namespace {

// The picture with that node as its only result.
void make_part(const WinInfo *wi, int slot, WinInfo &part) {
  CopyWinInfo(wi, &part);
  part.wtype = wi->wtype;
  if (slot == kResultSlot)
    return;
  std::vector<int> arcs;
  for (const Segm *arc : part.seg_ments[kResultSlot]->segb_ptr)
    arcs.push_back(arc->segnum);
  for (const int arc : arcs)
    remove_arc(arc, &part);
  put_arc_between(&part, slot, kResultSlot, kArc);
}

std::string one_line(std::string text) {
  for (char &c : text)
    c = c == '\n' || c == '\r' ? ' ' : c;
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? std::string()
                                    : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

int show_value(WinInfo *wi, int slot) {
  if (wi->wtype != kFunctionPicture || slot == 0 || wi->seg_ments[kResultSlot] == nullptr)
    return 0;
  WinInfo part;
  make_part(wi, slot, part);
  Translation t;
  if (!picture_query(&part, t))
    return 0;
  const InputValues values = ask_values(&part, t, false);
  Translation filled;
  if (!picture_query(&part, filled, values))
    return 0;
  std::string shown;
  {
    CapturedConsole console;
    cint_query(filled.text);
    shown = one_line(console.text);
  }
  show_bubble(wi, slot, shown.empty() ? "no value" : shown);
  return 1;
}

} // namespace velora
