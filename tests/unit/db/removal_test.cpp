// Who depends on a symbol, what is asked before it is replaced, and what happens to the dependants.
#include "unit/db/db_kit.h"

#include <chrono>

#include "core/print.h"

using namespace velora;
using namespace velora::db_test;

namespace {

class RemovalTest : public DbTest {
protected:
  static constexpr int kNo = 1;
  static constexpr int kYes = 2;

  static bool has_clauses(const char *name) { return find_symbol(name, 0)->b.fc->defs != nullptr; }
  static std::string values_of(const char *type) {
    std::string names;
    for (const symbol *s = find_symbol(type, 0)->b.en->head; s != nullptr; s = s->b.cs->link)
      names += std::string(s->name) + " ";
    return names;
  }
  static std::string signature(const char *name) {
    return tspecs_text(find_symbol(name, 0)->b.fc->types);
  }
  // Declares `spec` again and answers the question with `choice`.
  void declare_again(const std::string &spec, int choice) {
    console().clear();
    console().choices = {choice};
    load(spec);
  }
};

const std::string kUsers = "tdec\n colour ::= enum ; ;\n"
                           "cdec\n red ::= colour ; green ::= colour ; blue ::= colour ; ;\n"
                           "fdec\n f ::= int -> int ; g ::= int -> int ; lone ::= int ;\n"
                           " by ::= colour -> int ; two ::= colour -> int ; ;\n"
                           "fdef\n f ?0 ::= #1 ; g ?0 ::= #2 ; g #1 ::= f #1 ;\n"
                           " by red ::= #1 ; by ?0 ::= two red ; two ?0 ::= by (two red) ; ;\n";

TEST_F(RemovalTest, WhatNobodyUsesIsReplacedWithoutAQuestion) {
  load(kUsers);
  declare_again("fdec\n lone ::= int -> int ; ;\n", kNo);
  EXPECT_EQ(signature("lone"), "int->int");
  EXPECT_EQ(questions(""), 0);
}

TEST_F(RemovalTest, AFunctionIsCountedOnceHoweverManyClausesUseTheName) {
  load(kUsers);
  declare_again("cdec\n red ::= int -> colour ; ;\n", kNo);
  EXPECT_EQ(questions("red has 2 dependents. Replace it anyway?"), 1);
  EXPECT_NE(console().messages.find("Cannot replace symbol red\n"), std::string::npos);
  EXPECT_TRUE(has_clauses("by"));
  EXPECT_TRUE(has_clauses("two"));
  EXPECT_EQ(find_symbol("red", 0)->b.cs->arity, 0);
  EXPECT_TRUE(gDependents.names.empty());
}

TEST_F(RemovalTest, CancelIsARefusal) {
  load(kUsers);
  declare_again("fdec\n f ::= int ; ;\n", 5);
  EXPECT_EQ(signature("f"), "int->int");
  EXPECT_TRUE(has_clauses("g"));
}

TEST_F(RemovalTest, AfterYesTheDependantsKeepTheirSignaturesAndLoseTheirClauses) {
  load(kUsers);
  declare_again("cdec\n red ::= int -> colour ; ;\n", kYes);
  EXPECT_NE(said().find("DEPENDENTS\n1: Replace Component(s) of two\n"
                        "2: Replace Component(s) of by\n"),
            std::string::npos)
      << said();
  for (const char *name : {"by", "two"}) {
    EXPECT_FALSE(has_clauses(name));
    EXPECT_EQ(signature(name), "colour->int");
  }
  EXPECT_TRUE(has_clauses("g"));
  EXPECT_EQ(find_symbol("red", 0)->b.cs->arity, 1);
  EXPECT_TRUE(gDependents.names.empty());
}

TEST_F(RemovalTest, AFunctionDoesNotDependOnItself) {
  load("fdec\n f ::= int -> int ; ;\nfdef\n f ?0 ::= f ?0 ; ;\n");
  declare_again("fdec\n f ::= int ; ;\n", kNo);
  EXPECT_EQ(questions(""), 0);
  EXPECT_EQ(signature("f"), "int");
}

TEST_F(RemovalTest, ADependantIsFoundInTheHeadAndDeepInTheBody) {
  load("tdec\n t ::= enum ; ;\ncdec\n Cc ::= int -> t ; Dd ::= t ; ;\n"
       "fdec\n top ::= t -> int ; body ::= t ; ;\n"
       "fdef\n top ?0 ::= #1 ; top (Cc (Cc #7)) ::= #2 ; body ::= Cc (Cc (lambda ?0 (Cc Dd))) ; "
       ";\n");
  declare_again("cdec\n Cc ::= t ; ;\n", kNo);
  EXPECT_EQ(questions("Cc has 2 dependents."), 1);
  declare_again("cdec\n Dd ::= int -> t ; ;\n", kNo);
  EXPECT_EQ(questions("Dd has 1 dependents."), 1);
}

TEST_F(RemovalTest, AReplacedConstantLeavesTheValuesOfItsType) {
  load("tdec\n t ::= enum ; ;\ncdec\n a ::= t ; b ::= t ; c ::= t ; ;\n");
  declare_again("cdec\n b ::= int -> t ; ;\n", kNo);
  EXPECT_EQ(values_of("t"), "a c ");
  declare_again("cdec\n c ::= int -> t ; ;\n", kNo);
  EXPECT_EQ(values_of("t"), "a ");
  EXPECT_EQ(find_symbol("t", 0)->b.en->tail, find_symbol("a", 0));
  declare_again("cdec\n a ::= int -> t ; ;\n", kNo);
  EXPECT_EQ(values_of("t"), "");
  EXPECT_EQ(find_symbol("t", 0)->b.en->tail, nullptr);
}

TEST_F(RemovalTest, AReplacedTypeIsStillNamedBySignaturesThatAreKept) {
  load(kUsers + "fdec\n deep ::= (int -> colour) -> int ; ;\n");
  declare_again("tdec\n colour ::= typeop #1 ; ;\n", kYes);
  EXPECT_EQ(questions("colour has 6 dependents."), 1);
  EXPECT_EQ(find_symbol("colour", 0)->stype, kTypeOp);
  EXPECT_EQ(signature("by"), "colour->int");
  EXPECT_EQ(signature("deep"), "(int->colour)->int");
  EXPECT_FALSE(has_clauses("by"));
  EXPECT_TRUE(has_clauses("g"));
  // A constant of the type that is gone can be replaced: it has no chain to leave.
  declare_again("cdec\n green ::= int ; ;\n", kNo);
  EXPECT_EQ(questions(""), 0);
}

TEST_F(RemovalTest, AnEntryWithoutAKindCannotBeReplaced) {
  load("tdec\n broken typeop ; ;\n");
  ASSERT_NE(find_symbol("broken", 0), nullptr);
  declare_again("tdec\n broken ::= enum ; ;\n", kYes);
  EXPECT_EQ(questions(""), 0);
  EXPECT_EQ(find_symbol("broken", 0)->stype, kKindless);
}

TEST_F(RemovalTest, ClosingLeavesBuiltInsAndSystemFunctions) {
  load("tdec\n t ::= enum ; ;\ncdec\n kept ::= t ; gone ::= t ; ;\n"
       "fdec\n system ::= int ; builtin ::= int ; mine ::= t ; ;\nfdef\n mine ::= kept ; ;\n");
  find_symbol("system", 0)->stype |= kSystemBit;
  find_symbol("builtin", 0)->stype |= kBuiltinBit;
  clear_user_symbols();
  EXPECT_NE(find_symbol("system", 0), nullptr);
  EXPECT_NE(find_symbol("builtin", 0), nullptr);
  for (const char *name : {"t", "kept", "gone", "mine"})
    EXPECT_EQ(find_symbol(name, 0), nullptr) << name;
  find_symbol("system", 0)->stype = kFunction;
  find_symbol("builtin", 0)->stype = kFunction;
}

// A series of replacements is answered by an index; it must find what a search of every clause
// would, also after functions went, came and changed.
TEST_F(RemovalTest, ManyReplacementsInARowFindTheSameDependants) {
  std::string text = "fdec\n";
  for (int i = 0; i < 40; ++i)
    text += " n" + std::to_string(i) + " ::= int ;\n";
  text += ";\nfdef\n";
  for (int i = 1; i < 40; ++i)
    text += " n" + std::to_string(i) + " ::= n" + std::to_string(i - 1) + " ;\n";
  load(text + ";\n");
  for (const int kept : {10, 20, 30}) {
    declare_again("fdec\n n" + std::to_string(kept) + " ::= int -> int ; ;\n", kNo);
    EXPECT_EQ(questions("n" + std::to_string(kept) + " has 1 dependents."), 1);
  }
  declare_again("fdec\n n39 ::= int -> int ; ;\n", kNo);
  EXPECT_EQ(questions(""), 0);
  declare_again("fdec\n n38 ::= int -> int ; ;\n", kNo); // n39 went, and its clause with it
  EXPECT_EQ(questions(""), 0);
  load("fdef\n n38 ?0 ::= n36 ; ;\n");
  declare_again("fdec\n n36 ::= int -> int ; ;\n", kNo);
  EXPECT_EQ(questions("n36 has 2 dependents."), 1);
  declare_again("fdec\n n36 ::= int -> int ; ;\n", kYes);
  EXPECT_FALSE(has_clauses("n37"));
  EXPECT_FALSE(has_clauses("n38"));
  declare_again("fdec\n n35 ::= int -> int ; ;\n", kNo);
  EXPECT_EQ(questions(""), 0);
}

TEST_F(RemovalTest, ManyReplacementsTakeLinearTime) {
  constexpr int kFunctions = 8000;
  std::string text = "fdec\n";
  std::string again = "fdec\n";
  std::string clauses = "fdef\n";
  for (int i = 0; i < kFunctions; ++i) {
    const std::string name = "n" + std::to_string(i);
    text += name + " ::= int -> int ;\n";
    again += name + " ::= int -> int -> int ;\n";
    clauses += name + " ?0 ::= " + name + " (" + name + " (" + name + " ?0)) ;\n";
  }
  load(text + ";\n" + clauses + ";\n");
  const auto start = std::chrono::steady_clock::now();
  load(again + ";\n");
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(questions(""), 0);
  EXPECT_EQ(signature("n7999"), "int->int->int");
  EXPECT_LT(took.count(), 10.0); // quadratic it would be minutes in this build
}

} // namespace
