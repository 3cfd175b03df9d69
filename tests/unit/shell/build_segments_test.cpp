// Build Segments on the desktop: where the text goes, the questions on the way, what cancelling
// leaves behind.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/safe_file.h"
#include "shell/command_numbers.h"
#include "unit/shell/desk_kit.h"

using namespace velora;
using namespace velora::kit;

namespace {

constexpr const char *kText = "fdec\nf ::= int -> int ;\n;\nfdef\nf ?0 ::= + ?0 #1 ;\n;\n";
// Two boxes of one row that the rules put on each other.
constexpr const char *kWide = "fdec\nf ::= int ;\n;\n"
                              "fdef\nf ::= + #100000000000000000000 #200000000000000000000 ;\n;\n";

class BuildSegments : public DeskTest {
protected:
  void SetUp() override {
    DeskTest::SetUp();
    folder_ = std::filesystem::temp_directory_path() / "velora_build_segments";
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override {
    std::error_code failed;
    std::filesystem::remove_all(folder_, failed);
    DeskTest::TearDown();
  }
  std::string name(const std::string &ending) const {
    return (folder_ / "extra").string() + ending;
  }

  // Opens a language window with the text and builds, choosing extra.ddb in the dialog.
  void build(const std::string &text) {
    choose(kCmdNewOrvek);
    desktop().windows[gOrvWind].text = text;
    desktop().files.push_back(name(".ddb"));
    choose(kCmdBuildSegments);
  }

private:
  std::filesystem::path folder_;
};

TEST_F(BuildSegments, TheTextOfTheWindowBecomesADatabaseWithPictures) {
  build(kText);
  std::string file;
  ASSERT_TRUE(read_whole_file(name(".ddb"), file));
  EXPECT_EQ(file, kText);
  ASSERT_TRUE(read_whole_file(name(".seg"), file));
  EXPECT_EQ(file.substr(0, 11), "f 0 8 1 12\n");
  EXPECT_TRUE(logged("Extra Database Name?"));
}

TEST_F(BuildSegments, ACancelledDialogDoesNothing) {
  choose(kCmdNewOrvek);
  desktop().windows[gOrvWind].text = kText;
  desktop().files.push_back("");
  choose(kCmdBuildSegments);
  EXPECT_FALSE(file_exists(name(".ddb")));
}

TEST_F(BuildSegments, AnExistingNameIsAskedAbout) {
  build(kText);
  desktop().choices = {2};
  build(kWide);
  std::string file;
  read_whole_file(name(".ddb"), file);
  EXPECT_EQ(file, kText) << "No keeps what stands";
  EXPECT_TRUE(logged("extra exists. Build over it?"));
}

TEST_F(BuildSegments, CollidingBoxesAreOfferedTidied) {
  desktop().choices = {2};
  build(kWide);
  std::string as_ruled;
  read_whole_file(name(".seg"), as_ruled);
  EXPECT_TRUE(
      logged("1 picture has boxes on each other, among the arguments or out of order. Tidy?"));
  desktop().choices = {1, 1};
  build(kWide);
  std::string tidied;
  read_whole_file(name(".seg"), tidied);
  EXPECT_NE(tidied, as_ruled);
}

} // namespace
