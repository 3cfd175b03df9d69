// Rules and messages of the translation, on pictures made by hand.
#include "editor/translate.h"

#include <algorithm>
#include <chrono>

#include "core/symbols.h"
#include "editor/model/vel_segs.h"
#include "editor/model/wininfo.h"
#include "editor/picture_walk.h"
#include "editor/vel_cmp.h"
#include "kit/language.h"
#include "kit/pictures.h"

namespace velora {
namespace {

constexpr int kFarDown = 300;

class TranslateTest : public kit::Language {
protected:
  void SetUp() override {
    kit::Language::SetUp();
    kit::feed("fdec dbl ::= int -> int ; mix ::= int -> int -> int ; ;");
    console().clear();
  }
  void TearDown() override {
    FreeAllPictures();
    kit::Language::TearDown();
  }
  // A fresh function picture with its result node.
  WinInfo *function(const std::string &name, const std::string &result = "int") {
    wi = kit::picture(name);
    wi->saved = 0;
    node(kHexagon, kBold, result, 200, kFarDown);
    return wi;
  }
  int node(int kind, int style, const std::string &label, int x, int y) {
    return kit::place_node(wi, kind, style, label, {x, y, x + 30, y + 20});
  }
  int input(const std::string &label, int x) { return node(kHexagon, kBold, label, x, 2); }
  int box(const std::string &label, int x, int y, int style = kPlain) {
    return node(kBox, style, label, x, y);
  }
  int join(int from, int to) { return kit::join(wi, from, to); }
  bool said(const std::string &message) const {
    return std::any_of(gTranslation.messages.begin(), gTranslation.messages.end(),
                       [&](const PictureMessage &m) { return m.text == message; });
  }
  bool is_selected(int slot) const { return (wi->seg_ments[slot]->status & kSelected) != 0; }

  WinInfo *wi = nullptr;
};

TEST_F(TranslateTest, OrdersInputsFromLeftToRight) {
  function("f");
  const int right = input("int", 300);
  const int left = input("#7", 10);
  const int below = node(kHexagon, kBold, "#9", 100, 60); // not in the band of the arguments
  const int call = box("mix", 100, 150);
  join(right, call);
  join(below, call);
  join(call, 1);
  kit::feed("fdec f ::= int -> int -> int ; ;");
  console().clear();
  ASSERT_EQ(TranslateGraph(wi, 0), 1) << console().messages;
  EXPECT_EQ(gTranslation.text, "f (#7) ?1 ::= mix (#9) ?1");
  // Places lead both ways; the box next to the result is all of the body.
  const std::string &text = gTranslation.text;
  EXPECT_EQ(segment_at(gTranslation, text.find("(#7)")), left);
  EXPECT_EQ(segment_at(gTranslation, text.find("mix")), call);
  EXPECT_EQ(segment_at(gTranslation, text.rfind("?1")), right);
  EXPECT_EQ(segment_at(gTranslation, 0), 0);
  const TextPlace *place = place_of(gTranslation, below);
  ASSERT_NE(place, nullptr);
  EXPECT_EQ(text.substr(place->from, place->to - place->from), "(#9)");
  EXPECT_EQ(kit::answer("f #7 #2 ;").find("Error"), std::string::npos);
}

TEST_F(TranslateTest, RefusesASavedPictureAndABadName) {
  function("f");
  wi->saved = 1;
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_NE(console().messages.find("Graph already saved\n"), std::string::npos);
  for (const char *name : {"", "two words", "int"}) {
    function(name);
    EXPECT_EQ(TranslateGraph(wi, 0), 0) << name;
  }
  EXPECT_TRUE(gTranslation.text.empty());
}

TEST_F(TranslateTest, WantsExactlyOneResultOfAKnownType) {
  function("f", "nothing");
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("Unknown Output Parameter Type\n"));
  function("g");
  const int one = box("dbl", 10, 100);
  const int other = box("dbl", 100, 100);
  join(one, 1);
  join(other, 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("Output is result of more than one function\n"));
  // What was declared for it stays.
  EXPECT_NE(find_symbol("g", 0), nullptr);
}

TEST_F(TranslateTest, ComparesTheNumberOfInputs) {
  kit::feed("fdec f ::= int -> int -> int ; ;");
  function("f");
  join(input("int", 10), 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("ERROR: Incorrect number of Parameters\n"));
}

TEST_F(TranslateTest, MarksJunctionsAndHoldsAtTheResult) {
  kit::feed("fdec f ::= int -> int ; ;");
  function("f");
  const int hold = node(kHoldValue, 0, "h", 100, 100);
  join(input("int", 10), hold);
  join(hold, 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("ERROR: Hold_Value should not link directly to output\n"));
  EXPECT_TRUE(is_selected(hold));
  function("f");
  const int sink = node(kJunction, 2, "a", 10, 60);
  const int source = node(kJunction, 2, "a", 10, 100);
  join(input("int", 10), sink);
  join(source, 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("ERROR: Junction should not link directly to output\n"));
  EXPECT_TRUE(is_selected(source));
  EXPECT_FALSE(is_selected(sink));
}

TEST_F(TranslateTest, ReportsAHoldThatHoldsNothing) {
  kit::feed("fdec f ::= int ; ;");
  function("f");
  const int hold = node(kHoldValue, 0, "h", 100, 60);
  const int call = box("dbl", 100, 100);
  join(hold, call);
  join(call, 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("ERROR: Incorrect use of Hold"));
  EXPECT_TRUE(is_selected(hold));
}

TEST_F(TranslateTest, TakesTheOneSinkWhateverItsLabel) {
  kit::feed("fdec f ::= int -> int ; ;");
  function("f");
  const int sink = node(kJunction, 2, "here", 10, 60);
  const int source = node(kJunction, 2, "there", 100, 100);
  const int call = box("dbl", 100, 150);
  join(input("int", 10), sink);
  join(source, call);
  join(call, 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 1) << console().messages;
  EXPECT_EQ(gTranslation.text, "f ?0 ::= dbl ?0");
  // With a second sink labels count, and this source has none.
  join(input("int", 200), node(kJunction, 2, "elsewhere", 200, 60));
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("ERROR: Junction connections are ambiguous or unmatched\n"));
  EXPECT_TRUE(is_selected(source));
}

TEST_F(TranslateTest, PassesHexagonsAndLeavesTypesOut) {
  kit::feed("fdec f ::= int -> int ; ;");
  function("f");
  const int named = node(kHexagon, kPlain, "int", 100, 100);
  const int type = node(kHexagon, kDouble, "int", 200, 100);
  const int first = box("dbl", 100, 60);
  const int call = box("mix", 100, 150);
  join(input("int", 10), first);
  join(first, named);
  join(named, call);
  join(type, call);
  join(call, 1);
  ASSERT_EQ(TranslateGraph(wi, 0), 1) << console().messages;
  EXPECT_EQ(gTranslation.text, "f ?0 ::= mix (dbl ?0)");
  // A second arc into the hexagon is one too many.
  join(box("dbl", 10, 60), named);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("Output is result of more than one function\n"));
}

TEST_F(TranslateTest, ShowsExactlyTheArcsOfACycle) {
  kit::feed("fdec f ::= int -> int ; ;");
  function("f");
  const int a = box("dbl", 100, 60);
  const int b = box("dbl", 100, 120);
  const int outside = box("dbl", 100, 180);
  const int named = node(kHexagon, kPlain, "int", 200, 90);
  join(input("int", 10), outside);
  const std::vector<int> ring{join(a, b), join(b, named), join(named, a)};
  const int leaving = join(b, outside);
  join(outside, 1);
  // Two inputs for the box outside: the type check would refuse it first.
  remove_segment(wi->seg_ments[outside]->segb_ptr.front()->segnum, wi);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("Cycle in function graph - dbl\n"));
  EXPECT_EQ(gTranslation.highlighted, ring);
  EXPECT_EQ(wi->seg_ments[leaving]->status & kHighlighted, 0u);
  // What a former translation pointed out is cleared by the next.
  remove_segment(ring[2], wi);
  TranslateGraph(wi, 0);
  EXPECT_EQ(wi->seg_ments[ring[0]]->status & kHighlighted, 0u);
}

TEST_F(TranslateTest, EndsOnHexagonsThatFeedEachOther) {
  kit::feed("fdec f ::= int -> int ; ;");
  function("f");
  input("int", 10);
  const int one = node(kHexagon, kPlain, "one", 100, 60);
  const int two = node(kHexagon, kPlain, "two", 200, 60);
  const int call = box("prog", 100, 150);
  join(two, one);
  join(one, two);
  join(one, call);
  join(call, 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  EXPECT_TRUE(said("Cycle in function graph - one\n"));
}

TEST_F(TranslateTest, RefusesTextsThatTheParserCannotTake) {
  kit::feed("fdec f ::= int -> int ; ;");
  for (const auto &[label, message] : {std::pair("(: #1", "Unmatched round brackets\n"),
                                       std::pair("[#1", "Unmatched square brackets\n"),
                                       std::pair("\"x", "Unmatched double quotes\n")}) {
    function("f");
    const int arg = input(label, 10);
    join(arg, 1);
    EXPECT_EQ(TranslateGraph(wi, 0), 0) << label;
    EXPECT_TRUE(said(message)) << label;
    EXPECT_TRUE(is_selected(arg));
  }
}

TEST_F(TranslateTest, TellsAllThatIsUnmatchedInTheFirstInputThatCannotBe) {
  kit::feed("fdec f ::= int -> int -> int -> int ; ;");
  function("f");
  join(input("int", 10), 1);
  input("([#1 \"x", 50);
  input("int", 90);
  EXPECT_EQ(TranslateGraph(wi, 0), 0);
  std::vector<std::string> told;
  for (const PictureMessage &message : gTranslation.messages)
    told.push_back(message.text);
  // No input is told that is not reached.
  const std::vector<std::string> expected{"Formal parameters of f are:\n",
                                          "int\n",
                                          "int\n",
                                          "int\n",
                                          "act par int, fm par int\n",
                                          "act par ([#1 \"x, fm par int\n",
                                          "Unmatched square brackets\n",
                                          "Unmatched round brackets\n",
                                          "Unmatched double quotes\n"};
  EXPECT_EQ(told, expected);
}

TEST_F(TranslateTest, CallsItselfByABlankBox) {
  kit::feed("fdec f ::= int -> int ; ;");
  function("f");
  const int call = box(" ", 100, 100, kBold);
  const int inner = box(" ", 100, 60, kBold);
  join(input("int", 10), inner);
  join(inner, call);
  join(call, 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 1) << console().messages;
  EXPECT_EQ(gTranslation.text, "f ?0 ::= f (f ?0)");
  EXPECT_EQ(wi->seg_ments[inner]->label, "f");
}

// Twenty boxes, each fed twice by the one before.
TEST_F(TranslateTest, BoundsAPictureThatDoublesItself) {
  kit::feed("fdec f ::= int -> int ; ;");
  for (const bool through_junctions : {false, true}) {
    function("f");
    int last = input("int", 10);
    for (int i = 0; i < 25; ++i) {
      const int next = through_junctions ? node(kJunction, 2, std::to_string(i), 10, 60 + i)
                                         : box("mix", 100, 60 + i);
      join(last, next);
      join(last, next);
      last = next;
      if (!through_junctions)
        continue;
      last = node(kJunction, 2, std::to_string(i), 50, 60 + i);
    }
    const int call = box("prog", 100, 200);
    join(last, call);
    join(call, 1);
    Translation t;
    t.quiet = true;
    EXPECT_FALSE(picture_clause(wi, {"int"}, t));
    EXPECT_LE(t.steps, kMostWalkSteps + 1); // each a fraction of a microsecond
    ASSERT_FALSE(t.messages.empty());
    EXPECT_NE(t.messages.back().text.find("Hold_Values"), std::string::npos);
    EXPECT_LE(t.rhs.size(), kLongestTranslation + 100);
  }
}

TEST_F(TranslateTest, KeepsAnEqualDeclarationAndAsksBeforeADifferentOne) {
  kit::feed("fdec f ::= int -> int ; ; fdef f #1 ::= #2 ; ;");
  console().clear();
  function("f");
  const int call = box("dbl", 100, 100);
  const int arg = input("int", 10);
  join(arg, call);
  join(call, 1);
  EXPECT_EQ(TranslateGraph(wi, 1), 1) << console().messages;
  EXPECT_NE(kit::answer("f #1 ;").find("#2"), std::string::npos); // the clause is still there
  wi->seg_ments[arg]->label = "str";
  console().choices = {2};
  EXPECT_EQ(TranslateGraph(wi, 1), 0);
  EXPECT_NE(kit::answer("f #1 ;").find("#2"), std::string::npos);
  console().choices = {1};
  EXPECT_EQ(TranslateGraph(wi, 1), 1);
  TypeNames types;
  ASSERT_EQ(get_intypes_of("f", types, 0), 1);
  EXPECT_EQ(types, TypeNames{"str"});
}

TEST_F(TranslateTest, AsksBeforeItReplacesAnotherBody) {
  kit::feed("fdec f ::= int -> int ; ; fdef f ?0 ::= #2 ; ;");
  function("f");
  const int call = box("+", 100, 100);
  const int arg = input("int", 10);
  join(arg, call);
  join(arg, call);
  join(call, 1);
  EXPECT_EQ(TranslateGraph(wi, 0), 0); // nobody answers: it stays
  EXPECT_NE(kit::answer("f #4 ;").find("#2"), std::string::npos);
  console().choices = {1};
  EXPECT_EQ(TranslateGraph(wi, 0), 1) << console().messages;
  EXPECT_NE(kit::answer("f #4 ;").find("#8"), std::string::npos);
  EXPECT_EQ(TranslateGraph(wi, 0), 1); // an equal one is no question
  // Variables of other names make no other clause.
  kit::feed("deny [f ?0] ; fdef f ?7 ::= + ?7 ?7 ; ;");
  EXPECT_EQ(TranslateGraph(wi, 0), 1);
  EXPECT_TRUE(said("Good! The text has this clause already\n"));
  kit::feed("fdef f ?7 ::= #3 ; ;");
  console().choices = {1};
  EXPECT_EQ(TranslateGraph(wi, 0), 1);
  EXPECT_EQ(clause_count("f"), 1);
  EXPECT_NE(kit::answer("f #4 ;").find("#8"), std::string::npos);
}

TEST_F(TranslateTest, AsksTheValuesOfAQuery) {
  kit::feed("fdec f ::= int -> int ; ;");
  function("f");
  const int call = box("+", 100, 100);
  const int arg = input("int", 10);
  join(arg, call);
  join(arg, call);
  join(call, 1);
  console().typed = {"#21"};
  console().clear();
  GraphToQuery(wi);
  EXPECT_NE(console().text.find("QUERY>>   + (int) (int)\n"), std::string::npos);
  EXPECT_NE(console().text.find("QUERY>>   + (#21) (#21)\n"), std::string::npos);
  EXPECT_NE(console().text.find("#42"), std::string::npos);
}

TEST_F(TranslateTest, TellsWhyAQueryCannotBe) {
  function("f");
  join(box("dbl", 10, 100), 1);
  join(box("dbl", 100, 100), 1);
  EXPECT_EQ(GraphToQuery(wi), 0);
  EXPECT_TRUE(said("ERROR: More than one path to result\n"));
  function("g");
  join(node(kHexagon, kPlain, "(#1", 100, 100), 1);
  EXPECT_EQ(GraphToQuery(wi), 0);
  EXPECT_TRUE(said("Sorry, invalid Query\n"));
  WinInfo *empty = kit::picture("h");
  EXPECT_EQ(GraphToQuery(empty), 0);
}

} // namespace
} // namespace velora
