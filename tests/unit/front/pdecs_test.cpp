// Declarations: signatures, kinds, values of enumerated types, and everything that is refused.
#include "unit/front/front_kit.h"

namespace velora {
namespace {

using front_test::FrontTest;

class Declarations : public FrontTest {
protected:
  static std::string type_of(const std::string &name) {
    const symbol *s = sym(name);
    return s == nullptr
               ? "none"
               : tspecs_text((s->stype & kFunctionBit) != 0 ? s->b.fc->types : s->b.cs->types);
  }
  static int kind_of(const std::string &name) {
    return sym(name) == nullptr ? -1 : sym(name)->stype;
  }
  // The values of an enumerated type in order.
  static std::string values_of(const std::string &name) {
    std::string text;
    for (const symbol *s = sym(name)->b.en->head; s != nullptr; s = s->b.cs->link)
      text += std::string(s->name) + " ";
    return text;
  }
  // The one word that a report says was expected.
  std::string expected() {
    const std::string text = messages();
    const std::size_t from = text.find("{ ");
    return from == std::string::npos ? text : text.substr(from + 2, text.find(" }") - from - 2);
  }
};

TEST_F(Declarations, Signatures) {
  EXPECT_EQ(cint_tdec("day ::= enum"), 1);
  const char *table[][3] = {
      {"a", "int", "0"},
      {"b", "int -> char -> real -> str -> sym", "4"},
      {"c", "list int -> int", "1"},
      {"d", "(int -> int) -> ?0", "1"},
      {"e", "(((int)))", "0"},
      {"k", "int -> (int -> int)", "1"},
      {"m", "pair day (list ?1) -> day", "1"},
      {"n", "list (list int)", "0"},
      {"o", "list (int -> day) -> int", "1"},
  };
  for (const auto &row : table) {
    EXPECT_EQ(cint_fdec(std::string(row[0]) + " ::= " + row[1]), 1) << row[1];
    EXPECT_EQ(kind_of(row[0]), kFunction);
    EXPECT_EQ(std::to_string(sym(row[0])->b.fc->arity), row[2]) << row[1];
  }
  EXPECT_EQ(type_of("b"), "int->char->real->str->sym");
  EXPECT_EQ(type_of("e"), "int");
  EXPECT_EQ(type_of("d"), "(int->int)->?0");
  EXPECT_EQ(messages(), "");
}

TEST_F(Declarations, InvalidTypes) {
  EXPECT_EQ(cint_tdec("wide ::= typeop #64"), 1);
  for (const char *types : {"list list int", "nothing", "int -> f", "list", "int ->", "(int", "",
                            "wide int", "#1", "(int -> int", "()"}) {
    EXPECT_EQ(cint_fdec(std::string("a ::= ") + types), 0) << types;
    const std::string text = messages();
    EXPECT_NE(text.find("Invalid tspec\n"), std::string::npos) << types;
    EXPECT_NE(text.find("Error (a):  "), std::string::npos) << types;
    EXPECT_NE(text.find("{ type specification }"), std::string::npos) << types;
    EXPECT_EQ(sym("a"), nullptr);
  }
  EXPECT_EQ(cint_fdec("a ::= int int"), 0);
  EXPECT_EQ(messages(), "Error (a):  int found when { ; } expected\n");
  EXPECT_EQ(cint_fdec("a ::= ((nothing))"), 0);
  EXPECT_EQ(messages(), "Invalid tspec\nInvalid tspec\nInvalid tspec\n"
                        "Error (a):  nothing found when { type specification } expected\n");
}

TEST_F(Declarations, TypesAndTheirValues) {
  EXPECT_EQ(cint_tdec("day ::= enum"), 1);
  EXPECT_EQ(cint_tdec("word ::= nonlex"), 1);
  EXPECT_EQ(cint_tdec("tree ::= typeop #255"), 1);
  EXPECT_EQ(cint_tdec("bent ::= typeop #-1"), 1);
  EXPECT_EQ(kind_of("day"), kEnumType);
  EXPECT_EQ(kind_of("word"), kNonlexType);
  EXPECT_EQ(kind_of("tree"), kTypeOp);
  EXPECT_EQ(sym("bent")->b.tp->arity, 255);
  EXPECT_EQ(values_of("day"), "");
  for (const char *value : {"Mon", "Tue", "Wed"})
    EXPECT_EQ(cint_cdec(std::string(value) + " ::= day"), 1);
  EXPECT_EQ(cint_cdec("At ::= int -> day"), 1);
  EXPECT_EQ(values_of("day"), "Mon Tue Wed ") << "only constants are values";
  EXPECT_EQ(cint_cdec("Tue ::= day"), 1);
  EXPECT_EQ(values_of("day"), "Mon Tue Wed ") << "the same declaration again changes nothing";
  EXPECT_EQ(sym("At")->b.cs->arity, 1);
}

TEST_F(Declarations, BuiltinEnumsTakeNoMoreValues) {
  const std::string before = values_of("color");
  EXPECT_EQ(cint_cdec("mauve ::= color"), 0);
  EXPECT_EQ(expected(), "no more Constructors of this type");
  EXPECT_EQ(cint_cdec("mauve ::= (color)"), 0);
  EXPECT_EQ(cint_cdec("mix ::= color -> color"), 1);
  EXPECT_EQ(cint_fdec("paint ::= color"), 1);
  EXPECT_EQ(values_of("color"), before);
}

TEST_F(Declarations, RefusedTypeDeclarations) {
  EXPECT_EQ(cint_tdec("f ::= enum"), 0);
  EXPECT_EQ(expected(), "non-function name");
  EXPECT_EQ(cint_tdec("nil ::= enum"), 0);
  EXPECT_EQ(expected(), "non-function name");
  EXPECT_EQ(cint_tdec("#1 ::= enum"), 0);
  EXPECT_EQ(expected(), "new symbol");
  EXPECT_EQ(cint_tdec("t ::= typeop #300"), 0);
  EXPECT_EQ(messages(), "Error (t):  #300 found when { valid type op arity } expected\n");
  EXPECT_EQ(kind_of("t"), kKindless) << "the failed name stays without a kind";
  EXPECT_EQ(cint_tdec("u enum"), 0);
  EXPECT_EQ(messages(), "Error (u):  enum found when { ::= } expected\n");
  EXPECT_EQ(cint_tdec("v ::= int"), 0);
  EXPECT_EQ(expected(), "meta type symbol");
  EXPECT_EQ(cint_fdec("t ::= int"), 0);
  EXPECT_EQ(expected(), "not a defined type name");
  EXPECT_NE(notes().find("without a kind"), std::string::npos);
  EXPECT_EQ(cint_tdec(std::string(256, 'n') + " ::= enum"), 0);
  EXPECT_NE(messages().find("{ new symbol }"), std::string::npos);
}

TEST_F(Declarations, RefusedFunctionsAndConstructors) {
  EXPECT_EQ(cint_fdec("int ::= int"), 0);
  EXPECT_EQ(expected(), "function or constructor symbol");
  EXPECT_EQ(cint_fdec("nil ::= int"), 0);
  EXPECT_EQ(expected(), "not a defined type name");
  EXPECT_EQ(cint_cdec("f ::= list int"), 0);
  EXPECT_EQ(expected(), "not a defined type name");
  EXPECT_EQ(cint_fdec("+ ::= int -> int -> int"), 0);
  EXPECT_EQ(expected(), "non built-in");
  EXPECT_EQ(cint_fdec("a int"), 0);
  EXPECT_EQ(messages(), "Error (a):  int found when { ::= } expected\n");
  EXPECT_EQ(cint_cdec("A #1 ::= list int"), 0);
  EXPECT_EQ(expected(), "::=");
  EXPECT_EQ(cint_fdec("a #256 ::= int"), 0);
  EXPECT_EQ(expected(), "valid function arity");
  EXPECT_EQ(sym("a"), nullptr);
}

TEST_F(Declarations, GivenArity) {
  EXPECT_EQ(cint_fdec("a #2 ::= int"), 1);
  EXPECT_EQ(kind_of("a"), kDbFunction);
  EXPECT_EQ(sym("a")->b.fc->arity, 2);
  EXPECT_EQ(cint_fdec("b #-2 ::= int -> int"), 1);
  EXPECT_EQ(kind_of("b"), kFunction);
  EXPECT_EQ(sym("b")->b.fc->arity, 1);
  EXPECT_EQ(cint_fdec("a ::= int"), 1);
  EXPECT_EQ(kind_of("a"), kDbFunction) << "the same signature keeps the kind";
}

TEST_F(Declarations, TheSameSignatureAgainDropsTheClauses) {
  EXPECT_EQ(cint_fdef("f ?3 ::= #1"), 1);
  const symbol *before = sym("f");
  gSymbolTableChanged = 0;
  EXPECT_EQ(cint_fdec("f ::= int -> int"), 1);
  EXPECT_EQ(sym("f"), before);
  EXPECT_EQ(before->b.fc->defs, nullptr);
  EXPECT_EQ(before->b.fc->max_var, -1);
  EXPECT_EQ(gSymbolTableChanged, 1);
  EXPECT_EQ(cint_fdec("f ::= int -> int -> int"), 1);
  EXPECT_EQ(type_of("f"), "int->int->int");
  EXPECT_EQ(Symbol_table, sym("f")) << "another signature makes a new entry";
}

TEST_F(Declarations, PicturesAreTold) {
  EXPECT_EQ(create_fdec("a ::= int", "a", nullptr), 1);
  EXPECT_EQ(create_fdec("a ::= int", "a", sym("a")), 1);
  EXPECT_EQ(create_cdec("A ::= list int", "A", nullptr), 1);
  EXPECT_EQ(create_cdec("A ::= list int", "A", sym("A")), 1);
  EXPECT_EQ(console().text, "Good! a declared as a new function \n"
                            "Good! Function a re-declared\n"
                            "Good! A declared as a new constructor\n"
                            "Good! Constructor A has been re-declared\n");
  messages();
  EXPECT_EQ(create_fdec("b", "b", nullptr), 0);
  EXPECT_EQ(create_fdec("b", "b", sym("a")), 0);
  EXPECT_EQ(create_cdec("B", "B", nullptr), 0);
  EXPECT_EQ(create_cdec("B", "B", sym("A")), 0);
  const std::string text = messages();
  for (const char *line :
       {"Sorry! Unable to declare b as a function\n", "Sorry! Unable to re-define function b\n",
        "Sorry! Unable to declare B as a constructor\n",
        "Sorry! Unable to re-declare constructor B\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line;
}

} // namespace
} // namespace velora
