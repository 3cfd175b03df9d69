// Components: their numbers, what is stored with what, and what stays as it was when a step fails.
#include "editor/vel_cmp.h"

#include "core/symbols.h"
#include "editor/model/wininfo.h"
#include "kit/language.h"
#include "kit/pictures.h"

namespace velora {
namespace {

class VelCmpTest : public kit::Language {
protected:
  void SetUp() override {
    kit::Language::SetUp();
    kit::feed("fdec f ::= int -> int ; ;");
    console().clear();
  }
  void TearDown() override {
    FreeAllPictures();
    kit::Language::TearDown();
  }
  // What a window would hold: a picture of f that gives `body` for `input`.
  WinInfo *drawn(const std::string &input, const std::string &body) {
    WinInfo *wi = nullptr;
    NewWinInfo(99, kFunctionPicture, &wi);
    wi->name = "f";
    wi->saved = 0;
    wi->clean = 0;
    kit::place_node(wi, kHexagon, kBold, "int", {200, 300, 230, 320});
    kit::place_node(wi, kHexagon, kBold, input, {10, 2, 40, 22});
    kit::join(wi, kit::place_node(wi, kHexagon, kPlain, body, {100, 100, 130, 120}), 1);
    return wi;
  }
  std::string numbers() {
    std::string all;
    for (const WinInfo *stored : stored_components("f"))
      all += std::to_string(stored->cmpnt) + "=" + stored->seg_ments[3]->label + " ";
    return all;
  }
  std::string value(const std::string &argument) {
    const std::string text = kit::answer("f " + argument + " ;");
    const std::size_t at = text.find_first_not_of("\n ");
    return at == std::string::npos ? "" : text.substr(at, text.find_first_of("\n ", at) - at);
  }
};

TEST_F(VelCmpTest, NumbersComponentsAndRenumbersAfterARemoval) {
  WinInfo *wi = nullptr;
  for (const char *constant : {"#1", "#2", "#3"}) {
    wi = drawn(constant, std::string(constant) + "0");
    EXPECT_EQ(SaveNewComponent(wi), 1) << console().messages;
    EXPECT_EQ(wi->clean, 1);
  }
  EXPECT_EQ(numbers(), "0=#10 1=#20 2=#30 ");
  EXPECT_EQ(value("#2"), "#20");
  EXPECT_EQ(console().messages.find("MORE"), std::string::npos);
  wi->cmpnt = 1;
  EXPECT_EQ(RemoveComponent(wi), 1);
  EXPECT_EQ(numbers(), "0=#10 1=#30 ");
  wi->cmpnt = 7;
  EXPECT_EQ(RemoveComponent(wi), 0); // nothing went
  EXPECT_EQ(numbers(), "0=#10 1=#30 ");
  EXPECT_EQ(CheckCmpntsEqualFdefs(wi), -1);
  EXPECT_NE(console().messages.find("Warning: f : MORE Orvek extensions than picture components\n"),
            std::string::npos);
  EXPECT_EQ(RemoveAllComponents(wi), 2);
  EXPECT_EQ(RemoveAllComponents(wi), 0);
}

TEST_F(VelCmpTest, StoresNothingThatDoesNotTranslate) {
  WinInfo *wi = drawn("#1", "(#1");
  EXPECT_EQ(SaveNewComponent(wi), 0);
  EXPECT_EQ(numbers(), "");
  EXPECT_EQ(wi->clean, 0);
  wi->seg_ments[3]->label = "#10";
  ASSERT_EQ(SaveNewComponent(wi), 1);
  wi->clean = 0;
  wi->seg_ments[3]->label = "[#11";
  EXPECT_EQ(ReplaceComponent(wi, 0), 0);
  EXPECT_EQ(numbers(), "0=#10 ");
  EXPECT_EQ(value("#1"), "#10");
}

TEST_F(VelCmpTest, ReplacesPictureAndClause) {
  WinInfo *wi = drawn("#1", "#10");
  ASSERT_EQ(SaveNewComponent(wi), 1);
  wi->seg_ments[3]->label = "#11";
  EXPECT_EQ(ReplaceComponent(wi, 0), 1); // without a question
  EXPECT_EQ(numbers(), "0=#11 ");
  EXPECT_EQ(value("#1"), "#11");
  wi->cmpnt = 4;
  EXPECT_EQ(ReplaceComponent(wi, 0), 0);
  EXPECT_NE(console().messages.find("Unable to find component 4 of function f\n"),
            std::string::npos);
}

TEST_F(VelCmpTest, AsksWhetherTheOldClauseGoesToo) {
  for (const int choice : {1, 2}) {
    WinInfo *wi = drawn("#1", "#10");
    ASSERT_EQ(SaveNewComponent(wi), 1);
    wi->seg_ments[2]->label = "#2";
    console().choices = {choice};
    EXPECT_EQ(ReplaceComponent(wi, 0), 1);
    EXPECT_EQ(value("#2"), "#10");
    EXPECT_EQ(exists_clause("f (#1)"), choice == 1 ? 0 : 1);
    FreeAllPictures();
    kit::feed("deny [f #1] ; deny [f #2] ;");
  }
}

TEST_F(VelCmpTest, FindsAndDeniesTheClauseOfAPicture) {
  WinInfo *wi = drawn("int", "#1");
  std::string lhs;
  EXPECT_EQ(MakeLHS(wi, lhs), 1);
  EXPECT_EQ(lhs, "f ?0");
  EXPECT_EQ(ExistOrvek(wi), 0);
  kit::feed("fdef f ?0 ::= #5 ; ;");
  EXPECT_EQ(ExistOrvek(wi), 1);
  EXPECT_EQ(DenyExtension(wi), 1);
  EXPECT_EQ(ExistOrvek(wi), 0);
  wi->seg_ments[2]->label = "(: #1";
  EXPECT_EQ(MakeLHS(wi, lhs), -1);
  wi->name = "nobody";
  EXPECT_EQ(MakeLHS(wi, lhs), -1);
  EXPECT_EQ(CheckCmpntsEqualFdefs(wi), 0);
  EXPECT_NE(console().messages.find("Warning: No function nobody in Orvek\n"), std::string::npos);
}

TEST_F(VelCmpTest, RedefinesAFunctionOrLeavesItAlone) {
  WinInfo *wi = drawn("int", "#1");
  ASSERT_EQ(SaveNewComponent(wi), 1);
  WinInfo *other = drawn("#2", "#20");
  ASSERT_EQ(SaveNewComponent(other), 1);
  // A result that is no type: nothing may be lost.
  wi->seg_ments[1]->label = "nothing";
  for (const int again : {1, 2, 5}) { // Yes, No, Cancel
    console().choices = {again};
    EXPECT_EQ(redefine_function(wi), 0);
  }
  EXPECT_EQ(value("#2"), "#20");
  EXPECT_EQ(value("#3"), "#1");
  EXPECT_EQ(clause_count("f"), 2);
  // Now with another result; the other picture is translated again.
  wi->seg_ments[1]->label = "str";
  wi->seg_ments[3]->label = "\"one\"";
  console().choices = {1};
  EXPECT_EQ(redefine_function(wi), 1) << console().messages;
  std::string result;
  ASSERT_EQ(get_outtype_of("f", result), 1);
  EXPECT_EQ(result, "str");
  EXPECT_EQ(clause_count("f"), 2);
}

TEST_F(VelCmpTest, DrawsTheStartOfADeclaredFunction) {
  kit::feed("fdec g ::= int -> list str -> bool ; ;");
  WinInfo *wi = kit::picture("x");
  ASSERT_EQ(draw_declaration("g", wi), 1);
  EXPECT_EQ(wi->name, "g");
  EXPECT_EQ(wi->saved, 0);
  EXPECT_EQ(wi->seg_ments[1]->label, "bool");
  const TypeNames expected{"int", "list str "};
  TypeNames labels;
  for (int slot = 2; slot <= wi->seg_ct; ++slot)
    labels.push_back(wi->seg_ments[slot]->label);
  EXPECT_EQ(CompareParameterStrings(labels.at(0), expected[0]), 0);
  EXPECT_EQ(CompareParameterStrings(labels.at(1), expected[1]), 0);
  TypeNames formals;
  Translation t;
  t.quiet = true;
  ASSERT_EQ(get_intypes_of("g", formals, 1), 1);
  EXPECT_EQ(picture_lhs(wi, formals, t), 1);
  EXPECT_EQ(t.lhs, "g ?0 ?1");
  // With clauses, or from the library, there is no such start.
  kit::feed("fdef g ?0 ?1 ::= True ; ;");
  EXPECT_EQ(draw_declaration("g", wi), 0);
  console().clear();
  EXPECT_EQ(draw_declaration("map", wi), 0);
  EXPECT_NE(console().text.find("map"), std::string::npos);
}

} // namespace
} // namespace velora
