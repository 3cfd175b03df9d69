// The segments of one picture: the geometry of new nodes, hit tests, removal and compaction.
#include <gtest/gtest.h>

#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "kit/pictures.h"

using namespace velora;
using namespace velora::kit;

namespace {

class SegmentsTest : public PictureTest {};

// What is stored under a name is found whatever has become of the list and of names since.
TEST_F(SegmentsTest, FindsStoredPicturesByNameAndNumber) {
  WinInfo *first = picture("f");
  WinInfo *second = picture("f", 1);
  EXPECT_EQ(FindStoredPicture("f", 0), first);
  EXPECT_EQ(FindStoredPicture("f", 1), second);
  second->name = "g";
  EXPECT_EQ(FindStoredPicture("f", 1), nullptr);
  EXPECT_EQ(FindStoredPicture("g", 1), second);
  first->win = 5;
  EXPECT_EQ(FindStoredPicture("f", 0), nullptr) << "a window shows it";
  WinInfo *third = picture("f");
  EXPECT_EQ(FindStoredPicture("f", 0), third);
  RemovePicture(third);
  EXPECT_EQ(FindStoredPicture("f", 0), nullptr);
  first->win = 0;
  EXPECT_EQ(FindStoredPicture("f", 0), first);
  FreeAllPictures();
  EXPECT_EQ(FindStoredPicture("f", 0), nullptr);
}

TEST_F(SegmentsTest, NewNodesHaveTheGeometryOfTheirTool) {
  struct Case {
    int tool;
    int type;
    int style;
    Rect box; // for a node height of 20, around (100, 100)
  };
  const Case cases[] = {
      {kToolHexagon, kHexagon, kPlain, {95, 90, 105, 110}},
      {kToolConstructor, kBox, kDouble, {70, 90, 100, 110}},
      {kToolFunction, kBox, kPlain, {70, 90, 100, 110}},
      {kToolRecursive, kBox, kBold, {70, 90, 100, 110}},
      {kToolType, kHexagon, kDouble, {95, 90, 105, 110}},
      {kToolRecursiveToo, kBox, kBold, {70, 90, 100, 110}},
      {kToolParameter, kHexagon, kBold, {95, 90, 105, 110}},
      {kToolJunction, kJunction, kBold, {95, 95, 105, 105}},
      {kToolHold, kHoldValue, kPlain, {95, 90, 105, 110}},
  };
  WinInfo *wi = picture("f");
  ASSERT_EQ(NodeHeight(wi), 20);
  for (const Case &expected : cases) {
    const int slot = add_node(wi, expected.tool, 100, 100);
    const Segm *seg = wi->seg_ments[slot];
    EXPECT_EQ(seg->type, expected.type) << expected.tool;
    EXPECT_EQ(seg->style, expected.style) << expected.tool;
    EXPECT_EQ(seg->box(), expected.box) << expected.tool;
    EXPECT_EQ(seg->segnum, slot);
    EXPECT_EQ(seg->label, expected.type == kJunction ? " " : "");
  }
}

TEST_F(SegmentsTest, ParametersNearTheTopStandInOneRow) {
  WinInfo *wi = picture("f");
  const int h = NodeHeight(wi);
  for (const int y : {-50, 3, 2 * h - 1})
    EXPECT_EQ(wi->seg_ments[add_node(wi, kToolParameter, 100, y)]->box().centre().y, h) << y;
  EXPECT_EQ(wi->seg_ments[add_node(wi, kToolParameter, 100, 2 * h)]->box().centre().y, 2 * h);
  EXPECT_EQ(wi->seg_ments[add_node(wi, kToolFunction, 100, 3)]->box().centre().y, 3);
}

TEST_F(SegmentsTest, NodeHeightFollowsTheTextSizeWithinItsBounds) {
  WinInfo *wi = picture("f");
  wi->txtsze = 99;
  EXPECT_EQ(text_size_of(wi), 22);
  EXPECT_EQ(picture_font(wi).size, 22);
  wi->txtsze = 1;
  EXPECT_EQ(text_size_of(wi), 8);
  wi->txtsze = 14;
  EXPECT_EQ(picture_font(wi).size, 12);
  EXPECT_EQ(NodeHeight(wi), seen.desktop.text_height(0, Font{12}) * gNodeTextSize / 14);
  EXPECT_EQ(NodeHeight(nullptr), seen.desktop.text_height(0, Font{12}));
}

TEST_F(SegmentsTest, TheResultNodeStandsAtTheFootOfItsWindow) {
  WinInfo *wi = NewWindow(kConstructorsPicture);
  ASSERT_EQ(setup_for_fdef(wi), 1);
  const Rect area = seen.desktop.client_rect(wi->win);
  const Segm *result = wi->seg_ments[fdef_res];
  EXPECT_EQ(fdef_res, 1);
  EXPECT_EQ(result->type, kHexagon);
  EXPECT_EQ(result->style, kDouble);
  EXPECT_EQ(result->box().centre().x, area.width() / 2);
  EXPECT_EQ(result->box().centre().y, area.height() - NodeHeight(wi));
  EXPECT_EQ(wi->saved, 0);
  WinInfo *function = picture("g");
  setup_for_fdef(function);
  EXPECT_EQ(function->seg_ments[1]->style, kBold);
}

// An arc between two nodes, its corners set by hand.
WinInfo *with_arc(int lx, int ly, int ux, int uy) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, 0, "a", {-900, -900, -890, -890});
  place_node(wi, kBox, 0, "b", {-800, -800, -790, -790});
  Segm *seg = wi->seg_ments[join(wi, 1, 2)];
  seg->lx = lx;
  seg->ly = ly;
  seg->ux = ux;
  seg->uy = uy;
  return wi;
}

TEST_F(SegmentsTest, ClicksFindArcsWithinSixUnits) {
  struct Case {
    Rect arc;
    Point click;
    int nodeonly;
    int found;
  };
  const Rect diagonal{0, 0, 300, 400}; // 3-4-5: a step of 5 across the arc is (4, -3)
  const Case cases[] = {
      {diagonal, {150, 200}, 0, 3},
      {diagonal, {150 + 24 / 5, 200 - 18 / 5}, 0, 3},
      {diagonal, {150 + 8, 200 - 0}, 0, 3}, // 6.4 is taken as 6
      {diagonal, {150 + 9, 200 - 0}, 0, 0}, // 7.2
      {diagonal, {150, 200}, 1, 0},         // arcs do not count
      {diagonal, {302, 400}, 0, 0},         // beyond the corner, though near
      {{300, 400, 0, 0}, {150, 200}, 0, 3}, // drawn the other way
      {{50, 0, 50, 100}, {56, 50}, 0, 3},   // upright
      {{50, 0, 50, 100}, {57, 50}, 0, 0},
      {{50, 0, 50, 100}, {44, 100}, 0, 3},
      {{50, 0, 50, 100}, {50, 101}, 0, 0},
      {{0, 50, 100, 50}, {50, 44}, 0, 3}, // level
      {{0, 50, 100, 50}, {50, 57}, 0, 0},
      {{0, 50, 100, 50}, {101, 50}, 0, 0},
      {{50, 50, 50, 50}, {50, 50}, 0, 0}, // of no length
      {{-1000000, -1000000, 1000000, 1000000}, {5, 9}, 0, 3},
  };
  for (const Case &expected : cases) {
    const Rect &a = expected.arc;
    const WinInfo *wi = with_arc(a.left, a.top, a.right, a.bottom);
    EXPECT_EQ(search_for_segment(expected.click.x, expected.click.y, expected.nodeonly, wi),
              expected.found)
        << a.left << ',' << a.top << ' ' << a.right << ',' << a.bottom << " at " << expected.click.x
        << ',' << expected.click.y;
  }
}

TEST_F(SegmentsTest, TheLowerSlotWinsWhereSegmentsOverlap) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, 0, "a", {0, 0, 50, 20});
  place_node(wi, kHexagon, 0, "b", {0, 100, 50, 120});
  join(wi, 1, 2);
  place_node(wi, kJunction, 2, "over the arc", {20, 50, 40, 70});
  place_node(wi, kHoldValue, 0, "on a", {40, 10, 80, 30});
  EXPECT_EQ(search_for_segment(45, 15, 0, wi), 1);
  EXPECT_EQ(search_for_segment(51, 15, 0, wi), 5);
  EXPECT_EQ(search_for_segment(25, 60, 0, wi), 3);
  EXPECT_EQ(search_for_segment(25, 60, 1, wi), 4);
  EXPECT_EQ(search_for_segment(50, 120, 1, wi), 2);
  EXPECT_EQ(search_for_segment(51, 121, 1, wi), 0);
  EXPECT_EQ(NamedFunInWin(wi, "a"), 1);
  EXPECT_EQ(NamedFunInWin(wi, "b"), 0) << "a hexagon is no function";
}

TEST_F(SegmentsTest, RemovingANodeTakesItsArcsAlong) {
  WinInfo *wi = picture("f");
  for (int i = 0; i < 4; ++i)
    place_node(wi, kBox, 0, "n" + std::to_string(i), {50 * i, 0, 50 * i + 30, 20});
  join(wi, 1, 2);
  join(wi, 2, 3);
  join(wi, 2, 4);
  join(wi, 3, 4);
  join(wi, 1, 1);
  remove_segment(2, wi);
  int empty = 0;
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    empty += wi->seg_ments[slot] == nullptr;
  EXPECT_EQ(empty, 4);
  EXPECT_EQ(wi->seg_ct, 9);
  EXPECT_EQ(invariant_faults(wi), "");
  CleanUpSegments(wi);
  EXPECT_EQ(wi->seg_ct, 5);
  EXPECT_EQ(invariant_faults(wi), "");
  remove_segment(1, wi); // with its arc to itself
  remove_segment(1, wi); // nothing stands there
  CleanUpSegments(wi);
  EXPECT_EQ(picture_text(wi), "\"f\" 0 kind 1 size 12 \"\"\n"
                              " 1: 2/0 \"n2\" \"\" (100,0 130,20) >3\n"
                              " 2: 2/0 \"n3\" \"\" (150,0 180,20) <3\n"
                              " 3: 3/0 \"\" \"\" (115,20 165,0) <1 >2\n");
}

TEST_F(SegmentsTest, RemovingAnArcLeavesItsNodes) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, 0, "a", {0, 0, 30, 20});
  place_node(wi, kBox, 0, "b", {0, 50, 30, 70});
  join(wi, 1, 2);
  join(wi, 1, 2);
  remove_arc(3, wi);
  EXPECT_EQ(wi->seg_ments[1]->segf_ptr.size(), 1U);
  EXPECT_EQ(wi->seg_ments[2]->segb_ptr.front(), wi->seg_ments[4]);
  EXPECT_EQ(put_arc_between(wi, 1, 3, kArc), 0) << "there is no node 3";
  EXPECT_EQ(put_arc_between(wi, 1, 4, kArc), 0) << "an arc is no end for an arc";
  EXPECT_EQ(wi->seg_ct, 4);
}

TEST_F(SegmentsTest, DeletingTheSelectionSparesTheResult) {
  WinInfo *wi = picture("f");
  for (int i = 0; i < 3; ++i)
    place_node(wi, kBox, 0, "n", {0, 40 * i, 30, 40 * i + 20});
  join(wi, 2, 1);
  join(wi, 3, 1);
  for (const int slot : {1, 2, 4})
    wi->seg_ments[slot]->status |= kSelected;
  deleteSelectedItems(wi);
  EXPECT_NE(wi->seg_ments[1], nullptr);
  EXPECT_EQ(wi->seg_ments[2], nullptr);
  EXPECT_NE(wi->seg_ments[3], nullptr);
  EXPECT_EQ(wi->seg_ments[4], nullptr);
  EXPECT_NE(wi->seg_ments[5], nullptr);
  EXPECT_EQ(invariant_faults(wi), "");
}

TEST_F(SegmentsTest, InputsAreOrderedAsTheyStand) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, 0, "result", {0, 300, 30, 320});
  place_node(wi, kBox, 0, "right", {200, 0, 230, 20});
  place_node(wi, kBox, 0, "wide, but its middle is left", {0, 0, 199, 20});
  place_node(wi, kBox, 0, "below right", {200, 50, 230, 70});
  place_node(wi, kBox, 0, "on right", {200, 0, 230, 20});
  for (const int from : {5, 4, 2, 3})
    join(wi, from, 1);
  std::vector<int> order;
  for (const Segm *entering : cyclic_order_types_of(wi->seg_ments[1]))
    order.push_back(arc_start(entering)->segnum);
  EXPECT_EQ(order, (std::vector<int>{3, 2, 5, 4}));
}

TEST_F(SegmentsTest, RandomRemovalsKeepTheInvariants) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    WinInfo *wi = random_picture(random, "f", round);
    ASSERT_EQ(invariant_faults(wi), "") << round;
    for (int i = 0; i < 3; ++i)
      remove_segment(1 + static_cast<int>(random() % static_cast<unsigned>(wi->seg_ct)), wi);
    ASSERT_EQ(invariant_faults(wi), "") << round;
    CleanUpSegments(wi);
    ASSERT_EQ(invariant_faults(wi), "") << round;
    for (int slot = 1; slot <= wi->seg_ct; ++slot)
      ASSERT_NE(wi->seg_ments[slot], nullptr);
    EXPECT_EQ(wi->seg_ments.slots(), wi->seg_ct + 1);
  }
}

} // namespace
