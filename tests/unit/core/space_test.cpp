// The query space: what the collector keeps and frees, depth, running out, resizing, texts.
#include "core/space.h"

#include <gtest/gtest.h>

#include "core/collect.h"
#include "core/text.h"
#include "core/trees.h"
#include "kit/recorder.h"
#include "shell/return_point.h"

namespace velora {
namespace {

// Every test gets a small space of its own and leaves the program with the usual one.
class SpaceTest : public ::testing::Test {
protected:
  void SetUp() override {
    old_console_ = gConsole;
    gConsole = &console_;
    resize(2000);
  }
  void TearDown() override {
    set_collect_stress(0);
    resize(kInitialNodes);
    gConsole = old_console_;
  }
  static void resize(std::int32_t nodes) {
    node_count = nodes;
    ASSERT_EQ(alloc_free_list(), 1);
    init_free_list();
  }
  // How many nodes can be taken, keeping all, before the space is full.
  static int nodes_until_full() {
    int taken = 0;
    Query_root = nullptr;
    run_command([&] {
      for (;;) {
        node *n = LMakeApplyNode(nullptr, Query_root);
        Query_root = n;
        ++taken;
      }
      return 1;
    });
    return taken;
  }
  kit::RecorderConsole console_;
  Console *old_console_ = nullptr;
};

node *chain(int depth, bool to_the_left) {
  Query_root = LMakeInteger(7);
  for (int i = 0; i < depth; ++i)
    Query_root =
        to_the_left ? LMakeApplyNode(Query_root, nullptr) : LMakeApplyNode(nullptr, Query_root);
  return Query_root;
}

int depth_of(const node *n, bool to_the_left) {
  int depth = 0;
  for (; is_apply(n); n = to_the_left ? n->val.a.a1 : n->val.a.a2)
    ++depth;
  return n->type == kInteger && n->val.i == 7 ? depth : -1;
}

TEST_F(SpaceTest, HoldsExactlyItsNumberOfNodes) {
  EXPECT_EQ(nodes_until_full(), 2000);
  EXPECT_EQ(nodes_until_full(), 2000) << "an abandoned command leaves every node free";
}

TEST_F(SpaceTest, GarbageIsTakenAgainForEver) {
  for (int i = 0; i < 100000; ++i)
    LMakeInteger(i);
  garbage_collect();
  EXPECT_EQ(nodes_in_use(), 0);
}

TEST_F(SpaceTest, EpochsMayWrapAround) {
  chain(10, false);
  for (int i = 0; i < 1000; ++i) {
    garbage_collect();
    ASSERT_EQ(nodes_in_use(), 11);
  }
  EXPECT_EQ(depth_of(Query_root, false), 10);
}

TEST_F(SpaceTest, DeepGraphsSurviveACollectionWhole) {
  resize(1 << 20);
  for (const bool left : {true, false}) {
    chain(500000, left);
    garbage_collect();
    EXPECT_EQ(nodes_in_use(), 500001);
    EXPECT_EQ(depth_of(Query_root, left), 500000);
    const char *what = nullptr;
    EXPECT_EQ(check_pool(&what), 1) << what;
  }
}

// A comb whose teeth lean both ways runs the marker's stack over and into pointer reversal.
TEST_F(SpaceTest, ZigzagGraphsSurviveACollectionWhole) {
  resize(1 << 18);
  Query_root = LMakeInteger(7);
  for (int i = 0; i < 60000; ++i) {
    Query_root = LMakeApplyNode(nullptr, Query_root);
    Query_root = LMakeApplyNode(Query_root, nullptr);
    node *tooth = LMakeInteger(i);
    Query_root->val.a.a2 = tooth;
  }
  garbage_collect();
  EXPECT_EQ(nodes_in_use(), 180001);
  int teeth = 60000;
  for (const node *n = Query_root; is_apply(n); n = n->val.a.a1->val.a.a2)
    ASSERT_EQ(n->val.a.a2->val.i, --teeth);
  EXPECT_EQ(teeth, 0);
}

TEST_F(SpaceTest, SharedPartsAreCountedOnceAndKept) {
  node *shared = LMakeInteger(42);
  Query_root = shared;
  Query_root = LMakeApplyNode(shared, shared);
  Tn1 = shared;
  Root held(LMakeApplyNode(Query_root, shared));
  *new_root_addr() = shared;
  garbage_collect();
  EXPECT_EQ(nodes_in_use(), 3);
  EXPECT_EQ(held->val.a.a1->val.a.a2->val.i, 42);
  free_eval_roots();
}

TEST_F(SpaceTest, ReservedNodesComeWithoutACollection) {
  chain(1500, false);
  for (int i = 0; i < 200; ++i) {
    reserve_nodes(400);
    const std::uint64_t before = space_counters().collections;
    for (int k = 0; k < 400; ++k)
      LMakeInteger(k);
    ASSERT_EQ(space_counters().collections, before);
  }
  EXPECT_EQ(run_command([] {
              reserve_nodes(600);
              return 1;
            }),
            CommandEnd::failed);
  EXPECT_EQ(console_.text, "Insufficient Query Space\n");
}

TEST_F(SpaceTest, ResizingReportsAndWarns) {
  resize(kInitialNodes);
  EXPECT_EQ(resize_free_list(1), 1);
  EXPECT_EQ(resize_free_list(1), 1);
  EXPECT_EQ(resize_free_list(0), 1);
  EXPECT_EQ(resize_free_list(2), 1);
  EXPECT_EQ(console_.messages, "Warning: Query space below initial value\n"
                               "Warning: Query space below initial value\n");
  EXPECT_EQ(console_.text, "\nQuery space now set at 100K\n\nQuery space now set at 50K\n"
                           "\nQuery space now set at 200K\n\nQuery space now set at 400K\n");
}

TEST_F(SpaceTest, GrowthStopsAtTheCeiling) {
  resize(kInitialNodes);
  gMaxNodes = 30000;
  EXPECT_EQ(resize_free_list(2), 0) << "only a smaller space than asked";
  EXPECT_LE(node_count, 30000);
  EXPECT_GE(node_count, kInitialNodes);
  gMaxNodes = 0;
}

TEST_F(SpaceTest, TextsLiveAsLongAsSomethingUsesThem) {
  garbage_collect();
  const std::size_t before = text_count();
  char *in_clause = new_text("clause");
  hold_text(in_clause);
  Query_root = LMakeString("query");
  LMakeString("garbage");
  garbage_collect();
  EXPECT_EQ(text_count(), before + 2);
  EXPECT_STREQ(Query_root->val.s.str, "query");
  Query_root->val.s.str = in_clause; // the clause and the query share one text
  drop_text(in_clause);
  garbage_collect();
  EXPECT_EQ(text_count(), before + 1);
  EXPECT_STREQ(Query_root->val.s.str, "clause");
  Query_root = nullptr;
  garbage_collect();
  EXPECT_EQ(text_count(), before);
}

TEST_F(SpaceTest, CopiesAreWholeAndUnguarded) {
  Tree tree(make_apply_node(make_leaf(kCombK), make_leaf(kVariable)));
  tree->val.a.a1->quote = 1;
  for (int i = 0; i < 300; ++i)
    tree.reset(make_apply_node(make_leaf(kVariable), tree.release()));
  set_collect_stress(1);
  Query_root = LCopy(tree.get());
  Root again(LCopy(Query_root));
  set_collect_stress(0);
  EXPECT_EQ(equal_expression(again, tree.get()), 1);
  Root guarded(take_node());
  guarded->type = kInteger;
  LCopy_whole(guarded, Query_root, 1);
  EXPECT_EQ(guarded->val.a.a2->quote, 1);
  EXPECT_EQ(again->val.a.a2->quote, 0);
}

TEST_F(SpaceTest, TheCheckerFindsABrokenNode) {
  Query_root = LMakeApplyNode(LMakeInteger(1), nullptr);
  const char *what = nullptr;
  EXPECT_EQ(check_pool(&what), 1);
  Query_root->val.a.a1->type = 99;
  EXPECT_EQ(check_pool(&what), 0);
  EXPECT_STREQ(what, "a node of no known type");
  Query_root = nullptr;
}

} // namespace
} // namespace velora
