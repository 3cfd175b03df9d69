// The file built-ins where a case file cannot reach: a full disk, files changed under the reader,
// an interrupt in the middle of a pass.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "eval/builtins/bi_files.h"
#include "kit/language.h"
#include "platform/trust.h"

namespace velora {
namespace {

namespace fs = std::filesystem;

class FileBuiltins : public kit::Language {
protected:
  void SetUp() override {
    Language::SetUp();
    before_ = fs::current_path();
    folder_ = fs::temp_directory_path() / "velora_file_builtins";
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    fs::current_path(folder_);
  }
  void TearDown() override {
    for (UserFileInfo &file : gUserFile)
      file.fp.reset();
    fs::current_path(before_);
    fs::remove_all(folder_);
    Language::TearDown();
  }
  void make(const char *name, const std::string &bytes) {
    std::ofstream(name, std::ios::binary) << bytes;
  }

private:
  fs::path before_, folder_;
};

TEST_F(FileBuiltins, AFullDiskIsAnsweredWithFalse) {
  if (!fs::exists("/dev/full"))
    GTEST_SKIP() << "no full disk to write to";
  gTrustAll = true; // the link leads out of its folder
  fs::create_symlink("/dev/full", "full.tmp");
  EXPECT_EQ("True", kit::answer("file_open_write \"full.tmp\" ;\n"));
  EXPECT_EQ("Cannot write to file full.tmp\nFalse",
            kit::answer("file_write_line \"full.tmp\" \"lost\" ;\n"));
  EXPECT_EQ("Cannot write to file full.tmp\nFalse",
            kit::answer("file_write_char \"full.tmp\" 'x' ;\n"));
  EXPECT_EQ("True", kit::answer("file_close \"full.tmp\" ;\n"));
  fs::create_symlink("/dev/full", "again.tmp");
  EXPECT_EQ("Cannot write all of file again.tmp\nFalse",
            kit::answer("list_to_file [\"lost\"] \"again.tmp\" ;\n"));
  gTrustAll = false;
}

TEST_F(FileBuiltins, FilesChangedUnderTheReader) {
  make("log", "one\n");
  EXPECT_EQ("\"one\n\"", kit::answer("file_read_line \"log\" ;\n"));
  EXPECT_EQ("\"\"", kit::answer("file_read_line \"log\" ;\n"));
  std::ofstream("log", std::ios::app) << "two\n";
  EXPECT_EQ("\"two\n\"", kit::answer("file_read_line \"log\" ;\n"));
  make("log", "");
  EXPECT_EQ("\"\"", kit::answer("file_read_line \"log\" ;\n"));
  fs::remove("log");
  EXPECT_EQ("\"\"", kit::answer("file_read_word \"log\" ;\n"));
  EXPECT_EQ("False", kit::answer("file_open_read \"log\" ;\n"));
}

TEST_F(FileBuiltins, AnInterruptLeavesNoHalfOfAFile) {
  std::string lines;
  for (int i = 0; i < 200000; ++i)
    lines += "line\n";
  make("in", lines);
  console().interrupt_after = 1;
  EXPECT_EQ("Query interrupted\n", kit::answer("file_filter (K True) \"in\" \"out\" ;\n"));
  EXPECT_FALSE(fs::exists("out"));
  EXPECT_EQ("True", kit::answer("file_filter (K True) \"in\" \"out\" ;\n"));
  EXPECT_EQ(lines.size(), fs::file_size("out"));
}

} // namespace
} // namespace velora
