// Input of any size and depth: right answers or a message, in linear time.
#include "front/pexpr.h"
#include "unit/front/front_kit.h"

namespace velora {
namespace {

using front_test::FrontTest;
using front_test::show;

class Huge : public FrontTest {
protected:
  static std::string repeat(const std::string &text, int times) {
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i)
      result += text;
    return result;
  }
  static Tree parsed(const std::string &text) {
    const StatementSource source(text + ";\n");
    pp_get_token();
    return p_query_term();
  }
};

constexpr int kMillion = 1000000;

TEST_F(Huge, ListOfAMillion) {
  const Tree list = parsed("[" + repeat("#1 ", kMillion) + "]");
  ASSERT_TRUE(list);
  int length = 0;
  for (const node *n = list.get(); is_apply(n); n = n->val.a.a2)
    ++length;
  EXPECT_EQ(length, kMillion);
}

TEST_F(Huge, BracketsNestAMillionDeep) {
  EXPECT_EQ(show(parsed(repeat("(", kMillion) + "#1" + repeat(")", kMillion)).get()), "#1");
  EXPECT_EQ(p_balance, kBalanced);
  EXPECT_FALSE(parsed(repeat("(", kMillion)));
  EXPECT_FALSE(parsed(repeat("(f ", kMillion) + "]"));
  const Tree nested = parsed(repeat("[", kMillion) + repeat("]", kMillion));
  ASSERT_TRUE(nested);
}

TEST_F(Huge, ClausesOfAnySize) {
  const std::string deep = repeat("(g ", 200000) + "?0" + repeat(")", 200000);
  EXPECT_EQ(cint_fdef("f ?0 ::= " + deep), 1);
  EXPECT_EQ(cint_fdef("f " + deep + " ::= #1"), 1);
  EXPECT_EQ(cint_fdef("f " + deep + " ::= #2"), 1);
  EXPECT_EQ(show(last_clause("f")->rhs), "(K #2)");
  EXPECT_EQ(cint_fdef("h ?0 ::= [" + repeat("#1 ", 200000) + "?0]"), 1);
  EXPECT_EQ(cint_fdef("h ?1 ::= [" + repeat("?1 ", 20000) + "]"), 1);
}

TEST_F(Huge, TypesNestDeeply) {
  const int depth = 100000;
  EXPECT_EQ(cint_fdec("a ::= " + repeat("(", depth) + "int" + repeat(")", depth)), 1);
  EXPECT_EQ(sym("a")->b.fc->arity, 0);
  EXPECT_EQ(cint_fdec("b ::= " + repeat("list (", depth) + "int" + repeat(")", depth)), 1);
  EXPECT_EQ(cint_fdec("c ::= " + repeat("(", depth)), 0);
  EXPECT_EQ(cint_fdec("d ::= " + repeat("int -> ", 255) + "int"), 1);
  EXPECT_EQ(sym("d")->b.fc->arity, 255);
  EXPECT_EQ(cint_fdec("e ::= " + repeat("int -> ", 256) + "int"), 0);
}

TEST_F(Huge, LongLinesAndNames) {
  const std::string name(100000, 'n');
  EXPECT_EQ(cint_query(name), 0);
  EXPECT_NE(messages().find(": " + name.substr(0, 255) + "...\n"), std::string::npos);
  EXPECT_EQ(messages().find(name.substr(0, 256)), std::string::npos);
  const std::string path = file("huge.q", "fdec" + std::string(10 * kMillion, ' ') + "a ::= int;;");
  EXPECT_EQ(load_file(path, 0), 1);
  EXPECT_NE(sym("a"), nullptr);
  const Tree text = parsed("\"" + std::string(kMillion, 's') + "\"");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->val.s.len, kMillion);
}

} // namespace
} // namespace velora
