// Copies of pictures: whole, of the selection, and of a dragged region.
#include <gtest/gtest.h>

#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "kit/pictures.h"
#include "platform/response.h"

using namespace velora;
using namespace velora::kit;

namespace {

class CopyTest : public PictureTest {
protected:
  // result(1) <- plus(2) <- times(3) <- a(4), b(5); plus <- c(6)
  static WinInfo *sum() {
    WinInfo *wi = picture("sum");
    place_node(wi, kHexagon, kBold, "int", {200, 320, 230, 340});
    place_node(wi, kBox, kPlain, "+", {200, 260, 230, 280});
    place_node(wi, kBox, kPlain, "*", {150, 180, 180, 200});
    place_node(wi, kHexagon, kBold, "a", {100, 100, 130, 120});
    place_node(wi, kJunction, kBold, "b", {180, 100, 190, 110});
    place_node(wi, kHexagon, kBold, "c", {300, 100, 330, 120});
    join(wi, 2, 1); // 7
    join(wi, 3, 2); // 8
    join(wi, 4, 3); // 9
    join(wi, 5, 3); // 10
    join(wi, 6, 2); // 11
    return wi;
  }
};

// Labels and links of a picture, without places.
std::string shape_of(const WinInfo *wi) {
  std::string text;
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    const Segm *seg = wi->seg_ments[slot];
    if (is_arc(seg))
      text += format_text("%d>%d ", arc_start(seg)->segnum, arc_end(seg)->segnum);
    else
      text += format_text("%d=%d/%d'%s' ", slot, seg->type, seg->style, seg->label.c_str());
  }
  return text;
}

TEST_F(CopyTest, AWholeCopyIsEqualAndApart) {
  std::mt19937 random(3);
  for (int round = 0; round < 100; ++round) {
    WinInfo *from = random_picture(random, "from", round);
    from->seg_ments[1]->status = kSelected;
    WinInfo *to = picture("to", round, from->wtype);
    ASSERT_EQ(CopyWinInfo(from, to), 1);
    EXPECT_EQ(picture_text(to), picture_text(from));
    EXPECT_EQ(invariant_faults(to), "");
    EXPECT_EQ(to->seg_ments[1]->status, kSelected);
    const std::string before = picture_text(to);
    RemovePicture(from); // the sanitizer sees any link that still leads there
    EXPECT_EQ(picture_text(to), before);
  }
}

TEST_F(CopyTest, TheSelectionIsCopiedWithItsArcs) {
  WinInfo *wi = sum();
  for (const int slot : {2, 3, 5})
    wi->seg_ments[slot]->status |= kSelected;
  const WinInfo *to = CopySelectedNodes(wi);
  ASSERT_NE(to, nullptr);
  EXPECT_EQ(shape_of(to), "1=1/2'' 2=2/0'+' 3=2/0'*' 4=6/2'b' 3>2 4>3 ");
  EXPECT_EQ(to->seg_ments[2]->box().centre().y, wi->seg_ments[2]->box().centre().y);
  EXPECT_EQ(to->seg_ments[4]->lx + 5, 180 + 10 / 4) << "a junction is centred by its height";
  EXPECT_EQ(invariant_faults(to), "");
}

TEST_F(CopyTest, ASelectedArcGetsNewEnds) {
  WinInfo *wi = sum();
  wi->seg_ments[3]->status |= kSelected;
  wi->seg_ments[9]->status |= kSelected; // a to *
  const WinInfo *to = CopySelectedNodes(wi);
  EXPECT_EQ(shape_of(to), "1=1/2'' 2=2/0'*' 3=1/1'' 3>2 ");
  const Point moved{to->seg_ments[1]->lx - 200, to->seg_ments[1]->ly - 320};
  EXPECT_EQ(to->seg_ments[3]->box().centre(),
            (Point{wi->seg_ments[9]->lx + moved.x, wi->seg_ments[9]->ly + moved.y}));
}

TEST_F(CopyTest, ANetworkSelectionStartsAtTheFirstSlot) {
  WinInfo *wi = picture(kNetworkName, 0, kNetworkPicture);
  place_node(wi, kBox, 0, "f", {0, 0, 30, 20});
  place_node(wi, kBox, 0, "g", {0, 50, 30, 70});
  join(wi, 1, 2);
  wi->seg_ments[1]->status |= kSelected;
  wi->seg_ments[2]->status |= kSelected;
  const WinInfo *to = CopySelectedNodes(wi);
  EXPECT_EQ(to->name, kNetworkName);
  EXPECT_EQ(to->wtype, kNetworkPicture);
  EXPECT_EQ(shape_of(to), "1=2/0'f' 2=2/0'g' 1>2 ");
}

TEST_F(CopyTest, ARegionCollapsesIntoAPictureOfItsOwn) {
  WinInfo *wi = sum();
  join(wi, 4, 2); // 12: a also feeds +, across the rectangle's lower edge
  const Rect drag{90, 90, 260, 230};
  const RectContents contents = search_for_segment_in_rect(wi, drag);
  EXPECT_EQ(contents.inside, (std::vector<int>{3, 4, 5, 9, 10}));
  EXPECT_EQ(contents.inputs, (std::vector<int>{}));
  EXPECT_EQ(contents.outputs, (std::vector<int>{8, 12}));
  const WinInfo *to = DoCopyNodes(wi, {260, 230, 90, 90}); // dragged upwards
  ASSERT_NE(to, nullptr);
  EXPECT_EQ(shape_of(to), "1=1/2'' 2=2/0'*' 2>1 4=1/2'a' 4>2 6=6/2'b' 6>2 ");
  EXPECT_EQ(invariant_faults(to), "");
  EXPECT_EQ(invariant_faults(wi), "");
  for (int slot = 1; slot <= wi->seg_ct; ++slot)
    EXPECT_EQ(wi->seg_ments[slot]->status, 0U);
}

TEST_F(CopyTest, ASharedNodeIsCopiedOnceAndTheLastSlotStaysMarked) {
  WinInfo *wi = picture("f");
  place_node(wi, kHexagon, kBold, "int", {0, 300, 30, 320});
  place_node(wi, kBox, kPlain, "+", {0, 200, 30, 220});
  join(wi, 2, 1);                                                                         // 3
  put_arc_between(wi, place_node(wi, kBox, kPlain, "twice", {0, 100, 30, 120}), 2, kArc); // 4, 5
  const int shared = place_node(wi, kBox, kPlain, "shared", {60, 100, 90, 120});          // 6
  join(wi, shared, 2);
  join(wi, shared, 4);
  // The shared node moves to the last slot.
  wi->seg_ments.resize(wi->seg_ct + 2);
  wi->seg_ments.put(wi->seg_ct + 1, wi->seg_ments.take(6));
  wi->seg_ct += 1;
  wi->seg_ments[wi->seg_ct]->segnum = wi->seg_ct;
  const Rect drag{-10, 90, 100, 260};
  for (int round = 0; round < 2; ++round) { // what a collapse leaves does not hurt the next
    const WinInfo *to = DoCopyNodes(wi, drag);
    EXPECT_EQ(shape_of(to), "1=1/2'' 2=2/0'+' 2>1 4=2/0'twice' 4>2 6=2/0'shared' 6>4 6>2 ");
    EXPECT_EQ(wi->seg_ments[wi->seg_ct]->segnum, 6);
    EXPECT_EQ(wi->seg_ments[wi->seg_ct]->status, kCopiedBit);
  }
  CleanUpSegments(wi);
  EXPECT_EQ(invariant_faults(wi), "");
}

TEST_F(CopyTest, ARegionThatCannotCollapseSaysWhy) {
  WinInfo *wi = sum();
  EXPECT_EQ(DoCopyNodes(wi, {90, 90, 260, 110}), nullptr); // 20 high
  EXPECT_EQ(DoCopyNodes(wi, {90, 90, 110, 260}), nullptr); // 20 wide
  EXPECT_EQ(DoCopyNodes(wi, {0, 0, 50, 50}), nullptr);
  EXPECT_EQ(DoCopyNodes(wi, {0, 0, 1000, 1000}), nullptr); // no arrow leaves it
  EXPECT_EQ(seen.console.text, "Please redrag for function collapse\n"
                               "Please redrag for function collapse\n"
                               "No nodes selected\n"
                               "Please ensure drag rectangle base cuts arrow\n");
  wi->wtype = kNetworkPicture;
  seen.console.clear();
  EXPECT_EQ(DoCopyNodes(wi, {90, 90, 260, 230}), nullptr);
  EXPECT_EQ(seen.console.text, "");
}

TEST_F(CopyTest, ADeepRegionDoesNotUseUpTheStack) {
  WinInfo *wi = picture("deep");
  constexpr int depth = 20000;
  for (int i = 0; i < depth; ++i) {
    place_node(wi, kBox, kPlain, "f", {0, 40 * (depth - i), 30, 40 * (depth - i) + 20});
    if (i > 0)
      join(wi, wi->seg_ct, wi->seg_ct > 2 ? wi->seg_ct - 2 : 1);
  }
  const WinInfo *to = DoCopyNodes(wi, {-10, 0, 100, 40 * depth - 10});
  ASSERT_NE(to, nullptr);
  EXPECT_EQ(to->seg_ct, 2 * (depth - 1) + 1);
}

TEST_F(CopyTest, RecordsOfWindowsComeAndGo) {
  WinInfo *first = NewWindow(kFunctionPicture);
  WinInfo *second = NewWindow(kNetworkPicture);
  EXPECT_EQ(seen.desktop.windows[first->win].title, "Functions");
  EXPECT_EQ(seen.desktop.windows[second->win].title, "Function Network");
  EXPECT_EQ(seen.desktop.windows[second->win].place.left,
            100 + (seen.desktop.windows[first->win].place.left - 100 + 40) % 200);
  WinInfo *found = nullptr;
  EXPECT_EQ(FindWinInfo(second->win, &found), 1);
  EXPECT_EQ(found, second);
  EXPECT_EQ(FindWinInfo(0, &found), 0) << "a stored picture has no window";
  EXPECT_EQ(RemoveWinInfo(first->win), 1);
  EXPECT_EQ(gWinInfo, second);
  EXPECT_EQ(RemoveWinInfo(second->win), 1);
  EXPECT_EQ(gWinInfo, nullptr);
  WinInfo *stored = picture("f", 3);
  EXPECT_EQ(gWinInfo, stored);
  EXPECT_EQ(PictureExists("f", 2, &found), 0);
  EXPECT_EQ(PictureExists("f", 3, &found), 1);
  place_node(stored, kBox, 0, "x", {0, 0, 9, 9});
  stored->saved = stored->clean = 0;
  stored->txtsze = 22;
  ClearWinInfo(stored);
  EXPECT_EQ(picture_text(stored), "\"\" -1 kind 1 size 12 \"\"\n");
  EXPECT_EQ(stored->saved + stored->clean, 2);
}

} // namespace
