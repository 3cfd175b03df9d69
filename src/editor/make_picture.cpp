// Making function pictures from a network. The command "Create Functions from Network" calls it.
#include "editor/make_picture.h"

#include <algorithm>
#include <unordered_set>

#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/vel_cmp.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr int kColumns = 4;

// Places on the grid: column by column to the right, row by row down, then from the first row
// again.
class Grid {
public:
  Grid(const Rect &area, std::size_t count, int top)
      : column_(std::max(1, area.width() / (kColumns + 1))),
        row_(std::max(1, area.height() / (static_cast<int>(count) / 5 + 3))),
        top_(std::max(row_, top)), bottom_(area.height()), at_{column_, top_} {}

  Point take() {
    const Point taken = at_;
    at_.x += column_;
    if (at_.x > kColumns * column_) {
      at_.x = column_;
      at_.y += row_;
    }
    if (at_.y >= bottom_)
      at_.y = top_;
    return taken;
  }

private:
  int column_;
  int row_;
  int top_; // below what would count as an argument
  int bottom_;
  Point at_;
};

std::vector<std::string> callees(const Segm *node) {
  std::vector<std::string> names;
  std::unordered_set<std::string> met;
  for (const Segm *arc : node->segf_ptr)
    if (const Segm *end = arc_end(arc); end != nullptr && met.insert(end->label).second)
      names.push_back(end->label);
  return names;
}

} // namespace

int MakeFunctionPicture(const std::string &name, const std::vector<std::string> &names,
                        const Rect &area) {
  constexpr int kResultAbove = 12; // the bottom of the area
  WinInfo *wi = nullptr;
  if (names.empty() || NewWinInfo(0, kFunctionPicture, &wi) == 0)
    return 0;
  wi->name = name;
  wi->cmpnt = 0;
  wi->wth = area.width();
  wi->ht = area.height();
  const int height = NodeHeight(wi);
  add_node(wi, kToolParameter, area.width() / 2, area.height() - kResultAbove);
  Grid grid(area, names.size(), 2 * height);
  for (const std::string &callee : names) {
    const Point at = grid.take();
    const int slot = add_node(wi, kToolFunction, at.x, at.y);
    if (slot == 0)
      return 0;
    wi->seg_ments[slot]->label = callee;
  }
  wi->saved = 1;
  gSegsChanged = 1;
  DisplayResponsef("New picture stored for function %s\n", name.c_str());
  return 1;
}

PicturelessFunctions functions_without_picture(const WinInfo *network) {
  PicturelessFunctions found;
  std::unordered_set<std::string> met;
  for (int slot = 1; slot <= network->seg_ct; ++slot) {
    const Segm *seg = network->seg_ments[slot];
    if (seg == nullptr || seg->type != kBox || seg->segf_ptr.empty() ||
        !met.insert(seg->label).second)
      continue;
    if (!stored_components(seg->label).empty())
      ++found.skipped;
    else
      found.nodes.push_back(seg);
  }
  return found;
}

int NetworkToFunctions(const WinInfo *network) {
  const PicturelessFunctions found = functions_without_picture(network);
  const Rect area = picture_area(network);
  int made = 0;
  for (const Segm *seg : found.nodes)
    made += MakeFunctionPicture(seg->label, callees(seg), area);
  if (found.skipped != 0)
    DisplayResponsef("%d functions have pictures already\n", found.skipped);
  else if (made == 0)
    DisplayResponse("No function of the network calls another\n");
  return made;
}

} // namespace velora
