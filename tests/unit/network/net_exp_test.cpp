// Export: what is copied of the two files, what is needed besides, and that a result loads.
#include "network/net_exp.h"

#include <random>

#include "network/links.h"
#include "unit/db/db_kit.h"
#include "unit/db/random_database.h"

using namespace velora;
using namespace velora::db_test;

namespace {

NameList names(std::initializer_list<const char *> list) {
  NameList result;
  for (const char *name : list)
    NewNameToList(name, result);
  return result;
}

TEST(ExportText, EntriesAreCopiedWholeByTheirFirstWord) {
  kit::Recording shown;
  const std::string text = "fdec\n\tf ::= int ;\n\tg ::= int ;\n;\n"
                           "fdec\n\tf #1 ::= int ;\n;\nfdef\n\n"
                           "  f \"a;\" ';'  ::=\n      g \"x ;\n y\" ;\n"
                           "  /* of g ;\n f ::= no ; */\n"
                           "  g  ::= f ; g ::= f  ;\n\n  f ::= g ; /* end */\n;\n";
  EXPECT_EQ(Copy_DDB_Sections(text, "fdec\n", names({"f"})),
            "fdec\n\tf ::= int ;\n\tf #1 ::= int ;\n;\n");
  EXPECT_EQ(Copy_DDB_Sections(text, "fdef\n", names({"g"})), "fdef\n  g  ::= f ; g ::= f  ;\n;\n");
  EXPECT_EQ(Copy_DDB_Sections(text, "fdef\n", names({"f"})),
            "fdef\n  f \"a;\" ';'  ::=\n      g \"x ;\n y\" ;\n  f ::= g ; /* end */\n;\n");
  EXPECT_EQ(Copy_DDB_Sections("fdef\nf ::= g", "fdef\n", names({"f"})), "fdef\nf ::= g;\n");
  EXPECT_EQ(Copy_DDB_Sections("", "tdec\n", names({"f"})), "tdec\n;\n");
  const std::string word(3000, 'x');
  EXPECT_EQ(Copy_DDB_Sections("cdec\n" + word + " ::= t ;\n;\n", "cdec\n", names({word.c_str()})),
            "cdec\n" + word + " ::= t ;\n;\n");
}

TEST(ExportText, PicturesAreCopiedByTheirNameWithAnnotations) {
  kit::Recording shown;
  const std::string kept =
      "f~g 0 3 1 12 1\nnote\na 1 2 0 0 0 9 9 2\nf 0 1 1 12\n$$$$\n\nF2\n~~~~~~\n"
      "~ 3 3 1 0 0 0 0\nB1\nF1\n";
  const std::string other = "h 0 1 1 12 <old form>\na 1 2 0 0 0 9 9\n\n\n";
  const std::string type = "t 0 0 2 12\n";
  EXPECT_EQ(Copy_SEGS_Pictures(other + kept + type + "$$$$", names({"t"}), names({"f g"})),
            kept + type + "$$$$");
  EXPECT_EQ(Copy_SEGS_Pictures(other + kept + "$$$$", {}, names({"f"})), "$$$$");
  EXPECT_EQ(Copy_SEGS_Pictures("h 0 9 1 12\na 1 2", names({"h"}), {}), "h 0 9 1 12\na 1 2$$$$");
}

class Export : public DbTest {
protected:
  // Opens a database as its saved file reads.
  void open(const std::string &text) {
    put("x.ddb", text);
    put("x.seg", "$$$$");
    Setup_Global_DDB_name("x");
    ASSERT_EQ(OpenDataBaseFile(), 1);
    ASSERT_EQ(fdb_commit_db(), 1);
    gSymbolTableChanged = gSegsChanged = 0;
  }
};

TEST_F(Export, OffersWhatPatternsAndTypesNeed) {
  open("tdec\nbox ::= typeop #1 ;\ntone ::= enum ;\n;\ncdec\nPack ::= tone -> box tone ;\n"
       "loud ::= tone ;\n;\nfdec\nf ::= box tone -> int ;\ng ::= int ;\n;\n"
       "fdef\nf (Pack loud) ::= g ;\ng ::= #1 ;\n;\n");
  ExportLists lists;
  gather_for_export("f", lists);
  EXPECT_EQ(lists.functions.names, (std::vector<std::string>{"f", "g"}));
  EXPECT_EQ(lists.types.names, (std::vector<std::string>{"box"}));
  EXPECT_TRUE(said().ends_with("All user-defined functions:- f g \n"
                               "All user-defined types:- box \n"));
  const ExportLists needed = needed_for_export(lists);
  EXPECT_EQ(needed.types.names, (std::vector<std::string>{"tone"}));
  EXPECT_EQ(std::set<std::string>(needed.functions.names.begin(), needed.functions.names.end()),
            (std::set<std::string>{"Pack", "loud"}));
}

TEST_F(Export, RefusesItsOwnNameAndAsksBeforeItWritesOver) {
  open("fdec\ng ::= int ;\n;\nfdef\ng ::= #1 ;\n;\n");
  const auto before = files();
  EXPECT_EQ(export_names("x", {"g"}), 0);
  EXPECT_EQ(export_names("./x.ddb", {"g"}), 0);
  EXPECT_EQ(files(), before);
  put("y.ddb", "mine");
  console().choices = {2};
  EXPECT_EQ(export_names("y", {"g"}), 0);
  EXPECT_EQ(get("y.ddb"), "mine");
  console().choices = {1};
  EXPECT_EQ(export_names("y", {"g"}), 1);
  EXPECT_EQ(get("y.seg"), "$$$$");
}

// A hundred selections: each result loads without a message when what is needed is added.
TEST_F(Export, OfAnySelectionLoads) {
  std::mt19937 random(5);
  int exported = 0;
  for (unsigned seed = 1; seed <= 25; ++seed) {
    RandomDatabase generated(seed);
    open(generated.database());
    console().messages.clear();
    for (int round = 0; round < 4; ++round, ++exported) {
      ExportLists lists;
      for (int picks = 1 + static_cast<int>(random() % 3); picks > 0; --picks)
        gather_for_export(RandomDatabase::name(static_cast<int>(
                              random() % static_cast<unsigned>(generated.functions()))),
                          lists);
      const ExportLists needed = needed_for_export(lists);
      for (const std::string &name : needed.functions.names)
        NewNameToList(name.c_str(), lists.functions);
      for (const std::string &name : needed.types.names)
        NewNameToList(name.c_str(), lists.types);
      ASSERT_EQ(
          CreateExportDataBase("x", "part" + std::to_string(round), lists.functions, lists.types),
          1);
    }
    ResetVelora();
    for (int round = 0; round < 4; ++round) {
      const std::string part = "part" + std::to_string(round);
      console().messages.clear();
      EXPECT_EQ(fdb_open_db(part), 1);
      EXPECT_EQ(console().messages, "") << seed << '\n' << get(part + ".ddb");
      fdb_close_db();
    }
    reset();
  }
  EXPECT_EQ(exported, 100);
}

} // namespace
