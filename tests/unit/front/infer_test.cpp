// Types of expressions out of the declarations.
#include "front/infer.h"

#include <gtest/gtest.h>

#include "core/trees.h"
#include "front/parse.h"
#include "front/pexpr.h"
#include "front/source.h"
#include "kit/language.h"

namespace velora {
namespace {

class InferTest : public kit::Language {
protected:
  static Tree parsed(const std::string &text) {
    const StatementSource source(text + " ;\n");
    pp_get_token();
    return Tree(p_expression(0));
  }
  // The type, or "ARGUMENT of FUNCTION: WANTED / FOUND at PLACE".
  static std::string type_of(const std::string &text) {
    const Tree term = parsed(text);
    const TypeFinding finding = type_of_expression(term.get());
    if (finding.fits)
      return finding.type;
    std::size_t place = 0;
    expression_text(term.get(), 1000, finding.clash.where, &place);
    return std::to_string(finding.clash.argument) + " of " + finding.clash.function + ": " +
           finding.clash.wanted + " / " + finding.clash.found + " at " + std::to_string(place);
  }
};

TEST_F(InferTest, LiteralsNamesAndCalls) {
  EXPECT_EQ(type_of("#1"), "int");
  EXPECT_EQ(type_of("[]"), "list ?0");
  EXPECT_EQ(type_of("[\"a\" \"b\"]"), "list str");
  EXPECT_EQ(type_of("[[#1]]"), "list (list int)");
  EXPECT_EQ(type_of("Pair #1 'a'"), "pair int char");
  EXPECT_EQ(type_of("map"), "(?0 -> ?1) -> list ?0 -> list ?1");
  EXPECT_EQ(type_of("map (= #1)"), "list int -> list bool");
  EXPECT_EQ(type_of("if True #1"), "int -> int");
}

TEST_F(InferTest, LambdaBindsItsOwnVariable) {
  EXPECT_EQ(type_of("lambda ?0 ?0"), "?0 -> ?0");
  EXPECT_EQ(type_of("lambda ?0 (lambda ?1 (?0 ?1))"), "(?0 -> ?1) -> ?0 -> ?1");
  EXPECT_EQ(type_of("map (lambda ?0 (+ ?0 #1)) [#2]"), "list int");
  // The inner ?0 hides the outer one, which is back behind it.
  EXPECT_EQ(type_of("lambda ?0 (Pair ((lambda ?0 (null ?0)) [#1]) ?0)"), "?0 -> pair bool ?0");
}

TEST_F(InferTest, AClashNamesTheArgumentAndItsPlace) {
  EXPECT_EQ(type_of("+ #1 \"a\""), "2 of +: int / str at 5");
  EXPECT_EQ(type_of("null (+ #1 #2)"), "1 of null: list ?0 / int at 5");
  EXPECT_EQ(type_of("[#1 'a']").substr(0, 6), "2 of :");
}

TEST_F(InferTest, WhatMeetsItselfInsideEnds) {
  EXPECT_NE(type_of("lambda ?0 (?0 ?0)"), "");
  std::string deep = "#1";
  for (int i = 0; i < 2000; ++i)
    deep = "(+ " + deep + " #1)";
  EXPECT_EQ(type_of(deep), "int");
}

TEST_F(InferTest, TypesThatDoubleWithEachCallAreCut) {
  kit::feed("fdec dup ::= ?0 -> pair ?0 ?0 ; ;");
  EXPECT_EQ(type_of("dup (dup #1)"), "pair (pair int int) (pair int int)");
  std::string text = "#1";
  for (int i = 0; i < 60; ++i)
    text = "dup (" + text + ")";
  const std::string type = type_of(text);
  EXPECT_TRUE(type.starts_with("pair (pair (pair ") && type.ends_with("..."));
  EXPECT_LT(type.size(), 10000u);
}

} // namespace
} // namespace velora
