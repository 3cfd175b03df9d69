// Pictures built from text: a whole database against its golden file, and the rules one by one.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "core/needs.h"
#include "editor/builder.h"
#include "kit/faults.h"
#include "kit/language.h"
#include "kit/pictures.h"
#include "platform/safe_file.h"
#include "shell/return_point.h"

using namespace velora;
using namespace velora::kit;

namespace {

// Builds texts in a folder of its own, with the language running.
class BuilderTest : public Language {
protected:
  void SetUp() override {
    Language::SetUp();
    folder_ =
        std::filesystem::temp_directory_path() /
        ("velora_builder_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
         ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override {
    std::error_code failed;
    std::filesystem::remove_all(folder_, failed);
    Language::TearDown();
  }

  std::string base() const { return (folder_ / "text").string(); }

  // The segment file that a text is built into.
  std::string built(const std::string &text, Tidying tidy = Tidying::never) {
    std::ofstream(base() + ".ddb", std::ios::binary) << text;
    run_command([&] { return build_segments(base(), tidy); });
    std::string file;
    read_whole_file(base() + ".seg", file);
    return file;
  }

private:
  std::filesystem::path folder_;
};

std::string golden(const std::string &name) {
  std::string text;
  EXPECT_TRUE(
      read_whole_file(std::string(VELORA_SOURCE_DIR) + "/tests/golden/pictures/" + name, text));
  return text;
}

// The line of a file that begins so.
std::string line_of(const std::string &file, const std::string &start) {
  const std::size_t at = ("\n" + file).find("\n" + start);
  return at == std::string::npos ? "none" : file.substr(at, file.find('\n', at) - at);
}

TEST_F(BuilderTest, AWholeDatabaseBecomesItsPictures) {
  const std::string text = golden("lamps.ddb");
  feed(text);
  EXPECT_EQ(built(text), golden("lamps.seg"));
}

TEST_F(BuilderTest, WhatIsNotLoadedIsDrawnAsValues) {
  const std::string file = built(golden("lamps.ddb"));
  EXPECT_EQ(line_of(file, "add 4"), "add 4 1 2 99 190 129 210");
  EXPECT_EQ(line_of(file, "+ 3"), "+ 3 2 0 168 230 178 250");
}

TEST_F(BuilderTest, BracketsThatDoNothingVanish) {
  const std::string head = "fdec\nf ::= int -> int ;\n;\nfdef\nf ?0 ::= ";
  const std::string plain = built(head + "+ ?0 (* #1 ?0) ;\n;\n");
  EXPECT_EQ(built(head + "((+ (?0)) ((* #1) ?0)) ;\n;\n"), plain);
  EXPECT_NE(built(head + "+ ?0 (* #1) ?0 ;\n;\n"), plain);
}

TEST_F(BuilderTest, PatternsAreGatheredAndStringsKeepTheirQuotes) {
  const std::string file =
      built("fdec\nf ::= list ?0 -> str -> (int -> int) -> bool ;\n;\n"
            "fdef\nf (cons ?x (cons ?y \"a b\")) \"a b\" ?2 ::= = \"x y\" (a (b c)) ;\n;\n");
  EXPECT_EQ(line_of(file, "f "), "f 0 14 1 12");
  EXPECT_EQ(line_of(file, "cons~").substr(0, 26), "cons~?x~(cons~?y~\"a~b\") 2 ");
  EXPECT_EQ(line_of(file, "\"a~b\" "), "\"a~b\" 3 1 2 340 8 380 28");
  EXPECT_EQ(line_of(file, "(~int~->~int~)").substr(0, 20), "(~int~->~int~) 4 1 2");
  EXPECT_EQ(line_of(file, "\"x~y\" "), "\"x~y\" 6 1 2 94 190 134 210");
}

TEST_F(BuilderTest, ConstantPatternsUseUpTheirTypes) {
  const std::string file =
      built("fdec\nf #2 ::= int -> str -> real ;\n;\nfdef\nf #1 ?0 ::= #r1.5 ;\n;\n");
  EXPECT_NE(file.find("\n#1 2 1 2 "), std::string::npos);
  EXPECT_NE(file.find("\nstr 3 1 2 "), std::string::npos);
  EXPECT_EQ(console().messages.find("Error"), std::string::npos);
}

TEST_F(BuilderTest, ClausesOfOneFunctionAreCountedWhereverTheyStand) {
  const std::string file = built("fdec\nf ::= int ;\ng ::= int ;\n;\n"
                                 "fdef\nf ::= #1 ;\ng ::= #2 ;\nf ::= #3 ;\nf ::= #4 ;\n;\n");
  for (const char *header : {"f 0 3 1 12", "g 0 3 1 12", "f 1 3 1 12", "f 2 3 1 12"})
    EXPECT_NE(("\n" + file).find("\n" + std::string(header) + "\n"), std::string::npos) << header;
}

TEST_F(BuilderTest, ExpressionsOfAnyDepthAreDrawn) {
  std::string text = "fdec\nf ::= int ;\n;\nfdef\nf ::= ";
  for (int level = 0; level < 300; ++level)
    text += "(+ #1 ";
  text += "#2";
  text += std::string(300, ')') + " ;\n;\n";
  const std::string file = built(text);
  EXPECT_EQ(line_of(file, "f "), "f 0 1203 1 12");
  EXPECT_NE(file.find(" -11730 "), std::string::npos) << "level 300 stands at 280 - 40 * 300";
}

TEST_F(BuilderTest, NoTextStopsTheReaders) {
  const char *const pieces[] = {"tdec", "fdec",   "fdef",   "cdec",  "f",   "::=", ";",
                                "(",    ")",      "[",      "\"s\"", "?0",  "#1",  "->",
                                "int",  "typeop", "lambda", "/*",    "'c'", "\n"};
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    std::string text = "fdec\nf ::= int ;\n;\nfdef\n";
    for (int i = 0; i < 30; ++i)
      text += std::string(pieces[random() % std::size(pieces)]) + " ";
    const std::string file = built(text);
    EXPECT_TRUE(file.empty() || file.ends_with("$$$$"));
  }
}

// Whichever allocation fails, the command ends and the file is the old one or the new one.
TEST_F(BuilderTest, AnyAllocationMayFail) {
  const std::string text = golden("lamps.ddb");
  feed(text);
  const std::string whole = built(text);
  int failed = 0;
  for (int n = 1; n < 20000; n += 1 + n / 40) {
    fail_allocation(n);
    run_command([&] { return build_segments(base(), Tidying::always); });
    const bool reached = allocation_failed();
    fail_allocation(0);
    std::string file;
    read_whole_file(base() + ".seg", file);
    ASSERT_EQ(file, whole) << "allocation " << n;
    if (!reached)
      break;
    ++failed;
  }
  EXPECT_GT(failed, 100);
}

TEST_F(BuilderTest, WhatAFileCannotCarryIsLeftOut) {
  const std::string text(100, 'x');
  const std::string file = built("fdec\nf ::= str ;\ng ::= int ;\n$$$$ ::= int ;\n;\n"
                                 "fdef\nf ::= \"" +
                                 text + "\" ;\ng ::= #1 ;\n$$$$ ::= #1 ;\n;\n");
  EXPECT_EQ(line_of(file, "f "), "none");
  EXPECT_EQ(line_of(file, "g "), "g 0 3 1 12");
  EXPECT_NE(console().messages.find("f 0: no picture is made, "), std::string::npos);
  EXPECT_NE(console().messages.find("$$$$ 0: no picture is made, "), std::string::npos);
}

} // namespace
