// Which clause is chosen, what is forced on the way, and what a call leaves when none applies.
#include <gtest/gtest.h>

#include "core/space.h"
#include "eval/evaluate.h"
#include "front/cint.h"
#include "kit/language.h"

namespace velora {
namespace {

class MatcherTest : public kit::Language {
protected:
  static void clauses(const std::string &declaration, std::initializer_list<const char *> texts) {
    cint_fdec(declaration);
    for (const char *text : texts)
      ASSERT_EQ(cint_fdef(text), 1) << text;
  }
  static std::string ask(const std::string &query) { return kit::answer(query + " ;"); }
};

TEST_F(MatcherTest, ConstantsWinOverVariablesWhateverTheOrder) {
  clauses("za ::= int -> int -> int",
          {"za ?0 ?1 ::= #1", "za #5 ?0 ::= #2", "za ?0 #5 ::= #3", "za #5 #5 ::= #4"});
  EXPECT_EQ(ask("[(za #1 #1) (za #5 #1) (za #1 #5) (za #5 #5)]"), "[ #1 #2 #3 #4 ]");
}

TEST_F(MatcherTest, AFailedArgumentLeadsBackToOtherClauses) {
  clauses("zb ::= list int -> int -> int",
          {"zb (: #1 ?0) #1 ::= #10", "zb (: ?0 nil) #2 ::= #20", "zb ?0 ?1 ::= #30"});
  EXPECT_EQ(ask("[(zb [#1] #1) (zb [#1] #3) (zb [#4] #1)]"), "[ #10 #30 #30 ]");
}

TEST_F(MatcherTest, FewerArgumentsAreTriedWhenAllOfThemMatchNothing) {
  clauses("zinc ::= int -> int", {"zinc ::= + #1"});
  EXPECT_EQ(ask("zinc #5"), "#6");
  clauses("zd ::= int -> int -> int", {"zd #1 ::= zinc", "zd #2 ?0 ::= ?0"});
  EXPECT_EQ(ask("[(zd #1 #7) (zd #2 #7) (zd #3 #7)]"), "[ #8 #7 ( zd #3 #7) ]");
}

TEST_F(MatcherTest, AShorterHeadOfConstantsWinsOverALongerOneWithVariables) {
  clauses("zs ::= int -> int -> int", {"zs ?0 ?1 ::= #2", "zs #1 ::= + #100"});
  EXPECT_EQ(ask("[(zs #1 #7) (zs #2 #7)]"), "[ #107 #2 ]");
  clauses("zt ::= int -> int", {"zt ::= + #100", "zt ?0 ::= #1", "zt #5 ::= #3"});
  EXPECT_EQ(ask("[(zt #5) (zt #6)]"), "[ #3 #106 ]");
}

TEST_F(MatcherTest, TooFewArgumentsOrNoClauseLeaveTheCallAsItStands) {
  clauses("ze ::= int -> int -> int", {"ze #1 ?0 ::= ?0"});
  EXPECT_EQ(ask("ze #1"), "( ze #1)");
  EXPECT_EQ(ask("ze #2 (+ #1 #1)"), "( ze #2 #2)");
  cint_fdec("zempty ::= int -> int");
  EXPECT_EQ(ask("zempty #1"), "( zempty #1)");
}

TEST_F(MatcherTest, LaterGroupsAreReachedAndGroundClausesStillWin) {
  cint_fdec("zg ::= int -> int");
  cint_fdef("zg ?0 ::= - #0 ?0");
  for (int i = 0; i < 100; ++i)
    ASSERT_EQ(cint_fdef("zg #" + std::to_string(i) + " ::= #" + std::to_string(i * i)), 1);
  for (int round = 0; round < 3; ++round) // the index over the groups comes after a few calls
    EXPECT_EQ(ask("[(zg #0) (zg #17) (zg #99) (zg #100) (zg (+ #40 #2)) (zg #-3)]"),
              "[ #0 #289 #9801 #-100 #1764 #3 ]");
  cint_fdef("zg #100 ::= #5");
  for (int round = 0; round < 6; ++round)
    EXPECT_EQ(ask("zg #100"), "#5") << "a new clause is seen at once";
}

TEST_F(MatcherTest, TheIndexTellsKindsApartAndTriesGeneralPatterns) {
  cint_fdec("zk ::= ?0 -> ?1 -> str");
  for (int i = 0; i < 90; ++i) {
    const std::string number = std::to_string(i);
    cint_fdef("zk #" + number + " ?0 ::= \"int\"");
    cint_fdef("zk #r" + number + ".0 ?0 ::= \"real\"");
    if (i % 9 == 0)
      cint_fdef("zk (Pair #" + number + " ?1) ?0 ::= \"pair\"");
  }
  cint_fdef("zk \"a\" #1 ::= \"text\"");
  cint_fdef("zk 'a' ?0 ::= \"char\"");
  cint_fdef("zk ?0 #7 ::= \"seven\"");
  for (int round = 0; round < 4; ++round) {
    EXPECT_EQ(ask("[(zk #3 #7) (zk #r3.0 #0) (zk \"a\" #1) (zk \"b\" #7) (zk 'a' #7)]"),
              "[ \"int\" \"real\" \"text\" \"seven\" \"char\" ]");
    EXPECT_EQ(ask("[(zk #r-0.0 #0) (zk (Pair #81 nil) #0) (zk (Pair #2 nil) #7)]"),
              "[ \"real\" \"pair\" \"seven\" ]");
  }
}

// An argument that cannot be reduced is forced in both passes, and only in these.
TEST_F(MatcherTest, IrreducibleArgumentsAreForcedTwice) {
  clauses("zt ::= ?0 -> int -> int", {"zt #1 ?0 ::= #1", "zt ?0 #2 ::= #2"});
  EXPECT_EQ(ask("zt (error \"no\") #2"), "#2");
  EXPECT_EQ(console().messages, "User error: no\nUser error: no\n");
}

TEST_F(MatcherTest, ArgumentsAreSharedAndForcedOnce) {
  clauses("zu ::= int -> int", {"zu #0 ::= #0", "zu #1 ::= #1", "zu ?0 ::= + ?0 ?0"});
  EXPECT_EQ(ask("zu (+ (print #3) #1)"), "#3( + ( + True #1) ( + True #1))");
  clauses("zone ::= ?0 -> int", {"zone ?0 ::= #1"});
  EXPECT_EQ(ask("zone (print #3)"), "#1") << "a variable forces nothing";
}

TEST_F(MatcherTest, VariablesThatNoPatternBindsStandForThemselves) {
  clauses("zv ::= int -> int", {"zv ?3 ::= makelist ?0 ?3 ?9"});
  EXPECT_EQ(ask("zv #1"), "[ ?0 #1 ?9 ]");
}

TEST_F(MatcherTest, NestingHasALimitThatCanBeSet) {
  clauses("zn ::= int -> int", {"zn #0 ::= #0", "zn ?0 ::= + #1 (zn (- ?0 #1))"});
  EXPECT_EQ(ask("zn #30"), "#30");
  EXPECT_EQ(ask("zn #1000"), "Too many nested calls within the Query\n");
  EXPECT_EQ(ask("zn #30"), "#30");
  gNestingLimit = kMostNesting;
  EXPECT_EQ(ask("zn #4000"), "#4000");
  gNestingLimit = kDefaultNesting;
}

TEST_F(MatcherTest, AFunctionThatChangesItselfWhileItIsMatchedIsSafe) {
  clauses("zx ::= int -> int",
          {"zx (: ?0 (: #1 nil)) ::= #1", "zx (: ?0 ?1) ::= #2", "zx ?0 ::= #3"});
  set_collect_stress(1);
  EXPECT_EQ(ask("zx (: #0 (prog1 nil (denyall zx)))"), "#2");
  set_collect_stress(0);
}

TEST_F(MatcherTest, LongSpinesReduceLikeShortOnes) {
  std::string head = "zl";
  std::string type = "int";
  std::string args;
  for (int i = 0; i < 40; ++i) {
    head += " ?" + std::to_string(i);
    type += " -> int";
    args += " #" + std::to_string(i);
  }
  cint_fdec("zl ::= " + type);
  ASSERT_EQ(cint_fdef(head + " ::= - ?39 ?1"), 1);
  EXPECT_EQ(ask("zl" + args), "#38");
}

// Each round makes a text of a megabyte and drops the one before.
TEST_F(MatcherTest, LongTextsAreFreedLongBeforeTheSpaceIsFull) {
  clauses("zw ::= int -> str -> int",
          {"zw #0 ?0 ::= #1", "zw ?0 \"\" ::= #0", "zw ?0 ?1 ::= zw (- ?0 #1) (str_reverse ?1)"});
  const std::string text(1 << 20, 'x');
  const std::uint64_t before = space_counters().collections;
  EXPECT_EQ(ask("zw #300 \"" + text + "\""), "#1");
  EXPECT_GE(space_counters().collections - before, 4U);
}

TEST_F(MatcherTest, LambdaSubstitutesArgumentsOnly) {
  EXPECT_EQ(ask("(lambda ?0 (+ ?0 (* ?0 #2)) #5)"), "#15");
  EXPECT_EQ(ask("(lambda ?0 (?0 ?0) #5)"), "( ?0 #5)");
  EXPECT_EQ(ask("(lambda #0 #1 #2)"), "( lambda #0 #1 #2)");
}

} // namespace
} // namespace velora
