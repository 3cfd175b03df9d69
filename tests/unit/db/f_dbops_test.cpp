// The database file: its bytes, and creating, opening, committing and closing it.
#include "unit/db/db_kit.h"

#include <cerrno>

#include "core/second_names.h"
#include "shell/return_point.h"

using namespace velora;
using namespace velora::db_test;

namespace {

const std::string kEmpty = "tdec\n;\ncdec\n;\nfdec\n;\nfdec\n;\nfdef\n;\n";

TEST_F(DbTest, ANewDatabaseIsALoneTerminatorAndCommitsToEmptySections) {
  EXPECT_EQ(fdb_create_db("x"), 1);
  EXPECT_EQ(get("x.ddb"), "\n;\n");
  EXPECT_EQ(fdb_create_db("x"), 0);
  EXPECT_EQ(fdb_open_db("x"), 1);
  EXPECT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(get("x.ddb"), kEmpty);
  EXPECT_EQ(get("x.ddb.bak"), "\n;\n");
  EXPECT_EQ(said(), "Created: x.ddb\nDatabase: x already exists\nLoading x.ddb. . . Loaded\n");
}

TEST_F(DbTest, EveryKindOfEntryIsWrittenAsItIsRead) {
  put("x.ddb", kSample);
  ASSERT_EQ(fdb_open_db("x"), 1);
  EXPECT_EQ(console().messages, "");
  ASSERT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(get("x.ddb.bak"), kSample);
  const std::string reversed = get("x.ddb");
  EXPECT_NE(reversed, kSample);
  // Reading reverses the entries of each section, so the second commit restores them.
  fdb_close_db();
  ASSERT_EQ(fdb_open_db("x"), 1);
  ASSERT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(get("x.ddb"), kSample);
  EXPECT_EQ(get("x.ddb.bak"), reversed);
}

TEST_F(DbTest, CommittingTwiceLeavesOneBackup) {
  fdb_create_db("x");
  fdb_open_db("x");
  fdb_commit_db();
  load("fdec\n f ::= int ; ;\n");
  EXPECT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(get("x.ddb.bak"), kEmpty);
  EXPECT_EQ(files().size(), 2u);
}

TEST_F(DbTest, OneDatabaseIsOpenAtATime) {
  fdb_create_db("x");
  EXPECT_EQ(fdb_open_db("x"), 1);
  EXPECT_EQ(fdb_open_db("x"), 0);
  EXPECT_TRUE(said().ends_with("Db file already open\n"));
  EXPECT_EQ(fdb_close_db(), 1);
  EXPECT_EQ(fdb_open_db("x"), 1);
}

TEST_F(DbTest, AMissingFileIsNotOpenedAndNotCommitted) {
  EXPECT_EQ(fdb_open_db("none"), 0);
  EXPECT_EQ(Db_file, 0);
  EXPECT_EQ(said(), "Failed to open none.ddb\n");
  fdb_create_db("x");
  fdb_open_db("x");
  fs::remove("x.ddb");
  put("x.ddb.bak", "older");
  console().clear();
  EXPECT_EQ(fdb_commit_db(), 0);
  EXPECT_EQ(said(), "Can't remove old backup file x.ddb.bak\n");
  EXPECT_EQ(get("x.ddb.bak"), "older");
}

TEST_F(DbTest, WithoutAnOpenDatabaseNothingIsCommitted) {
  EXPECT_EQ(fdb_commit_db(), 0);
  fdb_create_db("x");
  fdb_open_db("x");
  fdb_close_db();
  EXPECT_EQ(fdb_commit_db(), 0);
  EXPECT_EQ(get("x.ddb"), "\n;\n");
}

TEST_F(DbTest, ABackupThatCannotBeReplacedLeavesTheFileUntouched) {
  fdb_create_db("x");
  fdb_open_db("x");
  fs::create_directories("x.ddb.bak/inside");
  console().clear();
  EXPECT_EQ(fdb_commit_db(), 0);
  EXPECT_EQ(said(), "Can't remove old backup file x.ddb.bak\n");
  EXPECT_EQ(get("x.ddb"), "\n;\n");
}

TEST_F(DbTest, AFileChangedByAnotherProgramIsOverwrittenOnlyWhenAsked) {
  fdb_create_db("x");
  fdb_open_db("x");
  put("x.ddb", "tdec\n other ::= enum ;\n;\n");
  EXPECT_EQ(fdb_commit_db(), 0);
  EXPECT_EQ(questions("x.ddb was changed by another program"), 1);
  EXPECT_EQ(get("x.ddb"), "tdec\n other ::= enum ;\n;\n");
  console().choices = {1};
  EXPECT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(get("x.ddb"), kEmpty);
  EXPECT_EQ(get("x.ddb.bak"), "tdec\n other ::= enum ;\n;\n");
  EXPECT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(questions("x.ddb was changed by another program"), 2);
}

TEST_F(DbTest, AnInterruptedOpeningIsForgottenSoThatHalfOfItIsNeverWrittenBack) {
  std::string text = "fdec\n";
  for (int i = 0; i < 20000; ++i)
    text += " n" + std::to_string(i) + " ::= int ;\n";
  text += ";\nfdef\n";
  for (int i = 0; i < 20000; ++i)
    text += " n" + std::to_string(i) + " ::= #1 ;\n";
  put("x.ddb", text + ";\n");
  Setup_Global_DDB_name("x");
  console().interrupt_after = 1;
  EXPECT_EQ(run_command([] { return fdb_open_db("x"); }), CommandEnd::interrupted);
  EXPECT_EQ(Db_file, 0);
  EXPECT_EQ(gDDB_basename, "");
  EXPECT_EQ(fdb_commit_db(), 0);
  EXPECT_EQ(get("x.ddb"), text + ";\n");
}

// --- files that are not as they were written ---------------------------------------------------

struct Damage {
  const char *name;
  std::string text;
  const char *kept; // a name that must have been read all the same
};

class Damaged : public DbTest, public testing::WithParamInterface<Damage> {};

TEST_P(Damaged, IsReadAsFarAsItGoesAndKeptAsideBeforeItIsRewritten) {
  put("x.ddb", GetParam().text);
  ASSERT_EQ(fdb_open_db("x"), 1);
  if (GetParam().kept != nullptr) {
    EXPECT_NE(find_symbol(GetParam().kept, 0), nullptr);
  }
  EXPECT_NE((console().messages + console().notes).find("x.ddb"), std::string::npos);
  ASSERT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(get("x.ddb.damaged"), GetParam().text);
  EXPECT_NE(said().find("What could not be read of x.ddb is kept in x.ddb.damaged\n"),
            std::string::npos);
  ASSERT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(get("x.ddb.damaged.2"), "(none)");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, Damaged,
    testing::Values(
        Damage{"cut_in_a_statement", kSample.substr(0, kSample.find("Pack") + 10), "colour"},
        Damage{"cut_between_statements", kSample.substr(0, kSample.find("\tred ::=")), "green"},
        Damage{"cut_in_a_clause", kSample.substr(0, kSample.find("two words") + 3), "h"},
        Damage{"unknown_names", "fdec\n f ::= nothing ;\n g ::= int ;\n;\n", "g"},
        Damage{"garbage", "fdec\n g ::= int ;\n;\n\x01\x80 ) ] ::= ;\n", "g"},
        Damage{"empty_statement", "fdec\n g ::= int ;\n;\n;\ntdec\n t ::= enum ;\n;\n", "g"}),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(DbTest, ADamagedStatementIsReportedWithItsLine) {
  put("x.ddb", "fdec\n g ::= int ;\n\n bad ::= nothing ;\n;\n");
  fdb_open_db("x");
  EXPECT_NE(console().notes.find("x.ddb"), std::string::npos) << console().notes;
  EXPECT_NE(console().notes.find("4"), std::string::npos) << console().notes;
  EXPECT_NE(console().messages.find("x.ddb: 1 statements could not be read\n"), std::string::npos)
      << console().messages;
}

TEST_F(DbTest, ADamagedFileThatCannotBeKeptIsNotRewritten) {
  const std::string text = "fdec\n bad ::= nothing ;\n;\n";
  put("x.ddb", text);
  fdb_open_db("x");
  gFileFault = [](FileStep step, std::size_t) {
    return step == FileStep::write ? FileFault{ENOSPC, 3} : FileFault{};
  };
  EXPECT_EQ(fdb_commit_db(), 0);
  gFileFault = nullptr;
  EXPECT_EQ(get("x.ddb"), text);
  EXPECT_EQ(fdb_commit_db(), 1);
  EXPECT_EQ(get("x.ddb.damaged"), text);
}

TEST_F(DbTest, AWholeFileIsNotKeptAside) {
  put("x.ddb", kSample + "\n\n");
  fdb_open_db("x");
  fdb_commit_db();
  EXPECT_EQ(files().size(), 2u);
}

TEST_F(DbTest, ASecondNameOfAFunctionIsWrittenAsAFunctionThatIsTheFirst) {
  load("tdec\n t ::= enum ; ;\ncdec\n k ::= t ; ;\n"
       "fdec\n f ::= int -> int ; ;\nfdef\n f ?0 ::= f #1 ; ;\n");
  ASSERT_EQ(make_alias("again", find_symbol("f", 0)), 1);
  ASSERT_EQ(make_alias("kk", find_symbol("k", 0)), 1);
  const std::string text = database_text();
  EXPECT_NE(text.find("\tagain ::= int->int ;\n"), std::string::npos);
  EXPECT_NE(text.find("fdef\n\n  again  ::=\n      f  ;\n\n  f ?0  ::=\n      f #1  ;\n;\n"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.find("kk"), std::string::npos);
  EXPECT_EQ(console().messages, "Warning: kk is a second name and is not saved\n");
}

TEST_F(DbTest, APatternThatCannotBeReadBackIsTold) {
  load("fdec\n f ::= str -> int ; ;\nfdef\n f \"abc\" ::= #1 ; ;\n");
  const node &head = find_symbol("f", 0)->b.fc->defs->lhs_tree->n;
  head.val.a.a2->val.s.str[1] = '"';
  database_text();
  EXPECT_EQ(console().messages,
            "Warning: a clause of f holds a text or character that cannot be read back\n");
}

} // namespace
