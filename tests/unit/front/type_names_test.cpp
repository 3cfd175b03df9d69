// Types and names as texts, against a small language; and a text that is read beside another.
#include "front/type_names.h"

#include "unit/front/front_kit.h"

namespace velora {
namespace {

class TypeNamesTest : public kit::Language {
protected:
  void SetUp() override {
    kit::Language::SetUp();
    kit::feed("tdec shape ::= enum ; ;\n"
              "cdec Dot ::= shape ; Two ::= ?0 -> (list ?0) -> pair ?0 ?0 ; ;\n"
              "fdec fold ::= (int -> int -> int) -> list (list int) -> pair int shape ;\n"
              "k ::= int ; applied ::= (?0 -> ?1) -> (int -> ?1) ; ;");
    EXPECT_EQ(console().messages, "");
    console().clear();
  }
};

TEST_F(TypeNamesTest, ReadsTheTypesOfSignatures) {
  TypeNames types;
  std::string result;
  ASSERT_EQ(get_intypes_of("fold", types, 0), 1);
  ASSERT_EQ(get_outtype_of("fold", result), 1);
  ASSERT_EQ(types.size(), 2u);
  EXPECT_EQ(CompareParameterStrings(types[0], "(int -> int -> int)"), 0);
  EXPECT_EQ(CompareParameterStrings(types[1], "list (list int)"), 0);
  EXPECT_EQ(CompareParameterStrings(result, "pair int shape"), 0);
  ASSERT_EQ(get_intypes_of("Two", types, 0), 1);
  EXPECT_EQ(types.size(), 2u);
  EXPECT_EQ(get_intypes_of("Dot", types, 0), 1); // a constant takes nothing
  EXPECT_TRUE(types.empty());
  // A result in brackets is one type, not more arguments.
  ASSERT_EQ(get_intypes_of("applied", types, 0), 1);
  ASSERT_EQ(get_outtype_of("applied", result), 1);
  EXPECT_EQ(types.size(), 1u);
  EXPECT_EQ(CompareParameterStrings(result, "(int->?1)"), 0);
}

TEST_F(TypeNamesTest, TellsOfNamesWithoutSignature) {
  TypeNames types{"left"};
  EXPECT_EQ(get_intypes_of("shape", types, 1), 0);
  EXPECT_TRUE(types.empty());
  EXPECT_TRUE(console().messages.empty());
  EXPECT_EQ(get_intypes_of("nobody", types, 0), 0);
  EXPECT_NE(console().messages.find("Unable to find input types of nobody\n"), std::string::npos);
}

TEST_F(TypeNamesTest, SplitsSignaturesOutsideBrackets) {
  EXPECT_EQ(split_signature("int"), TypeNames{"int"});
  const TypeNames expected{"(a -> b)", "list (c->d)", "e"};
  EXPECT_EQ(split_signature(" (a -> b)->list (c->d) -> e "), expected);
}

TEST_F(TypeNamesTest, TakesTheHeadWord) {
  EXPECT_EQ(GetBaseType("list (list int)"), "list");
  EXPECT_EQ(GetBaseType(" (list int)"), "list");
  EXPECT_EQ(GetBaseType("int"), "int");
  EXPECT_EQ(GetBaseType("( )"), "");
  EXPECT_EQ(bare_type(" ((list (int))) "), "list (int)");
  EXPECT_EQ(bare_type("(a) (b)"), "(a) (b)");
}

TEST_F(TypeNamesTest, KnowsWhatAgreesWithEverything) {
  for (const char *type : {"sym", "?0", "?17", "(?2)"})
    EXPECT_EQ(VariableType(type), 1) << type;
  for (const char *type : {"symbol", "?", "?x", "int", "list ?0", ""})
    EXPECT_EQ(VariableType(type), 0) << type;
}

TEST_F(TypeNamesTest, KnowsTypesAsTheDeclarationsDo) {
  for (const char *type : {"int", "?3", "shape", "pair int shape", "list (list int)", "(int -> ?0)",
                           "pair (int -> int) (list shape)", "bool"})
    EXPECT_EQ(TypeIsKnown(type), 1) << type;
  for (const char *type : {"", " ", "nobody", "list", "list list int", "int int", "fold", "Dot",
                           "(int", "int)", "#1", "int ; fdec", "pair int"})
    EXPECT_EQ(TypeIsKnown(type), 0) << type;
  EXPECT_TRUE(console().messages.empty());
}

TEST_F(TypeNamesTest, ComparesLabelsWithoutBlanksAndBrackets) {
  EXPECT_EQ(CompareParameterStrings("list int", "(list\n (int))"), 0);
  EXPECT_EQ(CompareParameterStrings("", " ()"), 0);
  EXPECT_EQ(CompareParameterStrings("int", "in"), 1);
  EXPECT_EQ(CompareParameterStrings("in", "int "), 1);
  EXPECT_EQ(CompareParameterStrings(nullptr, "x"), 1);
  EXPECT_EQ(CompareParameterStrings(static_cast<const char *>(nullptr), nullptr), 1);
}

TEST_F(TypeNamesTest, AcceptsNamesThatTheTokenizerReads) {
  for (const char *name : {"f", "+", "<=", "naïve", "a1", "x/y"})
    EXPECT_EQ(ValidName(name), 1) << name;
  for (const char *name : {"", " ", "a b", "int", "fdef", "f(", "\"s\"", "#1", "?0", ";", "a;",
                           "a-b", "::=", "->", "'x'"})
    EXPECT_EQ(ValidName(name), 0) << name;
  EXPECT_EQ(ValidName(std::string(255, 'n')), 1);
  EXPECT_EQ(ValidName(std::string(256, 'n')), 0);
}

using TextBesideTest = front_test::FrontTest;

TEST_F(TextBesideTest, TakesTurnsInTheMiddleOfALine) {
  TextBeside other("eins \"zwei\" #3 drei\nvier", "other.ddb");
  const StatementSource source("one \"two\" three\n");
  std::string read;
  const auto take = [&read] {
    pp_get_token();
    read += std::string(pp_start) + " ";
  };
  const auto take_other = [&] {
    const TextBeside::Turn turn(other);
    take();
  };
  take();
  take_other();
  take();
  EXPECT_EQ(std::string(pp_str_val, static_cast<std::size_t>(pp_str_len)), "two");
  take_other();
  EXPECT_EQ(std::string(pp_str_val, static_cast<std::size_t>(pp_str_len)), "two");
  take();
  take_other();
  take_other();
  take_other();
  EXPECT_EQ(read, "one eins \"two \"zwei three #3 drei vier ");
  {
    const TextBeside::Turn turn(other);
    EXPECT_EQ(pp_source_name(), "other.ddb");
    EXPECT_EQ(pp_line_number(), 2);
    EXPECT_EQ(pp_get_token(), kTokEnd);
    EXPECT_EQ(pp_at_end, 1);
  }
  EXPECT_EQ(pp_get_token(), kTokEnd);
  EXPECT_EQ(pp_at_end, 1);
}

} // namespace
} // namespace velora
