// Memory that runs out at any allocation leaves pictures whole and files safe.
#include <gtest/gtest.h>

#include <functional>
#include <new>

#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "kit/faults.h"
#include "kit/pictures.h"

using namespace velora;
using namespace velora::kit;

namespace {

class PictureMemoryTest : public PictureTest {
protected:
  // Runs `step` with each of its allocations failing in turn, `check` after each; at least `least`
  // allocations must have failed.
  static void fail_each(int least, const std::function<void()> &prepare,
                        const std::function<void()> &step, const std::function<void()> &check) {
    int failed = 0;
    for (int n = 1; n < 5000; ++n) {
      prepare();
      fail_allocation(n);
      try {
        step();
      } catch (const std::bad_alloc &) {
      }
      const bool reached = allocation_failed();
      fail_allocation(0);
      check();
      if (!reached)
        break;
      ++failed;
    }
    EXPECT_GE(failed, least);
  }

  static void check_all() {
    for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
      ASSERT_EQ(invariant_faults(wi), "");
  }
};

TEST_F(PictureMemoryTest, ReadingAndSavingLoseNothing) {
  std::mt19937 random(23);
  for (int i = 0; i < 4; ++i)
    random_picture(random, "p", i);
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  const std::string whole = get("x.seg");
  const std::string file = path("x.seg");
  int answer = -1; // -1 when the reading was abandoned
  fail_each(
      100,
      [&] {
        FreeAllPictures();
        forget_segment_files();
        put("x.seg", whole);
        std::filesystem::remove(path("x.seg.damaged"));
        answer = -1;
      },
      [&] { answer = RestoreAll(file); },
      [&] {
        check_all();
        if (answer == 0) // the database is not opened then
          return;
        ASSERT_EQ(SaveAll(path("x.seg")), 1);
        ASSERT_TRUE(get(answer == 1 ? "x.seg" : "x.seg.damaged") == whole) << answer;
      });
  fail_each(
      10, [&] { put("x.seg", whole), forget_segment_files(); }, [&] { SaveAll(file); },
      [&] { ASSERT_EQ(get("x.seg"), whole); });
}

TEST_F(PictureMemoryTest, EditingLeavesWholePictures) {
  WinInfo *wi = nullptr;
  WinInfo *copy = nullptr;
  fail_each(
      10,
      [&] {
        FreeAllPictures();
        wi = picture("f");
        copy = picture("g");
        place_node(wi, kHexagon, kBold, "result", {100, 200, 130, 220});
        place_node(wi, kBox, kPlain, "f", {100, 100, 130, 120});
        place_node(wi, kBox, kPlain, "g", {100, 50, 130, 70});
        join(wi, 2, 1);
        join(wi, 3, 2);
      },
      [&] {
        add_node(wi, kToolFunction, 20, 20);
        join(wi, 4, 2);
        DoCopyNodes(wi, {90, 40, 140, 150});
        remove_segment(3, wi);
        CopyWinInfo(wi, copy);
        CleanUpSegments(copy);
      },
      check_all);
}

} // namespace
