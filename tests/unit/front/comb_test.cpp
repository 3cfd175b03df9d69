// Compiled clause bodies, clause trees, and what happens when a clause is defined again.
#include <algorithm>

#include "front/comb.h"
#include "front/pfdef.h"
#include "front/plhs.h"
#include "unit/front/front_kit.h"

namespace velora {
namespace {

using front_test::FrontTest;
using front_test::show;

class Clauses : public FrontTest {
protected:
  // The decision trees of a function's groups.
  static std::string trees(const std::string &name) {
    std::string text;
    for (const defs_link *d = sym(name)->b.fc->defs; d != nullptr; d = d->next)
      text += (text.empty() ? "" : " ; ") + show(d->lhs_tree);
    return text;
  }
  static int groups(const std::string &name) {
    const std::string text = trees(name);
    return text.empty() ? 0 : 1 + static_cast<int>(std::count(text.begin(), text.end(), ';'));
  }
};

TEST_F(Clauses, BodiesBecomeCombinators) {
  const char *table[][2] = {
      {"f ?0 ::= ?0", "I"},
      {"f ?0 ::= #5", "(K #5)"},
      {"f ?0 ::= g ?0", "g"},
      {"f ?0 ::= + ?0 #1", "((C +) #1)"},
      {"f ?0 ::= g (h ?0)", "((B g) h)"},
      {"f ?0 ::= + ?0 ?0", "((S +) I)"},
      {"f ?0 ::= ?0 ?0", "((S I) I)"},
      {"f ?0 ?1 ::= + ?1 ?0", "(C +)"},
      {"f ?0 ?1 ::= ?0", "K"},
      {"f ?0 ?1 ::= ?1", "(K I)"},
      {"f ?1 ::= ?1", "(K I)"},
      {"f ?0 ::= ?7", "(K ?7)"},
      {"f ?0 ::= (lambda ?1 (+ ?1 ?0)) #3", "((C (C +)) #3)"},
      {"f ?0 ::= g ((lambda ?0 (h ?0)) ?0)", "((B g) h)"},
      {"f ?0 ::= (lambda ?1 (lambda ?2 ?1))", "(K K)"},
      {"f ?0 ::= \"a\"", "(K \"a\")"},
      {"f ::= + #1", "(+ #1)"},
  };
  for (const auto &row : table)
    EXPECT_EQ(compiled(row[0]), row[1]) << row[0];
  EXPECT_EQ(compiled("f ?0 ::= [?0]"), "((C :) nil)");
}

TEST_F(Clauses, HeldExpressionsAreShared) {
  const char *table[][2] = {
      {"f ?0 ::= + (HOLD (g ?0)) (HOLD (g ?0))", "((B ((S +) I)) g)"},
      {"f ?0 ::= + (HOLD (g ?0)) (HOLD (h ?0))", "((S ((B (C (C +))) g)) h)"},
      {"f ?0 ::= + (HOLDN #1 (g ?0)) (HOLDN #1 (h ?0))", "((B ((S +) I)) g)"},
      {"f ?0 ::= + (HOLDN #1 (g ?0)) (HOLD (h ?0))", "((S ((B (C (C +))) g)) h)"},
  };
  for (const auto &row : table)
    EXPECT_EQ(compiled(row[0]), row[1]) << row[0];
  // The one around the other goes first, and the inner one is shared by what is left.
  const std::string nested = compiled("f ?0 ::= + (HOLD ?0) (HOLD (g (HOLD ?0)))");
  EXPECT_EQ(nested.find("HOLD"), std::string::npos) << nested;
  EXPECT_EQ(std::count(nested.begin(), nested.end(), 'g'), 1);
  EXPECT_EQ(show(last_clause("f")->original), "((+ (HOLD ?0)) (HOLD (g (HOLD ?0))))");
}

TEST_F(Clauses, AbstractionTakesOnlyItsOwnTarget) {
  EXPECT_EQ(cint_fdef("g ::= + (HOLD #1) (HOLD #2)"), 1);
  const node *body = last_clause("g")->original;
  Tree two(make_leaf(kInteger));
  two->val.i = 2;
  Tree abstracted(abst_held_exp(copy_tree(body), two.get()));
  EXPECT_EQ(show(abstracted.get()), "(+ (HOLD #1))");
  Tree none(abst_HOLDN_exp(copy_tree(body), 1));
  EXPECT_EQ(show(none.get()), "(K ((+ (HOLD #1)) (HOLD #2)))");
}

TEST_F(Clauses, TreesKeepConstantsBeforeVariables) {
  for (const char *clause : {"f ?0 ::= #1", "f ?1 ::= #2", "f #0 ::= #3", "f (g ?2) ::= #4",
                             "f (g #0) ::= #5", "f \"s\" ::= #6"})
    EXPECT_EQ(cint_fdef(clause), 1);
  EXPECT_EQ(trees("f"), "(f/63 #0/4|(g/24 #0/16|?2/8)|\"s\"/32|?1/2|?0/1)");
  EXPECT_EQ(sym("f")->b.fc->max_var, 2);
}

TEST_F(Clauses, AnEqualHeadReplacesTheBody) {
  for (const char *clause : {"f ?0 ::= #1", "f ?1 ::= #2", "f (g #1) ::= #3"})
    EXPECT_EQ(cint_fdef(clause), 1);
  const std::string before = trees("f");
  EXPECT_EQ(cint_fdef("f ?0 ::= #7"), 1);
  EXPECT_EQ(cint_fdef("f (g #1) ::= \"new\""), 1);
  EXPECT_EQ(trees("f"), before);
  const rhs_link *clause = sym("f")->b.fc->defs->defs;
  EXPECT_EQ(show(clause->rhs), "(K #7)");
  EXPECT_EQ(show(clause->original), "#7");
  EXPECT_EQ(show(clause->next->rhs), "(K (K #2))");
  EXPECT_EQ(show(clause->next->next->rhs), "\"new\"");
}

TEST_F(Clauses, SixteenClausesMakeAGroup) {
  for (int i = 0; i < 33; ++i)
    EXPECT_EQ(cint_fdef("f #" + std::to_string(i) + " ::= #" + std::to_string(i)), 1);
  EXPECT_EQ(groups("f"), 3);
  EXPECT_NE(trees("f").find("#16/1|"), std::string::npos) << "the 17th clause has mask 1";
  EXPECT_EQ(cint_fdef("f #20 ::= #99"), 1);
  EXPECT_EQ(groups("f"), 3);
  EXPECT_EQ(show(sym("f")->b.fc->defs->next->defs->next->next->next->next->rhs), "#99");
}

TEST_F(Clauses, EqualHeadsAreFoundAfterClausesWereTakenAway) {
  for (int i = 0; i < 40; ++i)
    EXPECT_EQ(cint_fdef("f #" + std::to_string(i) + " ::= #1"), 1);
  EXPECT_EQ(cint_query("deny [f #3]"), 1);
  EXPECT_NE(console().text.find("True"), std::string::npos);
  for (int i = 0; i < 40; ++i)
    EXPECT_EQ(cint_fdef("f #" + std::to_string(i) + " ::= #2"), 1);
  int clauses = 0;
  for (const defs_link *d = sym("f")->b.fc->defs; d != nullptr; d = d->next)
    for (const rhs_link *c = d->defs; c != nullptr; c = c->next, ++clauses)
      EXPECT_EQ(show(c->original), "#2");
  EXPECT_EQ(clauses, 40);
}

TEST_F(Clauses, HeadsRaiseTheArityWithinBounds) {
  EXPECT_EQ(cint_fdef("f ?0 ?1 ?2 ::= #1"), 1);
  EXPECT_EQ(sym("f")->b.fc->arity, 3);
  EXPECT_EQ(cint_fdef("f ?0 ::= #1"), 1);
  EXPECT_EQ(sym("f")->b.fc->arity, 3);
  std::string many = "g";
  for (int i = 0; i < 256; ++i)
    many += " #1";
  EXPECT_EQ(cint_fdef(many + " ::= #1"), 0);
  EXPECT_EQ(cint_fdef("g ?32768 ::= #1"), 0);
  EXPECT_EQ(cint_fdef("g (f ?-1) ::= #1"), 0);
  EXPECT_EQ(sym("g")->b.fc->defs, nullptr);
  EXPECT_EQ(cint_fdef("g ?32767 ::= ?32767"), 1);
  EXPECT_EQ(gParseErrors, 3);
}

TEST_F(Clauses, FindsExactlyTheSameHead) {
  for (const char *clause : {"f #1 ?0 ::= #1", "f #1 #2 ::= #2", "f ?0 #2 ::= #3"})
    EXPECT_EQ(cint_fdef(clause), 1);
  const func_block *fc = sym("f")->b.fc;
  const auto found = [&](const char *head) {
    const StatementSource source(std::string(head) + ";\n");
    pp_get_token();
    const Tree lhs(p_query_term());
    const rhs_link *clause = find_lhs_match(fc, lhs.get());
    return clause == nullptr ? "none" : show(clause->original);
  };
  EXPECT_EQ(found("f #1 ?0"), "#1");
  EXPECT_EQ(found("f #1 #2"), "#2");
  EXPECT_EQ(found("f ?0 #2"), "#3");
  EXPECT_EQ(found("f ?0 ?0"), "none");
  EXPECT_EQ(found("f #1"), "none");
  EXPECT_EQ(found("f"), "none");
  EXPECT_EQ(found("f #1 #2 #3"), "none");
}

TEST_F(Clauses, ConstructorsInside) {
  cons("two", "int -> int -> list int");
  cons("one", "int -> list int");
  EXPECT_EQ(cint_fdef("f ?0 ::= g (one ?0)"), 1);
  EXPECT_EQ(constructor_in(last_clause("f")->original), 0);
  EXPECT_EQ(cint_fdef("f ?0 ::= g [?0]"), 1);
  EXPECT_EQ(constructor_in(last_clause("f")->original), 1);
}

} // namespace
} // namespace velora
