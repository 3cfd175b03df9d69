// The rights of a session: who is asked, what an answer allows, and when a restriction ends.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "kit/recorder.h"
#include "platform/response.h"
#include "platform/trust.h"
#include "platform/trusted_sums.h"
#include "platform/visible_text.h"

using namespace velora;

namespace {

namespace fs = std::filesystem;

class TrustTest : public testing::Test {
protected:
  static constexpr int kRefuse = 1;
  static constexpr int kOnce = 2;
  static constexpr int kTrust = 3;

  void SetUp() override {
    folder_ = fs::temp_directory_path() / ("velora_trust_" + std::to_string(getpid()));
    fs::create_directories(folder_);
    setenv("XDG_STATE_HOME", folder_.c_str(), 1);
    forget_trusted_sums();
    gPersonAnswers = true;
    close_all();
  }
  void TearDown() override {
    close_all();
    gPersonAnswers = false;
    unsetenv("XDG_STATE_HOME");
    forget_trusted_sums();
    fs::remove_all(folder_);
  }
  static void close_all() {
    note_databases_closed();
    settle_trust();
  }
  static EffectWish writing(const std::string &path, bool goes_on = false) {
    return {"write the file", path, !goes_on, goes_on};
  }
  int questions() {
    int count = 0;
    for (const std::string &line : seen_.console.log)
      count += line.starts_with("ask ") ? 1 : 0;
    return count;
  }
  kit::Recording seen_;
  fs::path folder_;
};

TEST_F(TrustTest, ATrustedSessionIsNotAsked) {
  EXPECT_TRUE(effect_is_allowed(writing("/a")));
  note_own_text("own");
  note_database_read("own.ddb", "own");
  EXPECT_TRUE(effect_is_allowed(writing("/a")));
  EXPECT_EQ(questions(), 0);
}

TEST_F(TrustTest, OnceIsForOneThingAndForWritingOn) {
  note_database_read("x.ddb", "strange");
  seen_.console.choices = {kOnce, kRefuse, kRefuse};
  EXPECT_TRUE(effect_is_allowed(writing("/a")));
  EXPECT_TRUE(effect_is_allowed(writing("/a", true)));
  EXPECT_FALSE(effect_is_allowed(writing("/a")));
  EXPECT_FALSE(effect_is_allowed(writing("/b", true)));
  EXPECT_EQ(questions(), 3);
  EXPECT_TRUE(session_is_restricted());
  // What another stranger does was not agreed to.
  note_database_read("y.ddb", "stranger");
  EXPECT_FALSE(effect_is_allowed(writing("/a", true)));
  EXPECT_EQ(why_restricted(), "x.ddb, y.ddb are not trusted");
}

TEST_F(TrustTest, TrustHoldsForLaterRunsUntilTheTextChanges) {
  note_database_read("x.ddb", "strange");
  seen_.console.choices = {kTrust};
  EXPECT_TRUE(effect_is_allowed(writing("/a")));
  EXPECT_FALSE(session_is_restricted());
  close_all();
  forget_trusted_sums();
  note_database_read("x.ddb", "strange");
  EXPECT_FALSE(session_is_restricted());
  note_database_read("x.ddb", "strange, and changed");
  EXPECT_TRUE(session_is_restricted());
  note_own_text("written while restricted");
  close_all();
  note_database_read("x.ddb", "written while restricted");
  EXPECT_TRUE(session_is_restricted());
}

TEST_F(TrustTest, ARestrictionEndsAtTheReturnPointOnly) {
  note_database_read("x.ddb", "strange");
  note_databases_closed();
  EXPECT_TRUE(session_is_restricted());
  settle_trust();
  EXPECT_FALSE(session_is_restricted());
}

TEST_F(TrustTest, WhereNobodyAnswersEffectsAreRefusedAndToldOnce) {
  gPersonAnswers = false;
  note_database_read("x.ddb", "strange");
  const int before = gRefusals;
  for (int i = 0; i < 3; ++i)
    EXPECT_FALSE(effect_is_allowed(writing("/a")));
  EXPECT_EQ(gRefusals - before, 3);
  EXPECT_EQ(questions(), 0);
  EXPECT_EQ(seen_.console.messages,
            "Refused: to write the file /a (outside of its folder); x.ddb is not trusted\n");
}

TEST_F(TrustTest, WhatComesWithTheProgramIsTrusted) {
  trust_folder((folder_ / "lib").string());
  note_database_read((folder_ / "lib" / "a.ddb").string(), "came along");
  EXPECT_FALSE(session_is_restricted());
  note_database_read((folder_ / "library" / "a.ddb").string(), "did not");
  EXPECT_TRUE(session_is_restricted());
}

TEST_F(TrustTest, PathsAreResolvedBeforeTheyAreJudged) {
  fs::create_directories(folder_ / "real");
  fs::create_directory_symlink(folder_ / "real", folder_ / "link");
  EXPECT_EQ(resolved_path((folder_ / "link" / ".." / "real" / "new").string()),
            resolved_path((folder_ / "real" / "new").string()));
  EXPECT_TRUE(
      lies_in(resolved_path((folder_ / "link" / "x").string()), (folder_ / "real").string()));
  EXPECT_FALSE(lies_in(resolved_path((folder_ / "real" / ".." / "x").string()),
                       (folder_ / "real").string()));
  EXPECT_FALSE(
      lies_in(resolved_path((folder_ / "realm" / "x").string()), (folder_ / "real").string()));
}

// --- texts on their way to a terminal ----------------------------------------------------------

TEST(VisibleText, ShowsWhatWouldActOnATerminal) {
  EXPECT_EQ(visible("plain\ttext\n"), "plain\ttext\n");
  EXPECT_EQ(visible("\x1b[2J\r\a\x7f"), "\\x1b[2J\\x0d\\x07\\x7f");
  EXPECT_EQ(visible("\xC2\x9B"
                    "31m"),
            "\\u009b31m");
  EXPECT_EQ(visible("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"),
            "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(visible("\x9B\xFFz\xC3z"), "\\x9b\\xffz\\xc3z");
  EXPECT_EQ(visible("\xC0\x9B\xE0\x80\x9B\xED\xA0\x80\xF4\x90\x80\x80"),
            "\\xc0\\x9b\\xe0\\x80\\x9b\\xed\\xa0\\x80\\xf4\\x90\\x80\\x80");
}

TEST(VisibleText, JoinsTheBytesOfALetter) {
  VisibleText text;
  std::string out;
  for (const char c : std::string("\xE2\x82\xAC\xE2\x82\x1b"))
    out += text.add(std::string(1, c));
  EXPECT_EQ(out, "\xE2\x82\xAC\\xe2\\x82\\x1b");
  EXPECT_EQ(text.add("\xE2\x82"), "");
  EXPECT_EQ(text.rest(), "\\xe2\\x82");
  EXPECT_EQ(text.rest(), "");
}

} // namespace
