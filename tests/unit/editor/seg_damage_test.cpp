// Damaged segment files: each is reported with its lines, what can be read is kept, and the rest is
// kept aside before the file is saved over.
#include <cerrno>
#include <gtest/gtest.h>

#include <sstream>

#include "editor/model/seg_file.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "kit/pictures.h"

using namespace velora;
using namespace velora::kit;

namespace {

class SegDamageTest : public PictureTest {};

const std::string kSound = "f 0 3 1 12\n"      // 1
                           "a 1 2 0 0 0 9 9\n" // 2
                           "\n"
                           "F3\n"
                           "b 2 2 0 0 50 9 59\n" // 5
                           "B3\n"
                           "\n"
                           "~ 3 3 0 4 9 4 50\n" // 8
                           "B1\n"
                           "F2\n"
                           "g 0 1 1 12\n" // 11
                           "c 1 2 0 0 0 9 9\n"
                           "\n"
                           "\n"
                           "$$$$"; // 15

// The sound file with the first `what` replaced.
std::string with(const std::string &what, const std::string &by) {
  std::string text = kSound;
  const std::size_t at = text.find(what);
  return at == std::string::npos ? "" : text.replace(at, what.size(), by);
}

// What is left of the pictures, briefly: names, and labels by slot.
std::string what_is_left() {
  std::string text;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next) {
    text += wi->name + "[";
    for (int slot = 1; slot <= wi->seg_ct; ++slot) {
      const Segm *seg = wi->seg_ments[slot];
      text += seg == nullptr ? "." : is_arc(seg) ? ">" : seg->label;
    }
    text += "]";
  }
  return text;
}

struct Damage {
  std::string text;
  int line;
  std::string what; // a part of the message
  std::string left;
};

const Damage kDamages[] = {
    {kSound.substr(0, kSound.size() - 4), 15, "without its end mark", "f[ab>]g[c]"},
    {kSound.substr(0, kSound.find("B1\nF2")), 9, "B links of a segment are missing", "f[ab.]"},
    {kSound.substr(0, kSound.find("b 2")), 5, "the file ends within picture f", "f[a]"},
    {kSound.substr(0, kSound.find(" 0 50 9")), 5, "segment 2 of picture f cannot be read", "f[a]"},
    {with("f 0 3", "f 0 2000000000"), 1, "a picture of 2000000000 segments", "f[ab>]g[c]"},
    {with("f 0 3", "f 0 99999999999"), 1, "lines 1 to 10 belong to no picture", "g[c]"},
    {with("f 0 3", "f 0 -3"), 1, "a picture of -3 segments", "f[ab>]g[c]"},
    {with("f 0 3", "f 0 1"), 2, "link F3 of segment 1 leads nowhere", "f[a]g[c]"},
    {with("f 0 3", "f 0 9"), 11, "segment 4 of picture f cannot be read", "f[ab>]g[c]"},
    {with("f 0 3 1", "f 0 3 7"), 1, "to no picture", "g[c]"},
    {with("f 0 3 1", "f x 3 1"), 1, "to no picture", "g[c]"},
    {with("f 0 3 1", std::string(81, 'f') + " 0 3 1"), 1, "to no picture", "g[c]"},
    {with("f 0 3 1 12", "f 0 3 1 12 2000000000"), 1, "an annotation of 2000000000 lines",
     "f[ab>]g[c]"},
    {with("f 0 3 1 12", "f 0 3 1 12 -2"), 1, "an annotation of -2 lines", "f[ab>]g[c]"},
    {with("b 2 2 0 0", "b 2 garbage"), 5, "segment 2 of picture f cannot be read", "f[a..]g[c]"},
    {with("b 2 2 0", "b 2 5 0"), 5, "segment 2 is of an unknown kind, 5", "f[a..]g[c]"},
    {with("b 2 2 0", "b 7 2 0"), 5, "segment 7 stands at place 2", "f[ab>]g[c]"},
    {with("b 2 2 0 0 50 9 59", "b 2 2 0 9 59 0 50"), 5, "negative size", "f[ab>]g[c]"},
    {with("b 2 2 0 0", "b 2 2 0 -2000000000"), 5, "segment 2 lies at -2000000000", "f[ab>]g[c]"},
    {with("F3", "F3F99"), 2, "link F99 of segment 1 leads nowhere", "f[ab>]g[c]"},
    {with("F3", "F3F2"), 2, "link F2 of segment 1 leads nowhere", "f[ab>]g[c]"},
    {with("F3", "F3F3"), 2, "do not agree on a link", "f[ab>]g[c]"},
    {with("F3", "F"), 4, "F links of a segment are missing", "f[ab>]g[c]"},
    {with("F3", ""), 8, "do not agree on a link", "f[ab>]g[c]"},
    {with("\nF3", "\nB3F3"), 4, "F links of a segment are missing", "f[ab>]g[c]"},
    {with("B1\nF2", "B2\nF2"), 2, "do not agree on a link", "f[ab>]g[c]"},
    {with("B1\nF2", "B1B2\nF2"), 8, "link B2 of segment 3 leads nowhere", "f[ab>]g[c]"},
    {with("B1\nF2", "B1\nF3"), 8, "link F3 of segment 3 leads nowhere", "f[ab.]g[c]"},
    {with("B1\nF2", "B0\nF-2"), 8, "link B0 of segment 3 leads nowhere", "f[ab.]g[c]"},
    {with("B1\nF2\n", ""), 9, "B links of a segment are missing", "f[ab.]g[c]"},
    {with("g 0 1", "f 0 1"), 11, "picture f 0 stands in the file before", "f[c]"},
    {kSound + "\nh 0 0 1 12\n", 16, "text stands behind the end mark", "f[ab>]g[c]"},
    {"\x7F"
     "ELF\1\2\3" +
         std::string(5000, '\0'),
     1, "to no picture", ""},
};

// True when one message names the file, the line and the damage.
bool reported(const std::string &messages, const std::string &file, const Damage &damage) {
  const std::string start =
      "Damaged segment file " + file + ", line " + std::to_string(damage.line) + ": ";
  std::istringstream lines(messages);
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(start) && line.find(damage.what) != std::string::npos)
      return true;
  return false;
}

TEST_F(SegDamageTest, IsReportedAndTheRestIsKept) {
  const std::string file = path("x.seg");
  for (const Damage &damage : kDamages) {
    FreeAllPictures();
    seen.console.clear();
    put("x.seg", damage.text);
    ASSERT_EQ(RestoreAll(file), 1) << damage.text;
    EXPECT_TRUE(reported(seen.console.messages, file, damage))
        << "expected line " << damage.line << ": " << damage.what << "\nfound "
        << seen.console.messages << "in\n"
        << damage.text;
    EXPECT_EQ(what_is_left(), damage.left) << damage.what;
    for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
      EXPECT_EQ(invariant_faults(wi), "") << damage.what;
  }
}

TEST_F(SegDamageTest, EveryCutIsReportedAndSafe) {
  for (std::size_t length = 1; length < kSound.size(); ++length) {
    FreeAllPictures();
    seen.console.clear();
    put("x.seg", kSound.substr(0, length));
    ASSERT_EQ(RestoreAll(path("x.seg")), 1);
    EXPECT_NE(seen.console.messages, "") << length;
    for (WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
      ASSERT_EQ(invariant_faults(wi), "") << length;
  }
}

TEST_F(SegDamageTest, TheUnreadableIsKeptAsideBeforeASave) {
  const std::string damaged = with("b 2 2 0", "b 2 x 0");
  put("x.seg", damaged);
  put("x.seg.damaged", "from an earlier accident");
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  EXPECT_EQ(SaveAll(path("other.seg")), 1);
  EXPECT_EQ(get("x.seg.damaged.2"), "(none)") << "another file is not concerned";
  seen.console.clear();
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  EXPECT_EQ(seen.console.text, "What could not be read of " + path("x.seg") + " is kept in " +
                                   path("x.seg.damaged.2") + "\n");
  EXPECT_EQ(get("x.seg.damaged"), "from an earlier accident");
  EXPECT_EQ(get("x.seg.damaged.2"), damaged);
  EXPECT_EQ(get("x.seg.bak"), damaged);
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  EXPECT_EQ(get("x.seg.damaged.3"), "(none)") << "once is enough";
}

TEST_F(SegDamageTest, WhatCannotBeKeptAsideIsNotSavedOver) {
  const std::string damaged = with("b 2 2 0", "b 2 x 0");
  put("x.seg", damaged);
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  gFileFault = [](FileStep step, std::size_t) {
    return step == FileStep::make ? FileFault{ENOSPC, 0} : FileFault{};
  };
  seen.console.clear();
  EXPECT_EQ(SaveAll(path("x.seg")), 0);
  gFileFault = nullptr;
  EXPECT_NE(seen.console.messages, "");
  EXPECT_EQ(get("x.seg"), damaged);
}

TEST_F(SegDamageTest, AMendedFileIsNoLongerDamaged) {
  put("x.seg", with("b 2 2 0", "b 2 x 0"));
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  put("x.seg", kSound);
  FreeAllPictures();
  seen.console.clear();
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  EXPECT_EQ(seen.console.messages, "");
  ASSERT_EQ(SaveAll(path("x.seg")), 1);
  EXPECT_EQ(get("x.seg.damaged"), "(none)");
  EXPECT_EQ(get("x.seg"), kSound);
}

TEST_F(SegDamageTest, ManyPlacesAreCounted) {
  std::string text;
  for (int i = 0; i < 30; ++i)
    text += "p" + std::to_string(i) + " 0 -1 1 12\n";
  put("x.seg", text + "$$$$");
  ASSERT_EQ(RestoreAll(path("x.seg")), 1);
  EXPECT_NE(seen.console.messages.find(": 18 more places\n"), std::string::npos);
}

} // namespace
