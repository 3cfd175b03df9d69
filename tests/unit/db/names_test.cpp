// Base names of databases.
#include "unit/db/db_kit.h"

using namespace velora;
using namespace velora::db_test;

namespace {

struct NameRow {
  const char *name;
  const char *base;    // Make_Base_Name
  const char *current; // Setup_Global_DDB_name
};

class BaseNames : public DbTest, public testing::WithParamInterface<NameRow> {};

TEST_P(BaseNames, AreTheNameWithoutItsEnding) {
  std::string base;
  Make_Base_Name(GetParam().name, base);
  EXPECT_EQ(base, GetParam().base);
  Setup_Global_DDB_name(GetParam().name);
  EXPECT_EQ(gDDB_basename, GetParam().current);
}

INSTANTIATE_TEST_SUITE_P(Table, BaseNames,
                         testing::Values(NameRow{"a.ddb", "a", "a"}, NameRow{"a.DDB", "a", "a"},
                                         NameRow{"a.seg", "a", "a"}, NameRow{"a.SEG", "a", "a.SEG"},
                                         NameRow{"a.segs", "a", "a"},
                                         NameRow{"a.SEGS", "a", "a.SEGS"}, NameRow{"a", "a", "a"},
                                         NameRow{"dir.ddb/b", "dir.ddb/b", "dir.ddb/b"},
                                         NameRow{"a.ddb.seg", "a.ddb", "a.ddb"},
                                         NameRow{"ddb", "ddb", "ddb"}, NameRow{".ddb", "", ""}));

TEST_F(DbTest, ALongPathIsTakenWhole) {
  const std::string path(300, 'p');
  Setup_Global_DDB_name(path + ".ddb");
  EXPECT_EQ(gDDB_basename, path);
}

TEST_F(DbTest, TheConsoleIsTitledWithTheBaseName) {
  hControl = gDesktop->create_window(kControlWindow, "CONTROL", {});
  SetControlWinName("some/base");
  EXPECT_EQ(desktop().windows[hControl].title, "CONTROL [some/base]");
  hControl = 0;
}

} // namespace
