// Tidying: what it must keep, and what it must mend.
#include <gtest/gtest.h>

#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/tidy.h"
#include "kit/pictures.h"

using namespace velora;
using namespace velora::kit;

namespace {

class TidyTest : public PictureTest {
protected:
  // f a b: result(1) <- g(4) <- a(2), b(3) and h(5) <- b(3), all on one heap but in order.
  static WinInfo *heap() {
    WinInfo *wi = picture("f");
    place_node(wi, kHexagon, kBold, "int", {200, 90, 230, 110});
    place_node(wi, kHexagon, kBold, "list int", {100, 4, 130, 24});
    place_node(wi, kHexagon, kBold, "list int", {150, 4, 180, 24});
    place_node(wi, kBox, kPlain, "a_long_name", {200, 80, 230, 100});
    place_node(wi, kBox, kPlain, "another_name", {205, 80, 235, 100});
    join(wi, 4, 1);
    join(wi, 2, 4);
    join(wi, 3, 4);
    join(wi, 5, 4);
    join(wi, 3, 5);
    return wi;
  }
};

std::vector<int> slots_of(const std::vector<Segm *> &nodes) {
  std::vector<int> slots;
  for (const Segm *node : nodes)
    slots.push_back(node->segnum);
  return slots;
}

TEST_F(TidyTest, BoxesComeApartInRowsByDepth) {
  WinInfo *wi = heap();
  EXPECT_NE(layout_fault(wi), "");
  ASSERT_TRUE(tidy_picture(wi));
  EXPECT_EQ(layout_fault(wi), "");
  EXPECT_EQ(slots_of(argument_nodes(wi)), (std::vector<int>{2, 3}));
  EXPECT_GT(wi->seg_ments[1]->ly, wi->seg_ments[4]->uy) << "the result stands below all";
  EXPECT_GT(wi->seg_ments[4]->ly, wi->seg_ments[5]->uy);
  EXPECT_EQ(wi->seg_ments[2]->ly, 4) << "arguments keep their height";
  const Segm *arc = wi->seg_ments[6];
  EXPECT_EQ(arc->ly, wi->seg_ments[4]->uy) << "arcs follow";
  EXPECT_EQ(arc->uy, wi->seg_ments[1]->ly);
}

TEST_F(TidyTest, OnlyTheSelectionMoves) {
  WinInfo *wi = heap();
  wi->seg_ments[5]->status |= kSelected;
  const Rect others[] = {wi->seg_ments[1]->box(), wi->seg_ments[4]->box(), wi->seg_ments[2]->box()};
  tidy_picture(wi);
  EXPECT_EQ(wi->seg_ments[1]->box(), others[0]);
  EXPECT_EQ(wi->seg_ments[4]->box(), others[1]);
  EXPECT_EQ(wi->seg_ments[2]->box(), others[2]);
}

TEST_F(TidyTest, APinnedBoxStays) {
  WinInfo *wi = heap();
  wi->seg_ments[5]->style |= kPinned;
  const Rect place = wi->seg_ments[5]->box();
  tidy_picture(wi);
  EXPECT_EQ(wi->seg_ments[5]->box(), place);
}

TEST_F(TidyTest, ABoxAmongTheArgumentsIsAFault) {
  WinInfo *wi = heap();
  tidy_picture(wi);
  Segm *box = wi->seg_ments[5];
  box->uy += 2 - box->ly;
  box->ly = 2;
  box->lx += 400;
  box->ux += 400;
  EXPECT_EQ(layout_fault(wi), "another_name stands among the arguments");
}

TEST_F(TidyTest, MeaningAndOrderOfDrawnPicturesStay) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    FreeAllPictures();
    WinInfo *wi = random_picture(random, "f", round);
    const std::string before = picture_text(wi);
    std::vector<std::vector<int>> inputs;
    const auto inputs_of = [&] {
      std::vector<std::vector<int>> all;
      for (int slot = 1; slot <= wi->seg_ct; ++slot) {
        if (wi->seg_ments[slot] == nullptr || !is_node(wi->seg_ments[slot]))
          continue;
        all.emplace_back();
        for (const Segm *arc : cyclic_order_types_of(wi->seg_ments[slot]))
          all.back().push_back(arc->segnum);
      }
      for (const Segm *node : argument_nodes(wi))
        all.push_back({node->segnum});
      return all;
    };
    inputs = inputs_of();
    if (tidy_picture(wi)) {
      EXPECT_EQ(layout_fault(wi).find(" lie on each other"), std::string::npos) << before;
    }
    EXPECT_EQ(inputs_of(), inputs);
    EXPECT_EQ(invariant_faults(wi), "");
  }
}

} // namespace
