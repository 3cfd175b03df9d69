// Cutting typed text into queries, and the walk through earlier ones.
#include "shell/query_text.h"

#include <gtest/gtest.h>

namespace velora {

namespace {

using Lines = std::vector<std::string>;

Lines split(const std::string &typed, std::string &rest) {
  return split_queries(typed, rest);
}

TEST(QueryText, PromptAndBlanksAreTakenOff) {
  EXPECT_EQ(strip_prompt("QUERY>  head [#1 #2] "), "head [#1 #2]");
  EXPECT_EQ(strip_prompt("QUERY> QUERY> x"), "x");
  EXPECT_EQ(strip_prompt("  \t"), "");
  EXPECT_EQ(strip_prompt("MYQUERY> x"), "MYQUERY> x");
}

TEST(QueryText, EachCompleteLineIsAQuery) {
  std::string rest;
  EXPECT_EQ(split("no end yet", rest), Lines{});
  EXPECT_EQ(rest, "no end yet");
  EXPECT_EQ(split("a\nQUERY> b\n\nc", rest), (Lines{"a", "b", ""}));
  EXPECT_EQ(rest, "c");
}

TEST(QueryText, PastedLineThatIsOpenGoesOnInTheNext) {
  std::string rest;
  EXPECT_EQ(split("map f [#1\n#2]\nnext\n", rest), (Lines{"map f [#1 #2]", "next"}));
  EXPECT_EQ(split("(g \"a (\"\n#2)\nnext\n", rest), (Lines{"(g \"a (\" #2)", "next"}));
  EXPECT_EQ(split("(a\n", rest), Lines{"(a"}) << "the last line is a query with its fault";
  EXPECT_EQ(split("a)\nb\n", rest), (Lines{"a)", "b"})) << "no further line mends this";
}

TEST(QueryText, BracketsInPastedCharacterLiteralsAreNoBrackets) {
  std::string rest;
  EXPECT_EQ(split("= '(' c\nnext\n", rest), (Lines{"= '(' c", "next"}));
  EXPECT_EQ(split("['\"' ']'\n']']\nnext\n", rest), (Lines{"['\"' ']' ']']", "next"}));
  EXPECT_EQ(split("[''' '('\n#1]\nnext\n", rest), (Lines{"[''' '(' #1]", "next"}));
  EXPECT_EQ(split("f' (\n')\nnext\n", rest), (Lines{"f' ( ')", "next"})) << "no literals";
}

TEST(QueryText, PastedQueriesHaveNoComments) {
  std::string rest;
  EXPECT_EQ(split("+ /* (\n*/ #1) #2\nnext\n", rest), (Lines{"+ /* ( */ #1) #2", "next"}));
}

TEST(QueryText, LongOpenPasteIsCutInOneWalk) {
  std::string typed = "sum [";
  for (int i = 0; i < 300'000; ++i)
    typed += "#1 #2\n";
  std::string rest;
  const Lines queries = split(typed + "]\nnext\n", rest);
  ASSERT_EQ(queries.size(), 2U);
  EXPECT_EQ(queries[0].size(), typed.size() + 1);
}

TEST(QueryText, HistoryKeepsTheNewest) {
  QueryHistory history;
  for (std::size_t i = 0; i <= kMostQueries; ++i)
    history.add(std::to_string(i));
  std::string found;
  std::size_t steps = 0;
  while (history.recall(-1, "", found))
    ++steps;
  EXPECT_EQ(steps, kMostQueries);
  EXPECT_EQ(found, "1");
}

TEST(QueryText, HistoryWalksBackAndReturnsToWhatWasTyped) {
  QueryHistory history;
  std::string found;
  EXPECT_FALSE(history.recall(-1, "", found));
  history.add("one");
  history.add("two");
  EXPECT_FALSE(history.recall(1, "", found));
  ASSERT_TRUE(history.recall(-1, "half", found));
  EXPECT_EQ(found, "two");
  ASSERT_TRUE(history.recall(-1, "two", found));
  EXPECT_EQ(found, "one");
  EXPECT_FALSE(history.recall(-1, "one", found));
  ASSERT_TRUE(history.recall(1, "one", found));
  ASSERT_TRUE(history.recall(1, "two", found));
  EXPECT_EQ(found, "half");
  history.add("one");
  ASSERT_TRUE(history.recall(-1, "", found));
  EXPECT_EQ(found, "one") << "a repeated query moves to the end";
  ASSERT_TRUE(history.recall(-1, "", found));
  EXPECT_EQ(found, "two");
}

} // namespace

} // namespace velora
