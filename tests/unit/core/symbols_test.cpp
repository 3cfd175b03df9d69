// Symbols, expression trees and types.
#include "core/symbols.h"

#include <gtest/gtest.h>

#include "core/print.h"
#include "core/text.h"
#include "core/trees.h"
#include "kit/recorder.h"

namespace velora {
namespace {

class SymbolTest : public ::testing::Test {
protected:
  void SetUp() override {
    old_console_ = gConsole;
    gConsole = &console_;
  }
  void TearDown() override {
    for (symbol *s : made_)
      unlink_symbol(s);
    gConsole = old_console_;
  }
  symbol *insert(const std::string &name) {
    symbol *s = insert_symbol(name.c_str(), name.size());
    if (s != nullptr)
      made_.push_back(s);
    return s;
  }
  std::vector<symbol *> made_;
  kit::RecorderConsole console_;
  Console *old_console_ = nullptr;
};

TEST_F(SymbolTest, NewestComesFirstAndCaseMatters) {
  symbol *low = insert("zz_first");
  symbol *high = insert("ZZ_first");
  EXPECT_EQ(Symbol_table, high);
  EXPECT_EQ(Symbol_table->next, low);
  EXPECT_EQ(find_symbol("zz_first", 0), low);
  EXPECT_EQ(find_symbol("zz_firstxxx", 8), low) << "a name need not be terminated";
  EXPECT_EQ(find_symbol("Zz_first", 0), nullptr);
}

TEST_F(SymbolTest, NamesHaveAtMost255Characters) {
  const std::string longest(255, 'n');
  symbol *s = insert(longest);
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(find_symbol(longest.c_str(), 255), s);
  for (const std::size_t length : {std::size_t{256}, std::size_t{511}, std::size_t{100000}}) {
    const std::string name(length, 'n');
    EXPECT_EQ(insert(name), nullptr);
    EXPECT_EQ(find_symbol(name.c_str(), name.size()), nullptr);
    EXPECT_NE(console_.messages.find(std::to_string(length)), std::string::npos);
  }
}

TEST_F(SymbolTest, NearNamesAreOffered) {
  insert("zqfactorial");
  insert("zqfactor");
  const auto near = nearest_names("zqfactoral", 3);
  ASSERT_FALSE(near.empty());
  EXPECT_EQ(near[0], "zqfactorial");
  EXPECT_TRUE(nearest_names("zqnothinglikeit", 3).empty());
}

TEST(TreeTest, DeepTreesAreCopiedComparedAndFreed) {
  for (const bool left : {true, false}) {
    Tree tree(make_leaf(kVariable));
    for (int i = 0; i < 1000000; ++i) {
      node *leaf = make_leaf(kInteger);
      leaf->val.i = i;
      tree.reset(left ? make_apply_node(tree.release(), leaf)
                      : make_apply_node(leaf, tree.release()));
    }
    Tree copy(copy_tree(tree.get()));
    EXPECT_EQ(equal_expression(tree.get(), copy.get()), 1);
    (left ? copy->val.a.a2 : copy->val.a.a1)->val.i = -1;
    EXPECT_EQ(equal_expression(tree.get(), copy.get()), 0);
  }
}

TEST(TreeTest, NodesAreEqualByKindAndValue) {
  const auto leaf = [](std::uint8_t type, auto set) {
    Tree t(make_leaf(type));
    set(t->val);
    return t;
  };
  const auto real = [&](float r) { return leaf(kReal, [r](auto &v) { v.r = r; }); };
  const auto text = [&](const char *s) {
    return leaf(kString, [s](auto &v) {
      v.s.str = new_text(s);
      hold_text(v.s.str);
      v.s.len = static_cast<int>(std::string(s).size());
    });
  };
  EXPECT_EQ(equal_node(real(0.0F).get(), real(-0.0F).get()), 1);
  EXPECT_EQ(equal_node(text("ab").get(), text("ab").get()), 1);
  EXPECT_EQ(equal_node(text("ab").get(), text("abc").get()), 0);
  Tree lambda(make_leaf(kLambda));
  Tree lambda2(make_leaf(kLambda));
  EXPECT_EQ(equal_node(lambda.get(), lambda2.get()), 0);
  EXPECT_EQ(equal_expression(lambda.get(), lambda2.get()), 1);
  Tree half(make_apply_node(make_leaf(kCombS), nullptr));
  Tree whole(make_apply_node(make_leaf(kCombK), make_leaf(kCombK)));
  EXPECT_EQ(equal_node(half.get(), whole.get()), 0);
}

top_node *variable(int v) {
  return make_bi_top_node(static_cast<std::uint8_t>(kTypeVariable + v));
}

TEST(TypeTest, AVariableOnTheLeftEqualsWhatSharesItsLowBits) {
  top_node *nine = variable(9);
  top_node *whole = make_bi_top_node(kTypeInt);
  EXPECT_EQ(equal_type_tree(nine, whole), 1);
  EXPECT_EQ(equal_type_tree(whole, nine), 0);
  free_type_tree(nine);
  free_type_tree(whole);
}

TEST(TypeTest, ApplicationsAsArgumentsPrintInParentheses) {
  symbol list{};
  char name[] = "list";
  list.name = name;
  top_node *inner = make_user_top_node(&list, 1);
  inner->tnu.u.ua[0] = make_bi_top_node(kTypeInt);
  top_node *outer = make_user_top_node(&list, 1);
  outer->tnu.u.ua[0] = inner;
  top_node *fun =
      make_arrow_node(make_arrow_node(variable(0), make_arrow_node(variable(1), nullptr)),
                      make_arrow_node(outer, make_arrow_node(variable(1), nullptr)));
  EXPECT_EQ(tspecs_text(fun), "(?0->?1)->list (list int ) ->?1");
  EXPECT_EQ(GetSymbolOutput(fun), nullptr);
  EXPECT_EQ(GetSymbolOutput(outer), &list);
  free_type_tree(fun);
}

TEST(TypeTest, DeepTypesAreFreed) {
  top_node *t = make_bi_top_node(kTypeInt);
  for (int i = 0; i < 100000; ++i)
    t = make_arrow_node(t, nullptr);
  free_type_tree(t);
}

} // namespace
} // namespace velora
