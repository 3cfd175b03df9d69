// The stored network picture of a database: made, found again, and updated.
#include "network/net_store.h"

#include "unit/db/db_kit.h"

using namespace velora;
using namespace velora::db_test;

namespace {

class NetStore : public DbTest {
protected:
  static Segm *node(const std::string &label) {
    for (int i = 1; i <= gWinInfo->seg_ct; ++i)
      if (gWinInfo->seg_ments[i]->label == label)
        return gWinInfo->seg_ments[i];
    return nullptr;
  }
};

TEST_F(NetStore, IsMadeOnceAndKeepsTheBoxesThatWereMoved) {
  put("x.ddb", "fdef\n a ::= b c ; b ::= c ;\n;\n");
  Setup_Global_DDB_name("x");
  EXPECT_EQ(StoreNetwork(), 1);
  EXPECT_EQ(said(), "Network Created and Stored\n");
  ASSERT_NE(gWinInfo, nullptr);
  EXPECT_EQ(gWinInfo->name, kNetworkName);
  EXPECT_EQ(gWinInfo->cmpnt, 0);
  EXPECT_EQ(gWinInfo->wtype, kNetworkPicture);
  EXPECT_EQ(gWinInfo->seg_ct, 6);
  EXPECT_EQ(SaveAll("x.seg"), 1);
  EXPECT_TRUE(get("x.seg").starts_with("$$NETWORK$$ 0 6 3 12\n"));

  node("b")->lx = 5, node("b")->ly = 6, node("b")->ux = 70, node("b")->uy = 80;
  put("x.ddb", "fdef\n a ::= b c d ; b ::= c ;\n;\n");
  EXPECT_EQ(StoreNetwork(), 1);
  EXPECT_TRUE(said().ends_with("Network Created and Updated\n"));
  EXPECT_EQ(gWinInfo->next, nullptr);
  EXPECT_EQ(node("b")->box(), (Rect{5, 6, 70, 80}));
  ASSERT_NE(node("d"), nullptr);
  EXPECT_EQ(node("d")->segb_ptr.size(), 1u);
}

} // namespace
