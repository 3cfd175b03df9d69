// List built-ins on large and random lists: fast ways give what the slow ways give, and nothing
// takes time that grows with the square of the length.
#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "core/space.h"
#include "eval/evaluate.h"
#include "kit/language.h"

namespace velora {
namespace {

using kit::answer;

class ListsTest : public kit::Language {
protected:
  void SetUp() override {
    Language::SetUp();
    before_ = node_count;
    resize(3000000);
  }
  void TearDown() override {
    resize(before_);
    Language::TearDown();
  }
  static void resize(std::int32_t nodes) {
    free_node_stack();
    node_count = nodes;
    ASSERT_EQ(alloc_free_list(), 1);
    init_free_list();
  }

private:
  std::int32_t before_ = 0;
};

// A list of few different numbers, whole and real, as text.
std::string random_numbers(std::mt19937 &random, int count) {
  std::string text = "[";
  for (int i = 0; i < count; ++i)
    text += (random() % 2 != 0 ? " #" : " #r") + std::to_string(random() % 6);
  return text + "]";
}

// The built-in comparisons by themselves are sorted in another way than a function that calls them;
// whole and real numbers that are equal show the order among equals.
TEST_F(ListsTest, SortsAloneAsByInsertion) {
  answer("fdec le ::= int -> int -> bool ; lt ::= int -> int -> bool ;\n"
         "ge ::= int -> int -> bool ; gt ::= int -> int -> bool ; ;\n"
         "fdef le ?0 ?1 ::= <= ?0 ?1 ; lt ?0 ?1 ::= < ?0 ?1 ;\n"
         "ge ?0 ?1 ::= >= ?0 ?1 ; gt ?0 ?1 ::= > ?0 ?1 ; ;\n");
  std::mt19937 random(3);
  const char *const pairs[][2] = {{"<=", "le"}, {"<", "lt"}, {">=", "ge"}, {">", "gt"}};
  for (int count : {0, 1, 2, 3, 7, 20})
    for (const auto &[plain, own] : pairs) {
      const std::string list = random_numbers(random, count);
      const std::string sorted = answer(std::string("sort ") + own + " " + list + " ;\n");
      ASSERT_EQ(answer(std::string("sort ") + plain + " " + list + " ;\n"), sorted) << list;
      ASSERT_EQ(sorted.find("sort"), std::string::npos) << sorted;
    }
}

// A function among the elements keeps the elements from being told apart by their hash.
TEST_F(ListsTest, MakesASetByHashAsByComparison) {
  std::mt19937 random(5);
  for (int count : {1, 5, 40}) {
    const std::string list = random_numbers(random, count);
    const std::string slowly =
        answer("reverse (tail (reverse (mkset (append " + list + " [head])))) ;\n");
    ASSERT_EQ(answer("mkset " + list + " ;\n"), slowly) << list;
  }
}

// Every one of these takes well under a second when it is linear, and minutes when it is not.
TEST_F(ListsTest, AHundredThousandElements) {
  const char *const queries[][2] = {
      {"$ (append (range #1 #100000) (range #1 #100000))", "#200000"},
      {"$ (index (range #1 #100000))", "#100000"},
      {"! (take #99999 (range #1 #100000)) #99998", "#99999"},
      {"head (drop #99999 (range #1 #100000))", "#100000"},
      {"$ (mkset (append (range #1 #100000) (range #1 #100000)))", "#100000"},
      {"$ (filter odd (range #1 #100000))", "#50000"},
      {"$ (takewhile (> #90000) (range #1 #100000))", "#89999"},
      {"last (map add1 (range #1 #100000))", "#100001"},
      {"foldl greater #0 (range #1 #100000)", "#100000"},
      {"foldr greater #0 (range #1 #100000)", "#100000"},
      {"max (range #1 #100000)", "#100000"},
      {"$ (zip (replicate #10 (range #1 #10000)))", "#10000"},
      {"$ (explode (implode (replicate #100000 'a')))", "#100000"},
      {"! (tag (range #1 #100000) #-1) #100000", "#-1"},
      {"$ (insert #99999 (range #1 #100000))", "#100001"},
      {"head (sort <= (list_of_int #100000 #1 #-1))", "#1"},
      {"head (sort < (map (% #9973) (range #1 #100000)))", "#0"},
      {"= (range #1 #100000) (range #1 #100000)", "True"},
      {"member #0 (range #1 #100000)", "False"},
      {"$ (repeat #50000 [#1])", "#50000"},
      {"$ (iterate (> #30000) add1 #1)", "#29999"},
      {"$ (concat (replicate #1000 (range #1 #100)))", "#100000"},
      {"head (reverse (range #1 #100000))", "#100000"},
      {"$ (mat_trans (replicate #300 (range #1 #300)))", "#300"}};
  const auto start = std::chrono::steady_clock::now();
  for (const auto &[query, wanted] : queries)
    EXPECT_EQ(answer(std::string(query) + " ;\n"), wanted) << query;
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

// Elements of a deep term are compared without a frame for each level on the argument side; on the
// function side the stack is watched.
TEST_F(ListsTest, ComparesDeepTerms) {
  answer("tdec deep ::= enum ; ; cdec End ::= deep ; In ::= deep -> deep ; ;\n"
         "fdec wrap ::= int -> deep -> deep ; ;\n"
         "fdef wrap #0 ?0 ::= ?0 ; wrap ?0 ?1 ::= wrap (- ?0 #1) (In ?1) ; ;\n");
  EXPECT_EQ(answer("= (wrap #100000 End) (wrap #100000 End) ;\n"), "True");
  EXPECT_EQ(answer("= (wrap #100000 End) (wrap #100001 End) ;\n"), "False");
  EXPECT_EQ(answer("$ (mkset [(wrap #50000 End) (wrap #50000 End)]) ;\n"), "#1");
  EXPECT_EQ(answer("= (combine Pair (range #1 #50000)) (combine Pair (range #1 #50000)) ;\n"),
            "True");
}

TEST_F(ListsTest, TracingShowsEveryComparisonOfASort) {
  answer("trace True ;\n");
  const std::string traced = answer("sort < [#1 #2 #3] ;\n");
  answer("trace False ;\n");
  EXPECT_EQ(traced, "-sort\n--<\n--<\n[ #1 #2 #3 ]");
  EXPECT_EQ(stack_trace, 0);
}

} // namespace
} // namespace velora
