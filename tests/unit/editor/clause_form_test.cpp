// The common form of clauses: what counts as the same, and what does not.
#include <gtest/gtest.h>

#include "core/symbols.h"
#include "editor/clause_form.h"
#include "kit/language.h"

using namespace velora;
using namespace velora::kit;

namespace {

TEST(ClauseFormTest, NamesOfVariablesDoNotCount) {
  EXPECT_TRUE(same_clause("f ?0 ?1 ::= g ?1 ?0", "f ?7 ?2 ::= g ?2 ?7"));
  EXPECT_FALSE(same_clause("f ?0 ?1 ::= g ?1 ?0", "f ?0 ?1 ::= g ?0 ?1"));
  EXPECT_TRUE(same_clause("f (: ?2 ?3) ?1 ::= ?3", "f (: ?0 ?1) ?2 ::= ?1"));
  EXPECT_FALSE(same_clause("f ?0 ?0 ::= #1", "f ?0 ?1 ::= #1")) << "two places, one variable";
}

TEST(ClauseFormTest, AVariableTheHeadLacksKeepsItsNumber) {
  EXPECT_TRUE(same_clause("f ?0 ::= + ?0 ?7", "f ?1 ::= + ?1 ?7"));
  EXPECT_FALSE(same_clause("f ?0 ::= + ?0 ?7", "f ?0 ::= + ?0 ?8"));
  EXPECT_FALSE(same_clause("f ?1 ::= + ?0 ?1", "f ?0 ::= + ?0 ?1"));
}

TEST(ClauseFormTest, BracketsListsAndLiteralsHaveOneForm) {
  EXPECT_TRUE(same_clause("f ::= ((g (#1)) (x))", "f ::= g #1 x"));
  EXPECT_TRUE(same_clause("f ::= [#1 (g x)]", "f ::= : #1 (: (g x) nil)"));
  EXPECT_TRUE(same_clause("f ::= #r2.50", "f ::= #r2.5"));
  EXPECT_TRUE(same_clause("f ::= #007", "f ::= #7"));
  EXPECT_FALSE(same_clause("f ::= \"a b\"", "f ::= \"a  b\""));
  EXPECT_FALSE(same_clause("f ::= g (h x)", "f ::= g h x"));
}

TEST(ClauseFormTest, LambdasAndHeldExpressionsAreCountedByTheirPlace) {
  EXPECT_TRUE(same_clause("f ?0 ::= lambda ?1 (+ ?1 ?0)", "f ?1 ::= lambda ?0 (+ ?0 ?1)"));
  EXPECT_FALSE(same_clause("f ?0 ::= lambda ?1 (+ ?1 ?0)", "f ?0 ::= lambda ?1 (+ ?0 ?0)"));
  EXPECT_TRUE(same_clause("f ?0 ::= + (HOLDN #4 (g ?0)) (HOLDN #4 (g ?0))",
                          "f ?0 ::= + (HOLDN #9 (g ?0)) (HOLDN #9 (g ?0))"));
  EXPECT_FALSE(same_clause("f ?0 ::= + (HOLDN #4 (g ?0)) (HOLDN #4 (g ?0))",
                           "f ?0 ::= + (HOLDN #4 (g ?0)) (HOLDN #5 (g ?0))"));
}

TEST(ClauseFormTest, WhatIsNoClauseIsLikeNothing) {
  for (const char *text : {"", "f", "f ::=", "f ::= (g", "f ::= g)", "f ::= int", "::= x",
                           "f ::= [", "f ::= ()", "f ::= x ::= y", "f ::= \"open"})
    EXPECT_FALSE(same_clause(text, text)) << text;
  EXPECT_TRUE(same_left_side("f ?0 #1", "f ?3 #1 ::= x"));
  EXPECT_FALSE(same_left_side("f ?0 #1", "f ?3 #2 ::= x"));
}

class ClausesTest : public Language {};

TEST_F(ClausesTest, TheClausesOfAFunctionComeAsText) {
  feed("fdec\ncount_of ::= list ?0 -> int ;\n;\nfdef\ncount_of nil ::= #0 ;\n"
       "count_of (: ?0 ?1) ::= + #1 (count_of ?1) ;\n;\n");
  const symbol *function = find_symbol("count_of", 0);
  ASSERT_NE(function, nullptr);
  EXPECT_EQ(clauses_of(function->b.fc),
            (std::vector<std::string>{"count_of nil ::= #0",
                                      "count_of (: ?0 ?1) ::= + #1 (count_of ?1)"}));
}

} // namespace
