// Reading of odd text files, output that is kept whole or not at all, and rows of tables.
#include "eval/builtins/text_files.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "eval/builtins/table_rows.h"
#include "kit/recorder.h"
#include "platform/trust.h"

namespace velora {
namespace {

namespace fs = std::filesystem;

class TextFiles : public testing::Test {
protected:
  TextFiles() : folder_(fs::temp_directory_path() / "velora_text_files") {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  ~TextFiles() override { fs::remove_all(folder_); }

  std::string path(const std::string &name) const { return (folder_ / name).string(); }
  std::string make(const std::string &name, const std::string &bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }
  std::string bytes_of(const std::string &name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(path(name), std::ios::binary).rdbuf();
    return bytes.str();
  }
  kit::Recording recording;

private:
  fs::path folder_;
};

TEST_F(TextFiles, EveryLineEndReadsAsNewline) {
  FileHandle file = open_text(make("crlf", "one\r\ntwo\rthree\n\r\nlast").c_str());
  ASSERT_NE(nullptr, file);
  std::string all;
  for (int c = read_char(file.get()); c != EOF; c = read_char(file.get()))
    all += static_cast<char>(c);
  EXPECT_EQ("one\ntwo\rthree\n\nlast", all);
}

TEST_F(TextFiles, LinesLoseNothingToNulsAndLimits) {
  std::string bytes("ab\0cd\n\0\0\nlonger", 15);
  FileHandle file = open_text(make("binary", bytes).c_str());
  std::string line;
  EXPECT_EQ(1, read_line(file.get(), line, 100));
  EXPECT_EQ("abcd\n", line);
  EXPECT_EQ(1, read_line(file.get(), line, 100));
  EXPECT_EQ("\n", line);
  EXPECT_EQ(1, read_line(file.get(), line, 4));
  EXPECT_EQ("long", line);
  EXPECT_EQ(1, read_line(file.get(), line, 4));
  EXPECT_EQ("er", line);
  EXPECT_EQ(0, read_line(file.get(), line, 4));
}

TEST_F(TextFiles, WordsAreCutAtBlanksOnly) {
  FileHandle file = open_text(make("words", "  a\xC3\xA9\tb\r\n\r\nlonger ").c_str());
  std::string word;
  for (const char *expected : {"a\xC3\xA9", "b", "long", "er"}) {
    EXPECT_EQ(1, read_word(file.get(), word, 4));
    EXPECT_EQ(expected, word);
  }
  EXPECT_EQ(0, read_word(file.get(), word, 4));
}

TEST_F(TextFiles, AFileThatGrowsIsReadOn) {
  FileHandle file = open_text(make("log", "first\n").c_str());
  std::string line;
  EXPECT_EQ(1, read_line(file.get(), line, 0));
  EXPECT_EQ(0, read_line(file.get(), line, 0));
  std::ofstream(path("log"), std::ios::app) << "second\n";
  EXPECT_EQ(1, read_line(file.get(), line, 0));
  EXPECT_EQ("second\n", line);
}

TEST_F(TextFiles, WholeLinesAcrossTheReadAhead) {
  std::string wide(100000, 'w');
  LineSource source(
      make("lines", wide + "\r\n\r\na\rb\n" + std::string(3, '\0') + "\nlast").c_str());
  ASSERT_TRUE(source.is_open());
  std::string line;
  for (const std::string &expected :
       {wide, std::string(), std::string("a\rb"), std::string(), std::string("last")}) {
    EXPECT_EQ(1, source.next(line));
    EXPECT_EQ(expected, line);
  }
  EXPECT_EQ(0, source.next(line));
  EXPECT_EQ(5, source.lines_read());
}

// The carriage return is the last byte read ahead and its newline the first of the next part.
TEST_F(TextFiles, ALineEndAcrossTheReadAhead) {
  std::string wide(65535, 'w');
  LineSource source(make("lines", wide + "\r\nlast").c_str());
  std::string line;
  EXPECT_EQ(1, source.next(line));
  EXPECT_EQ(wide, line);
  EXPECT_EQ(1, source.next(line));
  EXPECT_EQ("last", line);
}

TEST_F(TextFiles, FoldersAndLongNamesAreRefused) {
  EXPECT_EQ(nullptr, open_text(path("").c_str()));
  EXPECT_EQ(nullptr, open_text(path("missing").c_str()));
  EXPECT_EQ(1, file_name_fits(std::string(79, 'x')));
  EXPECT_EQ(0, file_name_fits(std::string(80, 'x')));
  EXPECT_EQ("File name too long, at most 79 characters\n", recording.console.text);
}

TEST_F(TextFiles, TheSafetyRuleForExistingFiles) {
  char mode = 0;
  EXPECT_NE(nullptr, open_output(path("new"), mode));
  EXPECT_EQ('w', mode);
  EXPECT_NE(nullptr, open_output(make("old.tmp", "x"), mode));
  EXPECT_EQ('w', mode);
  EXPECT_NE(nullptr, open_output(make("old.add", "x"), mode));
  EXPECT_EQ('a', mode);
  EXPECT_EQ("", recording.console.text);
  EXPECT_EQ(nullptr, open_output(make("old.txt", "x"), mode));
  EXPECT_EQ("Safer not to write onto an existing file\n", recording.console.text);
  EXPECT_EQ(bytes_of("old.txt"), "x");
}

// A link may stand where the user put it, but a new file is never made through one that leads away.
TEST_F(TextFiles, LinksAreFollowedInsideTheirFolderOnly) {
  char mode = 0;
  make("inside", "x");
  std::filesystem::create_symlink("inside", path("near.tmp"));
  EXPECT_NE(nullptr, open_output(path("near.tmp"), mode));
  EXPECT_EQ(bytes_of("inside"), "");
  const std::string away = std::filesystem::temp_directory_path() / "velora_away";
  std::filesystem::create_symlink(away, path("far.tmp"));
  EXPECT_EQ(nullptr, open_output(path("far.tmp"), mode));
  EXPECT_FALSE(std::filesystem::exists(away));
  std::filesystem::create_symlink("nowhere", path("lost"));
  EXPECT_EQ(nullptr, open_output(path("lost"), mode));
  EXPECT_TRUE(recording.console.text.ends_with("Safer not to write onto an existing file\n"));
  EXPECT_FALSE(std::filesystem::exists(path("nowhere")));
}

TEST_F(TextFiles, OutputIsTakenBackUnlessCommitted) {
  make("log.add", "kept\n");
  for (bool whole : {false, true}) {
    for (const char *name : {"fresh", "log.add"}) {
      LineSink sink;
      ASSERT_EQ(1, sink.open(path(name)));
      EXPECT_EQ(1, sink.write_line("more"));
      if (whole) {
        EXPECT_EQ(1, sink.commit());
      }
    }
    EXPECT_EQ(whole, fs::exists(path("fresh")));
    EXPECT_EQ(whole ? "kept\nmore\n" : "kept\n", bytes_of("log.add"));
  }
}

TEST_F(TextFiles, AFullDiskIsReported) {
  if (!fs::exists("/dev/full"))
    GTEST_SKIP() << "no full disk to write to";
  gTrustAll = true; // the link leads out of its folder
  fs::create_symlink("/dev/full", path("full.tmp"));
  LineSink sink;
  ASSERT_EQ(1, sink.open(path("full.tmp")));
  sink.write_line("lost");
  EXPECT_EQ(0, sink.commit());
  EXPECT_NE(std::string::npos, recording.console.text.find("Cannot write all of file"));
  gTrustAll = false;
}

TEST(TableRows, SplitAndJoinAreInverse) {
  for (const char *line : {"", "a", "a\tb", "\t", "a\t\tb\t"})
    EXPECT_EQ(line, join_row(split_row(line)));
  EXPECT_EQ((TableRow{"a", "", "b", ""}), split_row("a\t\tb\t"));
  EXPECT_EQ(0, fits_field("a\tb"));
  EXPECT_EQ(0, fits_field("a\n"));
}

TEST(TableRows, PrintedListsAreReadFieldByField) {
  EXPECT_EQ((TableRow{"1", "two words", "c", "2.500000", "-3", "name"}),
            list_line_fields("[ #1 \"two words\" 'c' #r2.500000 #-3 name ]"));
  EXPECT_EQ((TableRow{"[ #1 \"]\" ]", "( Pair #1 #2 )", "x"}),
            list_line_fields("[ [ #1 \"]\" ] ( Pair #1 #2 ) x ]"));
  EXPECT_EQ((TableRow{"]", "'", "tab bed"}), list_line_fields("']' ''' \"tab\tbed\""));
  EXPECT_TRUE(list_line_fields("nil").empty());
  EXPECT_TRUE(list_line_fields(" [ ]").empty());
  EXPECT_EQ((TableRow{"open"}), list_line_fields("[ \"open"));
}

} // namespace
} // namespace velora
