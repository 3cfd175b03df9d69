// The query loop of the CONTROL window, driven as a user types, pastes and interrupts.
#include "shell/console_window.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/needs.h"
#include "platform/response.h"
#include "shell/console_text.h"
#include "unit/shell/desk_kit.h"

namespace velora {

namespace {

class ConsoleWindow : public kit::DeskTest {
protected:
  void SetUp() override {
    DeskTest::SetUp();
    news();
  }
};

TEST_F(ConsoleWindow, TypedLineIsAnsweredAndThePromptStandsAgain) {
  type("+ #1");
  EXPECT_EQ(news(), "");
  type(" #2\n");
  EXPECT_EQ(news(), "+ #1 #2\n#3\nQUERY> ");
  EXPECT_EQ(greqQuery, 1);
}

TEST_F(ConsoleWindow, UnmatchedTextIsRefusedAndCanBeRecalled) {
  type("head [#1\n");
  EXPECT_EQ(news(), "head [#1\nUnmatched square brackets\nPlease re-type QUERY:\nQUERY> ");
  EXPECT_TRUE(std::any_of(desktop().log.begin(), desktop().log.end(), [](const std::string &line) {
    return line.starts_with("stands out ") && line.find("Unmatched") != std::string::npos;
  })) << "it looks like any other message";
  type("(+ #1\n");
  EXPECT_EQ(news(), "(+ #1\nUnmatched round brackets\nPlease re-type QUERY:\nQUERY> ");
  type("\"abc\n");
  EXPECT_EQ(news(), "\"abc\nUnmatched double quotes\nPlease re-type QUERY:\nQUERY> ");
  type("\n");
  EXPECT_EQ(news(), "\nPlease re-type QUERY:\nQUERY> ");
  EXPECT_TRUE(recall_key(-1));
  EXPECT_TRUE(recall_key(-1));
  EXPECT_EQ(desktop().windows[hControl].typed, "(+ #1");
}

TEST_F(ConsoleWindow, PastedLinesRunInOrderAndTheRestStaysTyped) {
  type("+ #1 #1\n\nsum [#1\n #2]\n+ #2");
  EXPECT_EQ(news(), "+ #1 #1\n#2\nQUERY> sum [#1  #2]\n#3\nQUERY> ");
  EXPECT_EQ(desktop().windows[hControl].typed, "+ #2");
}

TEST_F(ConsoleWindow, FaultyQueryStandsOutAndTheLoopGoesOn) {
  type("nosuch #1\n");
  EXPECT_NE(news().find("please define unrecognised symbol: nosuch"), std::string::npos);
  EXPECT_TRUE(logged("stands out 1 \"please define unrecognised symbol: nosuch"));
  EXPECT_TRUE(logged("beep"));
  type("+ #1 #2\n");
  EXPECT_EQ(news(), "+ #1 #2\n#3\nQUERY> ");
}

TEST_F(ConsoleWindow, InterruptEndsTheQueryAndWhatWasPastedBehindIt) {
  desktop().on_pump = [] { interrupt_asked(); };
  type("sum (list_of_int #1 #100000000 #1)\n+ #1 #1\n");
  const std::string text = news();
  EXPECT_NE(text.find("Query interrupted\n"), std::string::npos);
  EXPECT_EQ(text.find("#2\n"), std::string::npos);
  EXPECT_TRUE(text.ends_with("QUERY> "));
  desktop().on_pump = nullptr;
  type("+ #1 #2\n");
  EXPECT_EQ(news(), "+ #1 #2\n#3\nQUERY> ");
}

TEST_F(ConsoleWindow, MenusAreGreyWhileALongQueryRuns) {
  type("+ #1 #1\n");
  EXPECT_FALSE(logged("menus off")) << "a quick query does not flicker";
  desktop().on_pump = [this] {
    if (logged("menus off"))
      interrupt_asked();
  };
  type("sum (list_of_int #1 #2000000000 #1)\n");
  desktop().on_pump = nullptr;
  EXPECT_TRUE(logged("menus off"));
  EXPECT_TRUE(logged("menus on"));
}

TEST_F(ConsoleWindow, LineTypedWhileAQueryRunsRunsAfterIt) {
  int turns = 0;
  desktop().on_pump = [&] {
    if (++turns == 1)
      type("+ #4 #4\n");
    EXPECT_EQ(shown().find("#8"), std::string::npos);
  };
  type("length_of_nothing_known\n"); // answered at once, without a look at the keys
  type("last (list_of_int #1 #300000 #1)\n");
  desktop().on_pump = nullptr;
  ASSERT_GT(turns, 0);
  EXPECT_TRUE(news().ends_with("#300000\nQUERY> + #4 #4\n#8\nQUERY> "));
}

TEST_F(ConsoleWindow, CharactersAreReadFromWhatIsTyped) {
  desktop().on_pump = [this] { type("xyz"); };
  type("getchar\n");
  desktop().on_pump = nullptr;
  EXPECT_TRUE(news().ends_with("x'x'\nQUERY> ")) << "what is read is shown";
  EXPECT_EQ(desktop().windows[hControl].typed, "yz") << "what was typed ahead is not lost";
  desktop().windows[hControl].typed.clear();
  desktop().on_pump = [this] { type("y\n"); };
  type("getchar\n");
  desktop().on_pump = nullptr;
  EXPECT_EQ(desktop().windows[hControl].typed, "") << "the line end belongs to the character";
}

TEST_F(ConsoleWindow, LongAnswerKeepsTheNewestInTheWindowAndAllInTheLog) {
  type("list_of_int #1 #160000 #1\n");
  const std::string &window = shown();
  EXPECT_GE(window.size(), 200'000U);
  EXPECT_LE(window.size(), 700'000U);
  EXPECT_TRUE(window.ends_with("#160000 ]\nQUERY> "));
  EXPECT_EQ(window.find("[ #1 #2 #3 "), std::string::npos);
  const std::string file = ::testing::TempDir() + "control_text.txt";
  desktop().files.push_back(file);
  choose(112);
  std::stringstream log;
  log << std::ifstream(file).rdbuf();
  EXPECT_NE(log.str().find("[ #1 #2 #3 "), std::string::npos);
  EXPECT_NE(log.str().find("#99999 #100000 #100001 "), std::string::npos) << "lines are not broken";
  std::remove(file.c_str());
}

TEST_F(ConsoleWindow, TheLogIsForItsOwnerAlone) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::path(::testing::TempDir()) / "velora_log_test";
  fs::create_directories(folder);
  const char *usual = std::getenv("TMPDIR");
  const std::string before = usual != nullptr ? usual : "/tmp";
  setenv("TMPDIR", folder.c_str(), 1);
  {
    ConsoleText text;
    text.append("private\n", false);
    text.flush();
    int logs = 0;
    for (const auto &entry : fs::directory_iterator(folder)) {
      ++logs;
      constexpr auto kOthers = fs::perms::group_all | fs::perms::others_all;
      EXPECT_EQ(entry.status().permissions() & kOthers, fs::perms::none);
    }
    EXPECT_EQ(logs, 1);
  }
  setenv("TMPDIR", before.c_str(), 1);
  fs::remove_all(folder);
}

TEST_F(ConsoleWindow, WhatWentFromTheFrontHasAMarkInItsPlace) {
  const std::string mark = "[earlier text: File, Save CONTROL Text...]\n";
  const std::string line = std::string(60, 'x') + "\n";
  for (int round = 0; round < 3; ++round) {
    for (std::size_t told = 0; told < kMostCharacters; told += 100 * line.size()) {
      for (int i = 0; i < 100; ++i)
        DisplayResponse(line);
      gDesktopConsole.show();
    }
    EXPECT_TRUE(shown().starts_with(mark)) << round << ": " << shown().substr(0, 80);
    EXPECT_EQ(shown().find(mark, 1), std::string::npos) << "one mark";
    EXPECT_LE(shown().size(), kMostCharacters + mark.size());
  }
}

TEST_F(ConsoleWindow, MuchTextIsBrokenWithinWhatIsInSight) {
  desktop().columns_in_sight = 60;
  std::string numbers;
  for (int i = 0; i < 4000; ++i)
    numbers += "#" + std::to_string(i * 37 % 5000) + " ";
  DisplayResponse("\n" + numbers + "\n" + std::string(9000, 'w') + "\n");
  std::stringstream lines(news());
  int full = 0;
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 60U);
    full += line.size() > 40 ? 1 : 0;
  }
  EXPECT_GT(full, 300);
}

TEST_F(ConsoleWindow, LongLinesAreBrokenForTheWindowAtBlanks) {
  const std::string a(900, 'a');
  DisplayResponse("\n" + a + " " + std::string(400, 'b') + "\n");
  EXPECT_EQ(news(), "\n" + a + " " + std::string(349, 'b') + "\n" + std::string(51, 'b') + "\n");
}

TEST_F(ConsoleWindow, MessagesStandOutWhereTheyStandInTheText) {
  const auto standing_out = [this] {
    std::string all;
    for (const std::string &line : desktop().log)
      if (line.starts_with("stands out "))
        all += line + "\n";
    return all;
  };
  run_entry([this] {
    DisplayResponse("\nplain\n");
    BeepMsge("one\n", 0);
    DisplayResponse("half");
    BeepMsge("two, ", 1); // begins a line, and goes on in it
    BeepMsge("three\n", 1);
    DisplayResponse("more\n");
    EXPECT_EQ(shown().find("plain"), std::string::npos) << "collected";
    PromptUser("Go on?", {"Yes"});
    EXPECT_TRUE(shown().ends_with("more\n")) << "all is seen when something is asked";
    return 1;
  });
  EXPECT_TRUE(news().starts_with("\nplain\none\nhalf\ntwo, three\nmore\n"));
  EXPECT_EQ(standing_out(), "stands out 1 \"one\\n\"\nstands out 1 \"two, three\\n\"\n");
  EXPECT_EQ(std::count(desktop().log.begin(), desktop().log.end(), "beep"), 1);
}

TEST_F(ConsoleWindow, InterruptBeginsALineOfItsOwn) {
  run_entry([] {
    DisplayResponse("\n#81");
    error_exit("Query interrupted\n");
    return 1;
  });
  EXPECT_EQ(news(), "\n#81\nQuery interrupted\n\nQUERY> ");
}

TEST_F(ConsoleWindow, PastedQueriesAreShownTogetherAndCanBeStopped) {
  std::string many;
  for (int i = 0; i < 50; ++i)
    many += "nosuch\n";
  desktop().log.clear();
  type(many + "+ #1 #1\n");
  EXPECT_TRUE(news().ends_with("QUERY> + #1 #1\n#2\nQUERY> "));
  const auto appends = std::count_if(desktop().log.begin(), desktop().log.end(),
                                     [](const auto &l) { return l.starts_with("append "); });
  EXPECT_LT(appends, 20);
  int looks = 0;
  desktop().on_pump = [&] {
    if (++looks == 2)
      interrupt_asked();
  };
  for (int i = 0; i < 8; ++i)
    many += many; // some seconds of work
  type(many);
  desktop().on_pump = nullptr;
  EXPECT_EQ(looks, 2);
  EXPECT_TRUE(news().ends_with("Query interrupted\n\nQUERY> "));
  type("+ #1 #2\n");
  EXPECT_EQ(news(), "+ #1 #2\n#3\nQUERY> ");
}

TEST_F(ConsoleWindow, ClearedWindowHasAPromptAndKeepsWhatIsTyped) {
  type("+ #1");
  choose(511);
  EXPECT_EQ(shown(), "\nQUERY> ");
  EXPECT_EQ(desktop().windows[hControl].typed, "+ #1");
}

TEST_F(ConsoleWindow, ConsoleCannotBeClosed) {
  close_asked(hControl);
  EXPECT_EQ(news(), "\nYou're not allowed to close CONTROL window\n\nQUERY> ");
  EXPECT_EQ(window_kind(hControl), kControlWindow);
}

TEST_F(ConsoleWindow, OldLineIsTakenToThePrompt) {
  EXPECT_TRUE(reuse_line("QUERY> + #1 #2"));
  EXPECT_EQ(desktop().windows[hControl].typed, "+ #1 #2");
  EXPECT_FALSE(reuse_line("QUERY> "));
}

TEST_F(ConsoleWindow, NarrationIsCollectedAndBelongsToTheWindowItWasToldIn) {
  type("map (nar_line \"once \") (list_of_int #1 #100 #1)\n");
  ASSERT_NE(gNarWind, 0);
  EXPECT_TRUE(desktop().windows[gNarWind].text.ends_with("once 99\nonce 100\n"));
  EXPECT_FALSE(logged("append 2 \"once 1\\n\""));
  type("[(nar_line \"lost\") nar_close (nar_line \"kept\")]\n");
  EXPECT_EQ(desktop().windows[gNarWind].text, "kept\n");
}

TEST_F(ConsoleWindow, NarrativeWindowKeepsTheNewest) {
  run_entry([] {
    const std::string line = std::string(99, 'x') + "\n";
    for (std::size_t told = 0; told < 2 * kMostStory; told += line.size())
      gConsole->narrative(line);
    gConsole->narrative("end\n");
    return 1;
  });
  const std::string &story = desktop().windows[gNarWind].text;
  EXPECT_GE(story.size(), kKeptStory - 100);
  EXPECT_LE(story.size(), kMostStory);
  EXPECT_TRUE(story.ends_with("x\nend\n"));
}

} // namespace

} // namespace velora
