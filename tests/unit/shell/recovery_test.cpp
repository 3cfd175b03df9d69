// When unsaved work is written aside, and that shown pictures come back in windows.
#include "shell/recovery.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/recovery_file.h"
#include "editor/edit.h"
#include "kit/pictures.h"
#include "platform/clock.h"
#include "platform/interrupt.h"
#include "shell/picture_windows.h"
#include "unit/shell/desk_kit.h"

namespace velora {
namespace {

class RecoveryTest : public kit::DeskTest {
protected:
  void SetUp() override {
    kit::DeskTest::SetUp();
    folder_ = std::filesystem::temp_directory_path() / "velora_recovery_test";
    std::filesystem::create_directories(folder_);
    gDDB_basename = (folder_ / "mine").string();
    gSymbolTableChanged = 0;
    gSegsChanged = 0;
    forget_recovery();
    settle();
  }
  void TearDown() override {
    gDDB_basename.clear();
    forget_recovery();
    std::filesystem::remove_all(folder_);
    kit::DeskTest::TearDown();
  }
  static bool written() { return std::filesystem::exists(work_name(gDDB_basename)); }
  static void forget_file() { std::filesystem::remove(work_name(gDDB_basename)); }
  static void pass(int milliseconds) {
    for (; milliseconds > 0; milliseconds -= 100) {
      advance_clock(100);
      recovery_look();
    }
  }
  // Looks at what stands, so that only later changes count.
  static void settle() {
    pass(12000);
    forget_file();
  }
  static void draw(WinInfo *wi, int x) {
    edit_picture(wi, "Draw", [&] {
      kit::place_node(wi, kHexagon, kPlain, "int", {x, 200, x + 30, 220});
    });
  }

private:
  std::filesystem::path folder_;
};

TEST_F(RecoveryTest, WritesWhenTheUserPauses) {
  WinInfo *wi = SetupNewWindow(kFunctionPicture);
  settle();
  pass(20000);
  EXPECT_FALSE(written()) << "nothing changed";
  draw(wi, 10);
  recovery_look();
  EXPECT_FALSE(written());
  pass(1800);
  EXPECT_FALSE(written());
  pass(400);
  EXPECT_TRUE(written());
  forget_file();
  pass(20000);
  EXPECT_FALSE(written()) << "it stands written already";
}

// A label that is typed belongs to the step that placed its node.
TEST_F(RecoveryTest, WritesWhatAStepGrowsBy) {
  WinInfo *wi = SetupNewWindow(kFunctionPicture);
  settle();
  const auto change = [wi](const std::function<void()> &run) {
    edit_picture(wi, "Place", run, {.merge = "place"});
    recovery_look();
    pass(2200);
  };
  change([wi] { kit::place_node(wi, kHexagon, kPlain, "", {10, 200, 40, 220}); });
  EXPECT_TRUE(written());
  forget_file();
  change([wi] { wi->seg_ments[1]->label = "int"; });
  EXPECT_TRUE(written());
}

TEST_F(RecoveryTest, WaitsNoLongerThanTenSeconds) {
  WinInfo *wi = SetupNewWindow(kFunctionPicture);
  settle();
  for (int i = 0; i < 9; ++i) {
    draw(wi, 10 * i);
    recovery_look();
    pass(1000);
  }
  EXPECT_FALSE(written()) << "one change after another";
  draw(wi, 200);
  recovery_look();
  pass(1200);
  EXPECT_TRUE(written());
}

TEST_F(RecoveryTest, WritesAtOnceAfterWhatIsAskedFor) {
  WinInfo *wi = SetupNewWindow(kFunctionPicture);
  settle();
  draw(wi, 10);
  recovery_soon();
  recovery_look();
  EXPECT_TRUE(written());
}

TEST_F(RecoveryTest, WritesNothingOfWhatIsSaved) {
  WinInfo *wi = SetupNewWindow(kFunctionPicture);
  settle();
  draw(wi, 10);
  recovery_look();
  EXPECT_EQ(undo_step(wi), 1);
  pass(20000);
  EXPECT_FALSE(written());
}

// In a process of its own, since it ends the program.
TEST_F(RecoveryTest, KeepsWhatIsUnsavedWhenTheSystemEndsTheProgram) {
  draw(SetupNewWindow(kFunctionPicture), 10);
  const auto ends = [this] {
    gEndAsked = SIGTERM;
    time_passed();
    std::_Exit(written() && desktop().has_quit && !logged("ask") ? 0 : 1);
  };
  EXPECT_EXIT(ends(), testing::ExitedWithCode(0), "");
}

TEST_F(RecoveryTest, ShowsWhatWasShown) {
  kit::picture(" ", -1)->saved = 0; // a picture without a name, as files have it
  WinInfo *was = kit::picture("f", 2);
  kit::place_node(was, kHexagon, kPlain, "int", {10, 20, 30, 40});
  was->saved = 0;
  was->clean = 0;
  WinInfo *stored = kit::picture("f", 0);
  show_recovered_pictures();
  std::vector<const WinInfo *> shown;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->win != 0)
      shown.push_back(wi);
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[0]->name, "");
  EXPECT_EQ(shown[1]->name, "f");
  EXPECT_EQ(shown[1]->cmpnt, 2);
  EXPECT_EQ(shown[1]->clean, 0);
  EXPECT_EQ(shown[1]->seg_ct, 1);
  EXPECT_EQ(stored->win, WindowId{0});
}

// Without windows nothing that was drawn is lost, and a mere view adds nothing.
TEST_F(RecoveryTest, StoresWhatWasShownWhereThereAreNoWindows) {
  kit::picture("f", 0);
  const auto shown = [](const char *name, int number, int clean) {
    WinInfo *wi = kit::picture(name, number);
    kit::place_node(wi, kHexagon, kPlain, "int", {10, 20, 30, 40});
    wi->saved = 0;
    wi->clean = clean;
  };
  shown("f", 0, 1);
  shown("f", 0, 0);
  shown(" ", -1, 0);
  store_recovered_pictures();
  std::vector<std::string> found;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->saved != 0)
      found.push_back(wi->name + " " + std::to_string(wi->cmpnt));
  EXPECT_EQ(found, (std::vector<std::string>{"f 0", "f 1", "recovered 0"}));
  EXPECT_EQ(gSegsChanged, 1);
}

} // namespace
} // namespace velora
