// Unsaved work over an end that nobody wanted: written whole and private, offered at the next
// opening, and as little trusted as any file.
#include "unit/db/db_kit.h"

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "core/events.h"
#include "db/recovery_file.h"
#include "editor/model/vel_segs.h"
#include "platform/trust.h"
#include "platform/trusted_sums.h"
#include "shell/return_point.h"

using namespace velora;
using namespace velora::db_test;

namespace {

class RecoveryFileTest : public DbTest {
protected:
  static constexpr int kTake = 1;
  static constexpr int kDiscard = 2;
  static constexpr int kLater = 3;

  void SetUp() override {
    DbTest::SetUp();
    setenv("XDG_STATE_HOME", (fs::current_path() / "state").c_str(), 1);
    forget_trusted_sums();
    forget_work_files();
    note_databases_closed();
    settle_trust();
    gPersonAnswers = true;
  }
  void TearDown() override {
    gPersonAnswers = false;
    note_databases_closed();
    settle_trust();
    unsetenv("XDG_STATE_HOME");
    forget_trusted_sums();
    DbTest::TearDown();
  }
  // A saved database with work on it that is not.
  void work_on_database() {
    CreateDataBase("x");
    load("fdec\n f ::= int ; ;\nfdef\n f ::= #1 ; ;\n");
    ASSERT_EQ(SaveDataBase(""), 1);
    load("fdec\n g ::= int ; ;\nfdef\n g ::= #2 ; ;\n");
    WinInfo *wi = nullptr;
    NewWinInfo(0, kFunctionPicture, &wi);
    wi->name = "unfinished";
    wi->saved = 0;
    Segm *box = extra_segment(wi);
    box->type = kBox;
    box->segnum = 1;
    box->label = "label";
    remove_segment(1, wi);
    box = extra_segment(wi);
    box->type = kBox;
    box->label = "second";
  }
  static int reopened() {
    reset();
    note_databases_closed();
    settle_trust();
    Setup_Global_DDB_name("x");
    return OpenDataBaseFile();
  }
};

TEST_F(RecoveryFileTest, WorkIsWrittenForItsOwnerAloneAndTakenUpAgain) {
  work_on_database();
  EXPECT_EQ(write_work(), "x.work");
  EXPECT_EQ(fs::status("x.work").permissions(), fs::perms(0600));
  const std::string work = get("x.work");
  console().choices = {kTake};
  // A reset is a clean close, which takes the file away.
  reset();
  put("x.work", work);
  EXPECT_EQ(reopened(), 1);
  EXPECT_EQ(questions("Unsaved work on x was found"), 1);
  EXPECT_NE(find_symbol("g", 0), nullptr);
  ASSERT_NE(gWinInfo, nullptr);
  EXPECT_EQ(gWinInfo->name, "unfinished");
  EXPECT_EQ(gWinInfo->saved, 0);
  EXPECT_EQ(gSymbolTableChanged + gSegsChanged, 2);
  EXPECT_EQ(gDDB_basename, "x");
  EXPECT_FALSE(session_is_restricted()) << "it was written by this program";
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_NE(get("x.ddb").find("\tg ::= int ;\n"), std::string::npos);
  EXPECT_FALSE(file_exists("x.work"));
}

// A session is asked to end by two signals in a row, and by one while a question waits.
TEST_F(RecoveryFileTest, WorkIsWrittenThoughTheProgramIsAskedToEnd) {
  work_on_database();
  const auto write = [] { return write_work().empty() ? 0 : 1; };
  gInterrupted = 1;
  EXPECT_EQ(run_command(write), CommandEnd::done);
  EXPECT_EQ(std::exchange(gInterrupted, 0), 1) << "what comes after is stopped";
  EXPECT_TRUE(file_exists("x.work"));
}

TEST_F(RecoveryFileTest, WorkOnFilesThatChangedSinceOpensAsACopy) {
  work_on_database();
  write_work();
  const std::string work = get("x.work");
  reset();
  put("x.ddb", "fdec\n other ::= int ;\n;\n");
  put("x.work", work);
  console().choices = {kTake};
  EXPECT_EQ(reopened(), 1);
  EXPECT_NE(find_symbol("g", 0), nullptr);
  EXPECT_EQ(find_symbol("other", 0), nullptr);
  EXPECT_EQ(gDDB_basename, "");
  EXPECT_EQ(Db_file, 0);
  EXPECT_EQ(get("x.ddb"), "fdec\n other ::= int ;\n;\n");
  EXPECT_TRUE(file_exists("x.work"));
}

TEST_F(RecoveryFileTest, DiscardedWorkGoesAndWorkForLaterStays) {
  work_on_database();
  write_work();
  const std::string work = get("x.work");
  reset();
  put("x.work", work);
  console().choices = {kDiscard};
  EXPECT_EQ(reopened(), 1);
  EXPECT_EQ(find_symbol("g", 0), nullptr);
  EXPECT_FALSE(file_exists("x.work"));
  reset();
  put("x.work", work);
  console().choices = {kLater};
  EXPECT_EQ(reopened(), 1);
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(get("x.work"), work) << "a save takes away only what it has saved";
  EXPECT_EQ(write_work(), "x.work.2");
}

TEST_F(RecoveryFileTest, WorkWhoseTakingUpIsStoppedIsOfferedAgain) {
  work_on_database();
  write_work();
  const std::string work = get("x.work");
  reset();
  put("x.work", work); // as after an end that nobody wanted
  const auto before = files();
  console().choices = {kTake};
  console().interrupt_after = 0;
  event_countdown = 3;
  EXPECT_EQ(run_command(reopened), CommandEnd::interrupted);
  EXPECT_EQ(console().messages, "x.ddb is not open; nothing of it is kept\n");
  EXPECT_EQ(gDDB_basename + Db_f_name, "");
  EXPECT_EQ(gWinInfo, nullptr);
  EXPECT_EQ(fdb_commit_db(), 0) << "half of the work must not be written over the database";
  EXPECT_EQ(files(), before);
  console().choices = {kTake};
  EXPECT_EQ(reopened(), 1);
  EXPECT_NE(find_symbol("g", 0), nullptr);
}

TEST_F(RecoveryFileTest, WorkOfAStrangerRestrictsTheSession) {
  work_on_database();
  write_work();
  std::string work = get("x.work");
  reset();
  work.replace(work.find("#2"), 2, "#3");
  put("x.work", work);
  console().choices = {kTake};
  EXPECT_EQ(reopened(), 1);
  EXPECT_TRUE(session_is_restricted());
  EXPECT_EQ(restricting_databases(), "x.work");
}

// The work is written unasked, so a link that came with a database must not say where to.
TEST_F(RecoveryFileTest, WorkIsNeverWrittenThroughALink) {
  work_on_database();
  put("precious", "mine");
  fs::create_symlink("precious", "x.work");
  EXPECT_EQ(write_work(), "x.work");
  EXPECT_EQ(get("precious"), "mine");
  EXPECT_EQ(entry_kind("x.work"), EntryKind::file);
}

TEST_F(RecoveryFileTest, DamagedWorkIsPointedOutAndLeftAlone) {
  work_on_database();
  write_work();
  const std::string work = get("x.work");
  reset();
  for (const std::string &damaged :
       {std::string("velora-work-1 absent"), work.substr(0, 30), std::string(),
        std::string("velora-work-1 absent absent 99999 3\nx")}) {
    put("x.work", damaged);
    EXPECT_EQ(reopened(), 1);
    EXPECT_EQ(find_symbol("g", 0), nullptr);
    EXPECT_EQ(get("x.work"), damaged);
  }
  EXPECT_EQ(questions("Unsaved work"), 0);
  EXPECT_NE(console().notes.find("unsaved work on x stands in x.work"), std::string::npos);
}

TEST_F(RecoveryFileTest, WorkWithoutADatabaseStandsInTheStateFolder) {
  load("fdec\n g ::= int ; ;\n");
  const std::string name = (fs::current_path() / "state/velora/velora-unsaved.work").string();
  EXPECT_EQ(write_work(), name);
  const std::string work = get(name);
  reset();
  put(name, work);
  console().choices = {kTake};
  offer_unnamed_work();
  EXPECT_NE(find_symbol("g", 0), nullptr);
  EXPECT_TRUE(file_exists(name)) << "it is not saved yet";
  CreateDataBase("y");
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_FALSE(file_exists(name));
}

// A picture that is edited has the name and the number of the stored one that it was loaded from.
TEST_F(RecoveryFileTest, AShownPictureAndItsStoredOneComeBackBoth) {
  work_on_database();
  const auto add = [](const std::string &label, int saved, WindowId win) {
    WinInfo *wi = nullptr;
    NewWinInfo(0, kFunctionPicture, &wi);
    wi->win = win;
    wi->name = "f";
    wi->cmpnt = 0;
    wi->saved = saved;
    wi->clean = saved;
    Segm *box = extra_segment(wi);
    box->segnum = 1;
    box->type = kBox;
    box->label = label;
  };
  add("stored", 1, 0);
  add("edited", 0, 99);
  add("twice", 0, 98);
  write_work();
  const std::string work = get("x.work");
  reset();
  put("x.work", work);
  console().choices = {kTake};
  EXPECT_EQ(reopened(), 1);
  std::vector<std::string> found;
  for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
    if (wi->name == "f")
      found.push_back(std::string(wi->seg_ments[1]->label) + (wi->saved != 0 ? " stored" : ""));
  EXPECT_EQ(found, (std::vector<std::string>{"stored stored", "edited", "twice"}));
}

TEST_F(RecoveryFileTest, WhatWasWrittenBesideWorkKeptForLaterIsOfferedToo) {
  work_on_database();
  write_work();
  const std::string work = get("x.work");
  reset();
  put("x.work", work);
  put("x.work.2", work);
  console().choices = {kLater, kTake};
  EXPECT_EQ(reopened(), 1);
  EXPECT_EQ(questions("Unsaved work on x was found"), 2);
  EXPECT_NE(find_symbol("g", 0), nullptr);
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(get("x.work"), work);
  EXPECT_FALSE(file_exists("x.work.2"));
}

} // namespace
