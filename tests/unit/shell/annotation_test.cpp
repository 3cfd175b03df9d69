// The annotation window: whose text it shows, when it is stored, and what closing asks.
#include "shell/annotation.h"

#include "desk_kit.h"
#include "editor/model/vel_segs.h"
#include "shell/picture_windows.h"

namespace velora {
namespace {

constexpr int kAnnotationCommand = 508;
constexpr int kFunctionCommand = 504;

class AnnotationTest : public kit::DeskTest {
protected:
  // A function picture with a result box, in front.
  WinInfo *picture() {
    choose(kFunctionCommand);
    const WindowId win = windows_of_kind(kFunctionWindow).back();
    window_focused(win);
    WinInfo *wi = picture_of(win);
    extra_segment(wi);
    return wi;
  }
  std::string &shown_annotation() { return desktop().windows[gAnnWind].text; }
};

TEST_F(AnnotationTest, NeedsAPicture) {
  EXPECT_EQ(open_annotation(), 0);
  EXPECT_EQ(gAnnWind, 0);
}

TEST_F(AnnotationTest, IsStoredWhenTheFocusLeaves) {
  WinInfo *wi = picture();
  wi->annot = "old";
  choose(kAnnotationCommand);
  ASSERT_NE(gAnnWind, 0);
  window_focused(gAnnWind);
  EXPECT_EQ(shown_annotation(), "old");
  shown_annotation() = "new text";
  EXPECT_EQ(wi->annot, "old");
  window_focused(hControl);
  EXPECT_EQ(wi->annot, "new text");
  EXPECT_EQ(wi->clean, 0);
  EXPECT_EQ(AddAnnotation(), 0) << "nothing has changed since";
}

TEST_F(AnnotationTest, IsStoredAfterAnEditCommand) {
  WinInfo *wi = picture();
  choose(kAnnotationCommand);
  window_focused(gAnnWind);
  desktop().edit_now.can_paste = true;
  shown_annotation() = "pasted";
  choose(205);
  EXPECT_EQ(wi->annot, "pasted");
}

TEST_F(AnnotationTest, BelongsToTheFirstSelectedSegment) {
  WinInfo *wi = picture();
  wi->seg_ments[1]->status |= kSelected;
  choose(kAnnotationCommand);
  shown_annotation() = "of the segment";
  CloseWindowProc(gAnnWind);
  EXPECT_EQ(wi->seg_ments[1]->annot, "of the segment");
  EXPECT_EQ(wi->annot, "");
  EXPECT_EQ(gAnnWind, 0);
}

TEST_F(AnnotationTest, TakesTheSegmentThatIsSelectedAfterTheWindowWasOpened) {
  WinInfo *wi = picture();
  wi->annot = "of the picture";
  choose(kAnnotationCommand);
  window_focused(gAnnWind);
  window_focused(wi->win);
  wi->seg_ments[1]->status |= kSelected;
  window_focused(gAnnWind);
  EXPECT_EQ(shown_annotation(), "");
  shown_annotation() = "of the segment";
  wi->seg_ments[1]->status &= ~kSelected;
  window_focused(gAnnWind); // the chosen one stays
  window_focused(hControl);
  EXPECT_EQ(wi->seg_ments[1]->annot, "of the segment");
  EXPECT_EQ(wi->annot, "of the picture");
}

TEST_F(AnnotationTest, FollowsThePictureThatGetsTheFocus) {
  WinInfo *first = picture();
  first->annot = "first";
  choose(kAnnotationCommand);
  window_focused(gAnnWind);
  shown_annotation() = "first, changed";
  WinInfo *second = picture();
  second->annot = "second";
  window_focused(second->win);
  EXPECT_EQ(first->annot, "first, changed");
  window_focused(first->win);
  EXPECT_EQ(shown_annotation(), "first, changed");
  window_focused(second->win);
  EXPECT_EQ(shown_annotation(), "second");
}

TEST_F(AnnotationTest, FollowsThePictureThatIsLoaded) {
  for (const char *name : {"f", "g"}) {
    WinInfo *stored = nullptr;
    NewWinInfo(0, kFunctionPicture, &stored);
    stored->name = name;
    stored->cmpnt = 0;
    stored->annot = std::string("about ") + name;
  }
  WinInfo *wi = picture();
  ASSERT_EQ(GetNextComponent(wi, "f", -1), 1);
  choose(kAnnotationCommand);
  EXPECT_EQ(shown_annotation(), "about f");
  ASSERT_EQ(GetNextComponent(wi, "g", -1), 1);
  EXPECT_EQ(shown_annotation(), "about g");
  EXPECT_EQ(wi->annot, "about g");
  shown_annotation() = "typed for g";
  EXPECT_EQ(GetNextComponent(wi, "f", -1), 0) << "what was typed is a change that is asked about";
  EXPECT_EQ(wi->annot, "typed for g");
}

TEST_F(AnnotationTest, ClosingThePictureAsksAndLeavesNothingStale) {
  WinInfo *wi = picture();
  choose(kAnnotationCommand);
  shown_annotation() = "a note";
  EXPECT_EQ(CloseWindowProc(wi->win), 0) << "Cancel keeps the window";
  EXPECT_TRUE(logged("ask \"Save (Annotation?) Changes to: unnamed?\" [Save] [Discard] -> 5"));
  desktop().choices = {2};
  EXPECT_EQ(CloseWindowProc(wi->win), 1);
  shown_annotation() = "after it is gone";
  EXPECT_EQ(AddAnnotation(), 0);
  EXPECT_EQ(CloseWindowProc(gAnnWind), 1);
}

} // namespace
} // namespace velora
