// The segment file as it is written and read, its names and its safety.
#include <cerrno>
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "core/symbols.h"
#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "kit/pictures.h"
#include "platform/response.h"

using namespace velora;
using namespace velora::kit;

namespace {

class SegFileTest : public PictureTest {
protected:
  // Saves, forgets and reads everything again.
  void save_and_restore() {
    ASSERT_EQ(SaveAll(path("x.seg")), 1) << seen.console.messages;
    FreeAllPictures();
    ASSERT_EQ(RestoreAll(path("x.seg")), 1);
    EXPECT_EQ(seen.console.messages, "");
  }
};

// The pictures of the written sample.
void make_sample() {
  WinInfo *wi = picture("two nodes", 1);
  wi->annot = "x\ny";
  place_node(wi, kHexagon, kBold, "a b", {1, 2, 3, 4});
  place_node(wi, kBox, kPlain, "", {-5, 6, 7, 8});
  wi->seg_ments[join(wi, 1, 2)]->annot = "on the arc\n";
  WinInfo *net = picture("$$NETWORK$$", 0, kFunctionPicture);
  place_node(net, kBox, kPlain, "f", {0, 0, 9, 9});
  picture("without segments");
  WinInfo *shown = picture("shown");
  place_node(shown, kBox, kPlain, "g", {0, 0, 9, 9});
  shown->saved = 0;
}

TEST_F(SegFileTest, IsWrittenByteForByte) {
  make_sample();
  remove_segment(place_node(gWinInfo, kBox, kPlain, "removed", {0, 0, 1, 1}), gWinInfo);
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  EXPECT_EQ(get("x.seg"), "two~nodes 1 3 1 12 2\n"
                          "x\ny\n"
                          "a~b 1 1 2 1 2 3 4\n"
                          "\n"
                          "F3\n"
                          "~ 2 2 0 -5 6 7 8\n"
                          "B3\n"
                          "\n"
                          "~ 3 3 0 2 4 1 6 1\n"
                          "on the arc\n"
                          "B1\n"
                          "F2\n"
                          "$$NETWORK$$ 0 1 3 12\n"
                          "f 1 2 0 0 0 9 9\n"
                          "\n"
                          "\n"
                          "$$$$");
  EXPECT_EQ(seen.console.text, "");
}

TEST_F(SegFileTest, ReadsWhatItWroteWithBlanksForEmptyLabels) {
  make_sample();
  save_and_restore();
  EXPECT_EQ(all_pictures_text(), "\"two nodes\" 1 kind 1 size 12 \"x\\ny\\n\"\n"
                                 " 1: 1/2 \"a b\" \"\" (1,2 3,4) >3\n"
                                 " 2: 2/0 \" \" \"\" (-5,6 7,8) <3\n"
                                 " 3: 3/0 \" \" \"on the arc\\n\" (2,4 1,6) <1 >2\n"
                                 "\"$$NETWORK$$\" 0 kind 3 size 12 \"\"\n"
                                 " 1: 2/0 \"f\" \"\" (0,0 9,9)\n");
  EXPECT_EQ(seen.console.text, "Loading picture segments. . . . Loaded\n");
}

TEST_F(SegFileTest, WritingAndReadingIsTheIdentityOnManyPictures) {
  std::mt19937 random(11);
  for (int i = 0; i < 400; ++i)
    CleanUpSegments(random_picture(random, "p" + std::to_string(i % 90), i));
  const std::string before = all_pictures_text();
  save_and_restore();
  EXPECT_EQ(all_pictures_text(), before);
  const std::string first = get("x.seg");
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    ASSERT_EQ(invariant_faults(wi), "");
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  EXPECT_EQ(get("x.seg"), first);
  EXPECT_EQ(get("x.seg.bak"), first);
  EXPECT_EQ(seen.console.text, "Loading picture segments. . ."
                               " . . . . . . . . . . . . . . . . . . . . . Loaded\n");
}

TEST_F(SegFileTest, TheGoldenFileIsReadAndWrittenBack) {
  const std::string golden = std::string(VELORA_SOURCE_DIR) + "/tests/golden/seg/pictures.seg";
  ASSERT_EQ(RestoreAll(golden), 1);
  EXPECT_EQ(seen.console.messages, "");
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  expect_golden("seg/pictures.seg", get("x.seg"));
}

TEST_F(SegFileTest, AnEmptyFileIsFourCharacters) {
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  EXPECT_EQ(get("x.seg"), "$$$$");
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  EXPECT_EQ(seen.console.text, "Loading picture segments. . . . Loaded\n");
  EXPECT_EQ(gWinInfo, nullptr);
}

TEST_F(SegFileTest, TheOlderAnnotationFormIsRead) {
  put("x.seg", "f 1 1 1 12 <note>\n"
               "a 1 2 0 0 0 9 9 <a\1b\2c\3d>\n"
               "\n"
               "\n"
               "g 0 0 2 10 <>\n"
               "h 0 0 3 8 <not closed\n"
               "$$$$");
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  EXPECT_EQ(all_pictures_text(), "\"f\" 1 kind 1 size 12 \"note\"\n"
                                 " 1: 2/0 \"a\" \"a<b>c\\nd\" (0,0 9,9)\n"
                                 "\"g\" 0 kind 2 size 10 \"\"\n"
                                 "\"h\" 0 kind 3 size 8 \"not closed\"\n");
  EXPECT_EQ(seen.console.messages, "");
  EXPECT_EQ(AdjustAnnotation("a<b>\n", 1), "a\1b\2\3");
  EXPECT_EQ(AdjustAnnotation(AdjustAnnotation("a<b>\n", 1), 2), "a<b>\n");
}

TEST_F(SegFileTest, AnnotationsAreCountedWithoutTheFinalLineEnd) {
  EXPECT_EQ(annotation_lines("x"), 1);
  EXPECT_EQ(annotation_lines("x\n"), 1);
  EXPECT_EQ(annotation_lines("x\ny\n"), 2);
  EXPECT_EQ(annotation_lines("\n\n"), 2);
}

TEST_F(SegFileTest, LineEndsOfOtherSystemsAreRead) {
  put("x.seg", "f 0 2 1 12 1\r\nnote\r\na 1 2 0 0 0 9 9\r\n\r\n\r\n~~~~~~\r\n$$$$");
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  EXPECT_EQ(seen.console.messages, "");
  EXPECT_EQ(all_pictures_text(), "\"f\" 0 kind 1 size 12 \"note\\n\"\n"
                                 " 1: 2/0 \"a\" \"\" (0,0 9,9)\n"
                                 " 2: empty\n");
}

TEST_F(SegFileTest, ALabelOfManyBlanksIsNoEmptySlot) {
  WinInfo *wi = picture("f");
  place_node(wi, kBox, kPlain, "        x", {0, 0, 9, 9});
  place_node(wi, kBox, kPlain, std::string(80, ' '), {0, 0, 9, 9});
  save_and_restore();
  EXPECT_EQ(gWinInfo->seg_ments[1]->label, "        x");
  EXPECT_EQ(gWinInfo->seg_ments[2]->label, std::string(80, ' '));
}

TEST_F(SegFileTest, APictureOfTheSameNameAndNumberIsReplaced) {
  WinInfo *old = picture("f", 1, kConstructorsPicture);
  place_node(old, kBox, kPlain, "old", {0, 0, 9, 9});
  old->annot = "old";
  WinInfo *other = picture("f", 2);
  put("x.seg", "f 1 1 1 16\nnew 1 2 0 0 0 9 9\n\n\ng 0 0 1 12\n$$$$");
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  EXPECT_EQ(gWinInfo, old);
  EXPECT_EQ(old->next, other);
  EXPECT_EQ(all_pictures_text(), "\"f\" 1 kind 2 size 16 \"\"\n"
                                 " 1: 2/0 \"new\" \"\" (0,0 9,9)\n"
                                 "\"f\" 2 kind 1 size 12 \"\"\n"
                                 "\"g\" 0 kind 1 size 12 \"\"\n");
}

TEST_F(SegFileTest, OtherEndingsOfTheNameAreTried) {
  for (const char *ending : {".segs", ".SEG", ".SEGS"}) {
    FreeAllPictures();
    put(std::string("y") + ending, "f 0 0 1 12\n$$$$");
    ASSERT_EQ(RestoreAll(path("y.seg")), 1);
    ASSERT_NE(gWinInfo, nullptr) << ending;
    EXPECT_EQ(get("y.seg"), "(none)");
    std::filesystem::remove(path(std::string("y") + ending));
  }
  seen.console.clear();
  ASSERT_EQ(RestoreAll(path("y.seg")), 1);
  EXPECT_EQ(seen.console.text, "Can't open a " + path("y") + " seg file to read\n" +
                                   "Trying to create " + path("y.seg") + ". . . Done\n" +
                                   "Loading picture segments. . . . Loaded\n");
  EXPECT_EQ(get("y.seg"), "$$$$");
  seen.console.clear();
  EXPECT_EQ(RestoreAll(path("none/y.seg")), 0);
  EXPECT_EQ(seen.console.text, "Can't open a " + path("none/y") + " seg file to read\n" +
                                   "Trying to create " + path("none/y.seg") + ". . ." +
                                   "Failed to create " + path("none/y.seg") + "\n");
}

TEST_F(SegFileTest, AnEmptyFileIsMadeOnceOnly) {
  EXPECT_EQ(fdb_create_segs(path("n")), 1);
  EXPECT_EQ(get("n.seg"), "$$$$");
  EXPECT_EQ(fdb_create_segs(path("n")), 0);
  EXPECT_EQ(fdb_create_segs(path("none/n")), 0);
  EXPECT_EQ(seen.console.text, "Created: " + path("n.seg") + "\n" + "Segment File " +
                                   path("n.seg") + " already exists\n" +
                                   "Failed to create segment file: " + path("none/n.seg") + "\n");
}

TEST_F(SegFileTest, WhatTheFormCannotCarryIsRefusedBeforeAnythingIsWritten) {
  put("x.seg", "old");
  WinInfo *wi = picture("f");
  place_node(wi, kBox, kPlain, std::string(80, 'x'), {0, 0, 9, 9});
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  put("x.seg", "old");
  forget_segment_files();
  for (const std::string &name : {std::string("f"), std::string(81, 'n'), std::string("$$$$f")}) {
    wi->name = name;
    wi->seg_ments[1]->label = std::string(name == "f" ? 81 : 1, 'x');
    seen.console.clear();
    EXPECT_EQ(SaveAll(path("x.seg")), 0);
    EXPECT_NE(seen.console.messages, "");
    EXPECT_EQ(get("x.seg"), "old");
  }
}

TEST_F(SegFileTest, AFileChangedByAnotherProgramIsAskedFor) {
  put("x.seg", "$$$$");
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  put("x.seg", "f 0 0 1 12\n$$$$");
  seen.console.choices = {5};
  EXPECT_EQ(SaveAll(path("x.seg")), 0);
  EXPECT_EQ(get("x.seg"), "f 0 0 1 12\n$$$$");
  seen.console.choices = {1};
  EXPECT_EQ(SaveAll(path("x.seg")), 1);
  EXPECT_EQ(get("x.seg"), "$$$$");
  EXPECT_EQ(SaveAll(path("x.seg")), 1) << "its own save is no such change";
  std::filesystem::remove(path("x.seg"));
  EXPECT_EQ(SaveAll(path("x.seg")), 1) << "nothing to lose";
}

int step_wanted = 0;
int steps_seen = 0;

FileFault fail_there(FileStep, std::size_t) {
  return steps_seen++ == step_wanted ? FileFault{ENOSPC, 0} : FileFault{};
}
FileFault stop_there(FileStep, std::size_t) {
  if (steps_seen++ == step_wanted)
    _exit(9);
  return {};
}

TEST_F(SegFileTest, ASaveThatFailsOrStopsAnywhereLosesNothing) {
  gFileChunk = 128;
  std::mt19937 random(5);
  for (int i = 0; i < 5; ++i)
    random_picture(random, "p", i);
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  const std::string old = get("x.seg");
  random_picture(random, "more", 0);
  bool saved = false;
  for (step_wanted = 0; !saved && step_wanted < 1000; ++step_wanted) {
    const pid_t child = fork();
    if (child == 0) {
      steps_seen = 0;
      gFileFault = stop_there;
      _exit(SaveAll(path("x.seg")));
    }
    int status = 0;
    waitpid(child, &status, 0);
    const std::string now = get("x.seg");
    saved = WEXITSTATUS(status) == 1;
    EXPECT_TRUE(saved ? now != old : now == old || now.ends_with("$$$$")) << step_wanted;
    put("x.seg", old);
    forget_segment_files();
    steps_seen = 0;
    gFileFault = fail_there;
    seen.console.clear();
    const int answer = SaveAll(path("x.seg"));
    gFileFault = nullptr;
    saved = saved && steps_seen <= step_wanted;
    EXPECT_EQ(answer == 0, get("x.seg") == old) << step_wanted;
    EXPECT_EQ(answer == 0, !seen.console.messages.empty()) << step_wanted;
    put("x.seg", old);
    forget_segment_files();
  }
  gFileChunk = 65536;
  EXPECT_TRUE(saved);
  EXPECT_GT(step_wanted, 10);
}

TEST_F(SegFileTest, PicturesOfTypesBecomeConstructorsPictures) {
  symbol *const before = Symbol_table;
  symbol type{};
  std::string type_name = "colour";
  type.name = type_name.data();
  type.name_len = 6;
  type.stype = kEnumType;
  WinInfo *wi = picture("colour", 0);
  WinInfo *again = picture("colour", 1, kNetworkPicture);
  WinInfo *function = picture("f");
  OrvekVeloraConsistencyCheck();
  EXPECT_EQ(wi->wtype, kFunctionPicture);
  seen.console.clear();
  type.next = before;
  Symbol_table = &type;
  OrvekVeloraConsistencyCheck();
  OrvekVeloraConsistencyCheck();
  Symbol_table = before;
  EXPECT_EQ(wi->wtype, kConstructorsPicture);
  EXPECT_EQ(again->wtype, kConstructorsPicture);
  EXPECT_EQ(function->wtype, kFunctionPicture);
  EXPECT_EQ(seen.console.text, "\nChecking Orvek and Velora constructors for congruency. . . "
                               "\nChecking Orvek and Velora constructors for congruency. . . "
                               "\nOrvek and Velora constructors are synchronised.\n"
                               "\nOrvek and Velora constructors are synchronised.\n");
}

} // namespace
