// Pictures told in words.
#include "editor/outline.h"

#include <gtest/gtest.h>

#include "editor/model/wininfo.h"
#include "kit/pictures.h"

namespace velora {

namespace {

Segm *put_node(WinInfo &wi, int slot, int type, const char *label, int x) {
  if (wi.seg_ments.slots() <= slot)
    wi.seg_ments.resize(slot + 1);
  auto node = std::make_unique<Segm>();
  node->type = type;
  node->segnum = slot;
  node->label = label;
  node->lx = x;
  node->ux = x + 10;
  Segm *made = node.get();
  wi.seg_ments.put(slot, std::move(node));
  return made;
}

void join(WinInfo &wi, int slot, Segm *from, Segm *to) {
  Segm *arc = put_node(wi, slot, kArc, "", 0);
  arc->segb_ptr.push_back(from);
  arc->segf_ptr.push_back(to);
  from->segf_ptr.push_back(arc);
  to->segb_ptr.push_back(arc);
}

} // namespace

TEST(Outline, TellsNodesAndWhatFeedsThemFromLeftToRight) {
  WinInfo wi;
  EXPECT_EQ(picture_outline(&wi), "unnamed: empty");
  wi.name = "f";
  Segm *result = put_node(wi, 1, kHexagon, "list int", 0);
  Segm *append = put_node(wi, 2, kBox, "append", 0);
  Segm *right = put_node(wi, 3, kBox, "b", 200);
  Segm *left = put_node(wi, 4, kHexagon, "?0", 100);
  join(wi, 5, append, result);
  join(wi, 6, right, append);
  join(wi, 7, left, append);
  right->status |= kSelected;
  EXPECT_EQ(picture_outline(&wi),
            "f: result list int, input box 2; box 2 append, inputs hexagon 4, box 3; "
            "box 3 b, selected; hexagon 4 ?0");
}

// As the arrows at a box are numbered: of two inputs one above the other the upper comes first.
TEST(Outline, InputsAreTheArgumentsInTheirOrder) {
  WinInfo wi;
  wi.name = "f";
  put_node(wi, 1, kHexagon, "int", 0);
  Segm *minus = put_node(wi, 2, kBox, "-", 0);
  Segm *lower = put_node(wi, 3, kHexagon, "#1", 100);
  Segm *upper = put_node(wi, 4, kHexagon, "#2", 100);
  lower->ly = 60;
  lower->uy = 80;
  upper->ly = 20;
  upper->uy = 40;
  join(wi, 5, lower, minus);
  join(wi, 6, upper, minus);
  EXPECT_NE(picture_outline(&wi).find("box 2 -, inputs hexagon 4, hexagon 3;"), std::string::npos)
      << picture_outline(&wi);
}

TEST(Outline, ANetworkHasNoResult) {
  WinInfo wi;
  wi.wtype = kNetworkPicture;
  wi.name = kNetworkName;
  put_node(wi, 1, kBox, "main", 0);
  EXPECT_EQ(picture_outline(&wi), "$$NETWORK$$: box 1 main");
}

} // namespace velora
