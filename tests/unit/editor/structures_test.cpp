// Pictures of constructors: what they declare, and what is wrong with the ones that do not.
#include "core/symbols.h"
#include "db/removal.h"
#include "editor/model/wininfo.h"
#include "editor/translate.h"
#include "kit/language.h"
#include "kit/pictures.h"
#include "shell/return_point.h"

namespace velora {
namespace {

class StructuresTest : public kit::PictureTest {
protected:
  void SetUp() override { ASSERT_EQ(kit::start_language(), 0); }
  void TearDown() override {
    run_command([] {
      clear_user_symbols();
      return 1;
    });
    gSymbolTableChanged = 0;
  }
  void type(const std::string &label, const std::string &name = "") {
    wi = kit::picture(name.empty() ? GetBaseType(label) : name, 0, kConstructorsPicture);
    wi->saved = 0;
    node(kHexagon, kDouble, label, 200, 300);
  }
  int node(int kind, int style, const std::string &label, int x, int y) {
    return kit::place_node(wi, kind, style, label, {x, y, x + 30, y + 20});
  }
  int constructor(const std::string &name, const std::vector<std::string> &arguments, int x) {
    const int box = node(kBox, kDouble, name, x, 200);
    int at = x;
    for (const std::string &argument : arguments)
      kit::join(wi, node(kHexagon, kDouble, argument, at += 35, 100), box);
    kit::join(wi, box, 1);
    return box;
  }
  std::string declarations() {
    std::vector<std::string> texts;
    std::string why;
    std::string all;
    if (!picture_structures(wi, texts, why))
      return "failed: " + why;
    for (const std::string &text : texts)
      all += text + "; ";
    return all;
  }
  int translate() { return TranslateGraph(wi, 0); }
  bool said(const std::string &message) const {
    for (const PictureMessage &m : gTranslation.messages)
      if (m.text == message)
        return true;
    return false;
  }

  WinInfo *wi = nullptr;
};

TEST_F(StructuresTest, MakesAnEnumOfConstantsFromLeftToRight) {
  type("hue");
  constructor("Light", {}, 300);
  constructor("Dark", {}, 10);
  EXPECT_EQ(declarations(), "hue ::= enum; Dark ::= hue; Light ::= hue; ");
  ASSERT_EQ(translate(), 1) << seen.console.messages;
  EXPECT_TRUE(said("hue defined as a new data type\n"));
  EXPECT_NE(seen.console.text.find("Good! Dark declared as a new constructor\n"),
            std::string::npos);
  // Once more: everything stands and nothing is said of it.
  seen.console.clear();
  EXPECT_EQ(translate(), 1);
  EXPECT_EQ(seen.console.text, "Translated OK\n");
}

TEST_F(StructuresTest, CountsTheVariablesOfTheLabelOrOfTheConstructors) {
  type("pair ?0 ?1");
  constructor("Two", {"?0", "list ?1"}, 10);
  EXPECT_EQ(declarations(), "pair ::= typeop #2; Two ::= (?0) -> (list ?1) -> pair ?0 ?1; ");
  type("tree");
  constructor("Leaf", {}, 10);
  constructor("Fork", {"?3", "tree ?3"}, 200);
  EXPECT_EQ(declarations(),
            "tree ::= typeop #1; Leaf ::= tree ?3; Fork ::= (?3) -> (tree ?3) -> tree ?3; ");
  type("plain");
  constructor("Only", {"int"}, 10);
  EXPECT_EQ(declarations(), "plain ::= typeop #0; Only ::= (int) -> plain; ");
  EXPECT_EQ(translate(), 1) << seen.console.messages;
}

TEST_F(StructuresTest, KeepsTheBaseOfATypeThatStands) {
  kit::feed("tdec kept ::= typeop #0 ; ;");
  type("kept");
  constructor("K1", {}, 10);
  EXPECT_EQ(translate(), 1) << seen.console.messages;
  EXPECT_EQ(find_symbol("kept", 0)->stype, kTypeOp);
}

TEST_F(StructuresTest, MakesANonlexType) {
  type("opaque");
  kit::join(wi, 1, node(kHexagon, kDouble, "nonlex", 100, 100));
  EXPECT_EQ(declarations(), "opaque ::= nonlex; ");
  EXPECT_EQ(translate(), 1);
  EXPECT_EQ(find_symbol("opaque", 0)->stype, kNonlexType);
}

TEST_F(StructuresTest, FollowsJunctionsIntoTheTypeAndFromArguments) {
  type("way");
  const int box = node(kBox, kDouble, "By", 10, 100);
  const int sink = node(kJunction, 2, "j", 10, 150);
  kit::join(wi, box, sink);
  kit::join(wi, node(kJunction, 2, "j", 200, 200), 1);
  const int argument = node(kJunction, 2, "k", 10, 20);
  kit::join(wi, node(kHexagon, kDouble, "int", 10, 10), argument);
  kit::join(wi, node(kJunction, 2, "k", 20, 60), box);
  EXPECT_EQ(declarations(), "way ::= typeop #0; By ::= (int) -> way; ");
}

TEST_F(StructuresTest, TellsWhatIsWrong) {
  type(" ", "nameless");
  EXPECT_EQ(declarations(), "failed: Error: no output type found in window\n");
  type("alone");
  node(kBox, kDouble, "Loose", 10, 100);
  EXPECT_EQ(declarations(), "failed: Error: disjoint graphs found in window\n");
  type("none");
  kit::join(wi, node(kHexagon, kDouble, "int", 10, 50), node(kBox, kDouble, "Dead", 10, 100));
  EXPECT_EQ(declarations(), "failed: Error - no output type for Dead\n");
  type("many");
  const int box = constructor("Both", {}, 10);
  kit::join(wi, box, node(kHexagon, kDouble, "int", 200, 100));
  EXPECT_EQ(declarations(), "failed: Error - multiple output types for Both\n");
  type("blank");
  constructor("Gap", {" "}, 10);
  EXPECT_EQ(declarations(), "failed: Failure to get inputs\n");
  type("junction");
  const int from = node(kBox, kDouble, "Out", 10, 100);
  kit::join(wi, from, node(kJunction, 2, "j", 10, 150));
  EXPECT_EQ(declarations(), "failed: Please join Junction to output type\n");
  type("bare");
  EXPECT_EQ(translate(), 1);
  EXPECT_TRUE(said("No Constructors linked to output datatype\n"));
  type("odd ?0");
  constructor("Odd", {"?1"}, 10);
  translate();
  EXPECT_TRUE(said("WARNING: Type definition may have incorrect operands\n"));
}

TEST_F(StructuresTest, TakesConstantsFromAFile) {
  put("hues.txt", "Red1\nGreen1 Blue1\n");
  type("hue2");
  node(kBox, kBold, path("hues.txt"), 10, 100);
  ASSERT_EQ(translate(), 1) << seen.console.messages;
  EXPECT_TRUE(
      said("Good! Constructors of type hue2 have been taken from file " + path("hues.txt") + "\n"));
  EXPECT_NE(find_symbol("Blue1", 0), nullptr);
  type("hue3");
  node(kBox, kBold, path("missing.txt"), 10, 100);
  EXPECT_EQ(translate(), 0);
  EXPECT_TRUE(said("Can't open enumerated list for read\n"));
  put("empty.txt", "\n");
  type("hue4");
  const int list = node(kBox, kBold, path("empty.txt"), 10, 100);
  EXPECT_EQ(translate(), 0);
  EXPECT_TRUE(said("Sorry! No constructor definitions in file " + path("empty.txt") + "\n"));
  kit::join(wi, node(kHexagon, kDouble, "int", 10, 50), list);
  EXPECT_EQ(translate(), 0);
  EXPECT_TRUE(said("Error: input to imported list of constructors\n"));
}

} // namespace
} // namespace velora
