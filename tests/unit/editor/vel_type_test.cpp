// The type check: what stops a translation, what only warns, and that it warns of true faults only.
#include "editor/vel_type.h"

#include <algorithm>

#include "core/symbols.h"
#include "editor/draw.h"
#include "editor/model/wininfo.h"
#include "editor/picture_walk.h"
#include "editor/svg_canvas.h"
#include "kit/language.h"
#include "kit/log_canvas.h"
#include "kit/pictures.h"

namespace velora {
namespace {

class VelTypeTest : public kit::Language {
protected:
  void SetUp() override {
    kit::Language::SetUp();
    kit::feed("tdec shape ::= enum ; ; cdec Dot ::= shape ; ;\n"
              "fdec len ::= list int -> int ; mix ::= int -> int -> int ; any ::= ?0 -> int ;\n"
              "show ::= int -> str ; f ::= int -> int ; of ::= shape -> int ; ;");
    begin();
  }
  // A fresh picture of f with its result.
  void begin() {
    FreeAllPictures();
    wi = kit::picture("f");
    node(kHexagon, kBold, "int", 200, 300);
    console().clear();
  }
  void TearDown() override {
    FreeAllPictures();
    kit::Language::TearDown();
  }
  int node(int kind, int style, const std::string &label, int x, int y) {
    return kit::place_node(wi, kind, style, label, {x, y, x + 30, y + 20});
  }
  // A box at the result with labels as its inputs.
  int call(const std::string &name, const std::vector<std::string> &labels, int style = kPlain) {
    const int box = node(kBox, style, name, 100, 200);
    int x = 10;
    for (const std::string &label : labels)
      kit::join(wi, node(kHexagon, kPlain, label, x += 40, 100), box);
    kit::join(wi, box, 1);
    return box;
  }
  void feed_box(int box, const std::string &name, const std::string &label, int x) {
    const int inner = node(kBox, kPlain, name, x, 150);
    kit::join(wi, node(kHexagon, kPlain, label, x, 100), inner);
    kit::join(wi, inner, box);
  }
  int check(bool defining = true) {
    t = Translation{};
    return function_input_check(wi, defining ? 1 : 0, t);
  }
  std::string told() const {
    std::string all;
    for (const PictureMessage &message : t.messages)
      all += message.text;
    return all;
  }
  int shape(int slot) const { return shape_style(wi->seg_ments[slot]); }

  WinInfo *wi = nullptr;
  Translation t;
};

TEST_F(VelTypeTest, StaysQuietWhereTypesAgree) {
  for (const std::vector<std::string> &labels :
       {std::vector<std::string>{"int", "#3"}, {"( int )", "?4"}, {"mix #1 #2", "len nil"}}) {
    begin();
    call("mix", labels);
    EXPECT_EQ(check(), 1);
    EXPECT_EQ(told(), "") << labels[0];
  }
}

TEST_F(VelTypeTest, KnowsTheTypesOfValues) {
  const std::pair<const char *, const char *> values[] = {{"#3", "int"},
                                                          {"#r2.5", "real"},
                                                          {"\"x\"", "str"},
                                                          {"'c'", "char"},
                                                          {"Dot", "shape"},
                                                          {"(: #1 ?2)", "list ?0"},
                                                          {"mix", "int -> int -> int"},
                                                          {"mix #1", "int -> int"},
                                                          {"show #1", "str"},
                                                          {"list int", "list int"}};
  for (const auto &[value, type] : values)
    EXPECT_TRUE(types_agree(type_of_value(value), read_type(type))) << value;
  EXPECT_EQ(type_text(type_of_value("mix #1")), "int -> int");
  EXPECT_FALSE(types_agree(type_of_value("#3"), read_type("str")));
  EXPECT_FALSE(types_agree(type_of_value("(: #1 nil)"), read_type("int")));
  EXPECT_TRUE(agrees_with_all(type_of_value("?7")));
}

TEST_F(VelTypeTest, WarnsOfALabelAndOfABoxOfAnotherType) {
  const int box = call("mix", {"str"});
  feed_box(box, "show", "int", 200);
  EXPECT_EQ(check(), 1);
  EXPECT_NE(told().find("Warning: mix has parameter str when int expected\n"), std::string::npos);
  EXPECT_NE(told().find("WARNING: mix has parameter str when int expected\n"), std::string::npos);
  EXPECT_EQ(t.expanded, std::vector<int>{box});
}

TEST_F(VelTypeTest, ShowsWhatAnExpandedBoxExpects) {
  const int box = call("mix", {"int"});
  SvgCanvas plain;
  DrawVeloraWindow(wi, plain);
  EXPECT_EQ(plain.document({0, 0, 400, 400}, "x").find("2 int"), std::string::npos);
  expand_function_segment(wi, box, 1);
  SvgCanvas expanded;
  DrawVeloraWindow(wi, expanded);
  const std::string drawn = expanded.document({0, 0, 400, 400}, "x");
  EXPECT_NE(drawn.find("2 int"), std::string::npos);
  EXPECT_EQ(drawn.find("1 int"), std::string::npos); // that input is there
}

// The texts of missing inputs stand clear of the arrows that arrive at the box.
TEST_F(VelTypeTest, WritesWhatIsMissingBesideTheBox) {
  kit::feed("fdec wide ::= int -> int -> int -> (int -> int) -> int ; ;");
  const int box = call("wide", {"int", "int", "int"});
  expand_function_segment(wi, box, 1);
  const PictureLayout layout = lay_out_picture(wi);
  kit::LogCanvas log;
  DrawVeloraWindow(wi, log);
  const auto text = std::find_if(log.texts.begin(), log.texts.end(),
                                 [](const auto &shown) { return shown.text.starts_with("4 "); });
  ASSERT_NE(text, log.texts.end());
  for (const ArcPlace &arc : layout.arcs)
    if (arc_end(arc.seg)->segnum == box) {
      EXPECT_LT(arc.path.back().x + 6, text->box.left);
    }
}

TEST_F(VelTypeTest, TakesAnythingWhereTheDeclaredTypeIsAVariable) {
  call("any", {"str"});
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "");
}

TEST_F(VelTypeTest, WarnsOfFewerAndStopsAtMoreInputs) {
  call("mix", {"int"});
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "Warning: LESS input parameters for mix than expected\n");
  begin(); // where a number is wanted, what is left over is a fault
  feed_box(call("mix", {"int"}), "mix", "int", 200);
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "WARNING: mix has parameter int -> int when int expected\n"
                    "Warning: LESS input parameters for mix than expected\n");
  begin();
  call("mix", {}); // a value, not a call
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "");
  begin();
  call("mix", {"int", "int", "int"});
  EXPECT_EQ(check(), 0);
  EXPECT_EQ(told(), "Error: MORE input parameters for mix than expected\n");
}

// Some inputs are left open on purpose where a function is taken: as an input, through a hold, and
// as a result that is labelled so.
TEST_F(VelTypeTest, TakesAPartialCallForAFunction) {
  for (const bool held : {false, true}) {
    begin();
    wi->seg_ments[1]->label = "list int";
    const int map = node(kBox, kPlain, "map", 100, 200);
    const int inner = node(kBox, kPlain, "mix", 20, 100);
    const int hold = held ? node(kHoldValue, 0, "h", 40, 150) : inner;
    kit::join(wi, node(kHexagon, kPlain, "#1", 20, 50), inner);
    if (held)
      kit::join(wi, inner, hold);
    kit::join(wi, hold, map);
    kit::join(wi, node(kHexagon, kPlain, "list int", 200, 100), map);
    kit::join(wi, map, 1);
    EXPECT_EQ(check(), 1);
    EXPECT_EQ(told(), "");
  }
  begin();
  call("mix", {"int"});
  wi->seg_ments[1]->label = "(int -> int)";
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told().find("LESS"), std::string::npos) << told();
}

TEST_F(VelTypeTest, LooksThroughJunctionsAndHolds) {
  const int box = node(kBox, kPlain, "mix", 100, 200);
  const int hold = node(kHoldValue, 0, "h", 50, 150);
  const int sink = node(kJunction, 2, "a", 10, 100);
  const int source = node(kJunction, 2, "a", 200, 150);
  kit::join(wi, node(kHexagon, kPlain, "str", 50, 60), hold);
  kit::join(wi, node(kHexagon, kPlain, "\"t\"", 10, 60), sink);
  kit::join(wi, hold, box);
  kit::join(wi, source, box);
  kit::join(wi, box, 1);
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "Warning: mix has parameter str when int expected\n"
                    "Warning: mix has parameter \"t\" when int expected\n");
}

TEST_F(VelTypeTest, StylesBoxesByWhatTheyCall) {
  const int own = call("f", {"int"});
  const int constructor = node(kBox, kPlain, "Dot", 300, 150);
  const int user = node(kBox, kBold, "of", 300, 200);
  wi->seg_ments[user]->style = (5 << 4) | kBold; // its colour stays
  kit::join(wi, constructor, user);
  kit::join(wi, user, node(kHexagon, kPlain, "int", 300, 250));
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "Warning: Mis-match between of and f\n");
  EXPECT_EQ(shape(own), kBold);
  EXPECT_EQ(shape(constructor), kDouble);
  EXPECT_EQ(wi->seg_ments[user]->style, (5 << 4) | kPlain);
}

TEST_F(VelTypeTest, NeverChecksTheExemptOnes) {
  call("prog", {"str", "int", "#3", "int"});
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "");
  for (const char *name : {"lambda", "mp_anything", "assert", "nar_line"})
    EXPECT_TRUE(SpecialCase(name)) << name;
  EXPECT_FALSE(SpecialCase("map"));
}

TEST_F(VelTypeTest, StopsAtNamesThatCannotBe) {
  const int box = call(" ", {"int"});
  EXPECT_EQ(check(), 0);
  EXPECT_EQ(told(), "Blank Function Name\n");
  wi->seg_ments[box]->label = "lambda";
  EXPECT_EQ(check(false), 0);
  EXPECT_EQ(told(), "ERROR: Cannot use lambda inside Query\n");
  wi->seg_ments[box]->label = "shape"; // a type is no function
  EXPECT_EQ(check(), 0);
  EXPECT_EQ(told(), "Unable to find input types of shape\n");
}

TEST_F(VelTypeTest, AsksBeforeItDeclaresWhatABoxCalls) {
  call("unheard", {"int"});
  EXPECT_EQ(check(), 0);
  EXPECT_EQ(find_symbol("unheard", 0), nullptr);
  console().choices = {1};
  EXPECT_EQ(check(), 1);
  TypeNames types;
  ASSERT_EQ(get_intypes_of("unheard", types, 0), 1);
  EXPECT_EQ(types, TypeNames{"int"});
  begin();
  call("unseen", {"#3"});
  EXPECT_EQ(check(false), 1); // a query declares nothing
  EXPECT_EQ(find_symbol("unseen", 0), nullptr);
}

TEST_F(VelTypeTest, WantsTheOutputTypeOfAnUnknownFunction) {
  const int outer = call("mix", {"int"});
  feed_box(outer, "unheard", "int", 300);
  EXPECT_EQ(check(), 0);
  EXPECT_EQ(told(), "Please insert output type for unheard\n");
}

TEST_F(VelTypeTest, ComparesTheResult) {
  call("show", {"int"});
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "WARNING: show has output int when str expected\n");
  wi->seg_ments[1]->label = " ";
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), "WARNING: Blank name for output type of show\n");
}

struct HigherOrder {
  const char *name;
  std::vector<std::string> labels;
  const char *result;
  const char *told;
};

class HigherOrderTest : public VelTypeTest, public testing::WithParamInterface<HigherOrder> {};

TEST_P(HigherOrderTest, ComparesFunctionsWithWhatTheyGet) {
  wi->seg_ments[1]->label = GetParam().result;
  call(GetParam().name, GetParam().labels);
  EXPECT_EQ(check(), 1);
  EXPECT_EQ(told(), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, HigherOrderTest,
    testing::Values(HigherOrder{"map", {"show", "list int"}, "list str", ""},
                    HigherOrder{"map",
                                {"show", "list str"},
                                "list str",
                                "WARNING: For function map, int and str are not compatible\n"},
                    HigherOrder{"map",
                                {"show", "list int"},
                                "list int",
                                "WARNING: For function map, str and int are not compatible\n"},
                    HigherOrder{"map",
                                {"#3", "list int"},
                                "list int",
                                "Warning: map has parameter #3 when (?0->?1) expected\n"
                                "Can't get function parameter of map\n"},
                    HigherOrder{"foldr", {"mix", "#0", "list int"}, "int", ""},
                    HigherOrder{"foldr",
                                {"mix", "\"\"", "list int"},
                                "int",
                                "WARNING: For function foldr, int and str are not compatible\n"},
                    HigherOrder{"foldl",
                                {"any", "#0", "nil"},
                                "int",
                                "Warning: foldl has parameter any when (?0->?1->?1) expected\n"},
                    HigherOrder{"sort",
                                {"<", "list int"},
                                "list str",
                                "WARNING: For function sort, int and str are not compatible\n"}));

TEST_F(VelTypeTest, TellsOfAHigherOrderCallWithoutInputs) {
  wi->seg_ments[1]->label = "list int";
  call("map", {});
  EXPECT_EQ(check(), 1);
  EXPECT_NE(told().find("There are no parameters of map\n"), std::string::npos);
}

} // namespace
} // namespace velora
