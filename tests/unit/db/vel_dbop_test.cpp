// The database operations of the menus: text and pictures under one base name, what is said and
// asked, and which files are left.
#include "unit/db/db_kit.h"

#include <sys/stat.h>

#include "core/events.h"
#include "editor/model/vel_segs.h"
#include "shell/return_point.h"

using namespace velora;
using namespace velora::db_test;

namespace {

const std::string kEmptyText = "tdec\n;\ncdec\n;\nfdec\n;\nfdec\n;\nfdef\n;\n";
const std::string kPicture = "f 0 1 1 12\nx 1 2 0 10 20 30 40\n\n\n$$$$";

class PairTest : public DbTest {
protected:
  static constexpr int kYes = 1;
  static constexpr int kNo = 2;

  // A stored picture with one box.
  static void add_picture(const std::string &name) {
    WinInfo *wi = nullptr;
    NewWinInfo(0, kFunctionPicture, &wi);
    wi->name = name;
    wi->cmpnt = 0;
    Segm *box = extra_segment(wi);
    box->type = kBox;
    box->segnum = 1;
    box->label = "x";
    box->lx = 10, box->ly = 20, box->ux = 30, box->uy = 40;
    gSegsChanged = 1;
  }
  static int pictures() {
    int count = 0;
    for (const WinInfo *wi = gWinInfo; wi != nullptr; wi = wi->next)
      ++count;
    return count;
  }
};

TEST_F(PairTest, ANewDatabaseIsCreatedOpenedAndCommitted) {
  console().typed = {"first.ddb"};
  EXPECT_EQ(OpenNewDataBase("Untitled1"), 1);
  EXPECT_EQ(gDDB_basename, "first");
  EXPECT_NE(Db_file, 0);
  EXPECT_EQ(files(),
            (std::map<std::string, std::string>{
                {"first.ddb", kEmptyText}, {"first.ddb.bak", "\n;\n"}, {"first.seg", "$$$$"}}));
  EXPECT_TRUE(said().starts_with("Created: first.ddb\nCreated: first.seg\n")) << said();
}

TEST_F(PairTest, ANewDatabaseOverAnOldOneIsRefused) {
  put("x.ddb", "precious");
  console().typed = {"x"};
  EXPECT_EQ(OpenNewDataBase("Untitled1"), 0);
  EXPECT_EQ(said(), "Database: x already exists\nx database not created\n");
  EXPECT_EQ(gDDB_basename, "");
  EXPECT_EQ(get("x.ddb"), "precious");
  EXPECT_EQ(OpenNewDataBase("Untitled1"), 0); // nothing typed: cancelled
}

TEST_F(PairTest, AnOpenDatabaseIsNotTakenOverByAnother) {
  CreateDataBase("x");
  CreateDataBase("y");
  console().typed = {"z"};
  EXPECT_EQ(OpenNewDataBase("Untitled1"), 0);
  add_picture("f");
  WinInfo *wi = gWinInfo;
  console().clear();
  EXPECT_EQ(OpenDataBaseFile(), 0);
  EXPECT_EQ(said(), "Db file already open\n");
  EXPECT_EQ(gWinInfo, wi);
  EXPECT_EQ(gDDB_basename, "x");
  EXPECT_EQ(get("y.ddb") + get("z.ddb"), "(none)(none)");
}

TEST_F(PairTest, PicturesAndTextAreSavedAndReadTogether) {
  CreateDataBase("x");
  add_picture("f");
  load("fdec\n f ::= int ; ;\nfdef\n f ::= #4 ; ;\n");
  console().clear();
  EXPECT_EQ(SaveDataBase("Untitled1"), 1);
  EXPECT_EQ(said(), "Saving. . . DataBase and Graphs Saved OK\n");
  EXPECT_EQ(gSymbolTableChanged + gSegsChanged, 0);
  EXPECT_EQ(get("x.seg"), kPicture);
  reset();
  EXPECT_EQ(pictures(), 0);
  EXPECT_EQ(find_symbol("f", 0), nullptr);

  desktop().files = {"x.ddb"};
  EXPECT_EQ(OpenDataBaseFile(), 1);
  EXPECT_EQ(pictures(), 1);
  EXPECT_NE(find_symbol("f", 0), nullptr);
  EXPECT_EQ(gSymbolTableChanged, 0);
  EXPECT_EQ(gDDB_basename, "x");
}

TEST_F(PairTest, WithoutADatabaseASaveAsksForAName) {
  load("fdec\n f ::= int ; ;\n");
  EXPECT_EQ(SaveDataBase("Untitled1"), 0);
  console().typed = {"late"};
  EXPECT_EQ(SaveDataBase("Untitled1"), 1);
  EXPECT_NE(get("late.ddb").find("\tf ::= int ;\n"), std::string::npos);
}

TEST_F(PairTest, WhenThePicturesCannotBeSavedTheTextIsNotTouched) {
  CreateDataBase("x");
  add_picture("f");
  load("fdec\n f ::= int ; ;\n");
  fs::create_directories("x.seg.bak/inside");
  console().clear();
  EXPECT_EQ(SaveDataBase("Untitled1"), 0);
  EXPECT_TRUE(said().ends_with("Unable to save graphs\n")) << said();
  EXPECT_EQ(get("x.ddb"), kEmptyText);
  EXPECT_EQ(gSymbolTableChanged, 1);
  EXPECT_EQ(gSegsChanged, 1);
}

TEST_F(PairTest, ASaveThatTheUserCancelsChangesNothing) {
  CreateDataBase("x");
  load("fdec\n f ::= int ; ;\n");
  gSymbolTableChanged = 1;
  gSegsChanged = 0;
  const std::string pictures = get("x.seg");
  put("x.ddb", "tdec\n other ::= enum ;\n;\n");
  console().clear();
  EXPECT_EQ(SaveDataBase("Untitled1"), 0);
  EXPECT_TRUE(said().ends_with("Nothing is saved\n")) << said();
  EXPECT_EQ(gSymbolTableChanged, 1);
  EXPECT_EQ(gSegsChanged, 0);
  EXPECT_EQ(get("x.ddb"), "tdec\n other ::= enum ;\n;\n");
  EXPECT_EQ(get("x.seg"), pictures);
}

TEST_F(PairTest, WhenTheTextCannotBeSavedThePicturesAreNotEither) {
  CreateDataBase("x");
  add_picture("f");
  fs::remove("x.ddb.bak");
  fs::create_directories("x.ddb.bak/inside");
  console().clear();
  EXPECT_EQ(SaveDataBase("Untitled1"), 0);
  EXPECT_EQ(said(), "Saving. . . Can't remove old backup file x.ddb.bak\nUnable to save graphs\n");
  EXPECT_EQ(get("x.seg"), "$$$$");
  EXPECT_EQ(get("x.seg.bak"), "(none)");
  EXPECT_EQ(gSymbolTableChanged, 1);
  EXPECT_EQ(gSegsChanged, 1);
}

// --- files that are missing or cannot be read --------------------------------------------------

TEST_F(PairTest, ADatabaseWithoutPicturesOpensAndGetsAFileAtTheFirstSave) {
  put("x.ddb", "fdec\n f ::= int ;\n;\n");
  Setup_Global_DDB_name("x");
  EXPECT_EQ(OpenDataBaseFile(), 1);
  EXPECT_EQ(files().size(), 1u);
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(get("x.seg"), "$$$$");
}

TEST_F(PairTest, MissingPicturesAreLookedForInTheBackup) {
  put("x.ddb", "fdec\n f ::= int ;\n;\n");
  put("x.seg.bak", kPicture);
  const auto before = files();
  Setup_Global_DDB_name("x");
  EXPECT_EQ(OpenDataBaseFile(), 0); // cancelled
  EXPECT_EQ(gDDB_basename, "");
  EXPECT_EQ(questions("x.seg is missing, but x.seg.bak holds pictures."), 1);
  CompleteDataBasePair();
  EXPECT_EQ(files(), before);
  console().choices = {1};
  Setup_Global_DDB_name("x");
  EXPECT_EQ(OpenDataBaseFile(), 1);
  EXPECT_EQ(pictures(), 1);
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(get("x.seg"), kPicture);
}

TEST_F(PairTest, AFailedOpeningLeavesNoCurrentDatabase) {
  put("x.seg", kPicture);
  for (const char *name : {"none", "x"}) {
    Setup_Global_DDB_name(name);
    EXPECT_EQ(OpenDataBaseFile(), 0);
    EXPECT_EQ(gDDB_basename, "");
    EXPECT_EQ(pictures(), 0);
  }
  EXPECT_EQ(files().size(), 1u);
  EXPECT_TRUE(said().ends_with("Failed to open x.ddb\nx database not opened\n")) << said();
}

// A pipe has no end until its other side gives it one: opening it would wait.
TEST_F(PairTest, APipeIsNoDatabaseAndHasNoPictures) {
  put("x.ddb", "fdec\n f ::= int ;\n;\n");
  for (const char *name : {"x.seg", "x.ddb"}) {
    fs::remove(name);
    ASSERT_EQ(mkfifo(name, 0600), 0);
    Setup_Global_DDB_name("x");
    EXPECT_EQ(OpenDataBaseFile(), 0);
    EXPECT_NE(console().notes.find(std::string(name) + ": Not a plain file"), std::string::npos);
  }
  EXPECT_EQ(fdb_open_db("x"), 0);
  EXPECT_EQ(pictures(), 0);
}

TEST_F(PairTest, ADeletedDatabaseIsWrittenAnewOnlyWhenTheUserWants) {
  CreateDataBase("x");
  fs::remove("x.ddb");
  EXPECT_EQ(fdb_commit_db(), 0);
  EXPECT_EQ(SaveDataBase(""), 0);
  EXPECT_EQ(questions("x.ddb is gone. Write it anew?"), 1);
  EXPECT_EQ(get("x.ddb"), "(none)");
  console().choices = {1};
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(get("x.ddb"), kEmptyText);
}

TEST_F(PairTest, AWriteProtectedFileIsAskedAbout) {
  CreateDataBase("x");
  fs::permissions("x.ddb", fs::perms(0444));
  load("fdec\n f ::= int ; ;\n");
  EXPECT_EQ(SaveDataBase(""), 0);
  EXPECT_EQ(questions("x.ddb is write-protected. Replace it?"), 1);
  EXPECT_EQ(get("x.ddb"), kEmptyText);
  console().choices = {1};
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(fs::status("x.ddb").permissions(), fs::perms(0444));
}

// A change within a second that keeps the length is one too, and a touched file is none.
TEST_F(PairTest, ChangesAreSeenByContent) {
  CreateDataBase("x");
  const std::string text = get("x.ddb");
  const auto time = fs::last_write_time("x.ddb");
  put("x.ddb", text.substr(0, text.size() - 1) + " ");
  fs::last_write_time("x.ddb", time);
  EXPECT_EQ(SaveDataBase(""), 0);
  EXPECT_EQ(questions("x.ddb was changed by another program."), 1);
  put("x.ddb", text);
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(questions("x.ddb was changed by another program."), 1);
}

// Pictures that were never in memory are not replaced by those that are.
TEST_F(PairTest, PicturesThatWereNotReadAreAskedAbout) {
  put("x.seg", kPicture);
  CreateDataBase("x");
  EXPECT_NE(said().find("Segment File x.seg already exists\n"), std::string::npos);
  EXPECT_EQ(SaveDataBase(""), 0);
  EXPECT_EQ(questions("x.seg was not read. Overwrite it?"), 1);
  EXPECT_EQ(get("x.seg"), kPicture);
  put("y.ddb", kEmptyText);
  reset();
  Setup_Global_DDB_name("y");
  EXPECT_EQ(OpenDataBaseFile(), 1);
  put("y.seg", kPicture); // by another program
  EXPECT_EQ(SaveDataBase(""), 0);
  EXPECT_EQ(questions("y.seg was not read. Overwrite it?"), 1);
  console().choices = {1};
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(get("y.seg.bak"), kPicture);
}

TEST_F(PairTest, IncludingKeepsTheCurrentName) {
  put("other.ddb", "fdec\n g ::= int ;\n;\n");
  put("other.seg", kPicture);
  CreateDataBase("x");
  gSymbolTableChanged = 0;
  gSegsChanged = 0;
  desktop().files = {"other.seg"};
  EXPECT_EQ(IncludeDataBase(), 1);
  EXPECT_EQ(gSymbolTableChanged, 1);
  EXPECT_EQ(gSegsChanged, 1);
  EXPECT_EQ(gDDB_basename, "x");
  EXPECT_EQ(pictures(), 1);
  EXPECT_NE(find_symbol("g", 0), nullptr);
  EXPECT_NE(said().find("New Orvek Code in Memory\n"), std::string::npos);
  EXPECT_EQ(IncludeDataBase(), 0); // no file chosen
}

// --- openings that are cut off -----------------------------------------------------------------

class CutOffTest : public PairTest {
protected:
  static constexpr int kFunctions = 400;

  void SetUp() override {
    PairTest::SetUp();
    std::string text = "fdec\n";
    for (int i = 0; i < kFunctions; ++i)
      text += " n" + std::to_string(i) + " ::= int ;\n";
    text += ";\nfdef\n";
    for (int i = 0; i < kFunctions; ++i)
      text += " n" + std::to_string(i) + " ::= #1 ;\n";
    put("x.ddb", text + ";\n");
    put("x.seg", kPicture);
  }
  void TearDown() override {
    console().interrupt_after = -1;
    event_countdown = 0;
    PairTest::TearDown();
  }
  // Runs a command that the user stops when it has gone `steps` steps.
  CommandEnd stopped_after(int steps, const Command &command) {
    console().clear();
    event_countdown = steps;
    console().interrupt_after = 0;
    const CommandEnd end = run_command(command);
    console().interrupt_after = -1;
    return end;
  }
  CommandEnd opened_until(int steps) {
    Setup_Global_DDB_name("x");
    return stopped_after(steps, OpenDataBaseFile);
  }
  static int functions() {
    int count = 0;
    for (int i = 0; i < kFunctions; ++i)
      count += find_symbol(("n" + std::to_string(i)).c_str(), 0) != nullptr ? 1 : 0;
    return count;
  }
  static bool nothing_is_open() {
    return Db_file == 0 && Db_f_name.empty() && gDDB_basename.empty();
  }
};

TEST_F(CutOffTest, AnInterruptAtAnyStepOfAnOpeningLeavesNothingOfIt) {
  int stopped = 0;
  for (int steps = 0;; steps += 97, ++stopped) {
    if (opened_until(steps) == CommandEnd::done)
      break;
    EXPECT_TRUE(said().ends_with("Query interrupted\n")) << steps << ": " << said();
    EXPECT_EQ(console().messages, "x.ddb is not open; nothing of it is kept\n") << steps;
    ASSERT_TRUE(nothing_is_open()) << steps;
    EXPECT_EQ(functions() + pictures(), 0) << steps;
    EXPECT_EQ(gSymbolTableChanged + gSegsChanged, 0) << steps;
  }
  EXPECT_GT(stopped, 5);
  EXPECT_EQ(gDDB_basename, "x");
  EXPECT_EQ(functions(), kFunctions);
  EXPECT_EQ(pictures(), 1);
}

TEST_F(CutOffTest, WhatTheUserHadStaysAndIsToldAsUnsaved) {
  add_picture("mine");
  gSegsChanged = 0;
  EXPECT_EQ(opened_until(kFunctions), CommandEnd::interrupted);
  EXPECT_EQ(console().messages, "x.ddb was read in part; what was read of it stays in memory\n");
  EXPECT_EQ(pictures(), 2);
  EXPECT_GT(functions(), 0);
  EXPECT_TRUE(nothing_is_open());
  EXPECT_EQ(gSymbolTableChanged, 1);
  EXPECT_EQ(gSegsChanged, 1);
}

TEST_F(CutOffTest, AnIncludeThatIsStoppedSaysSoAndLeavesTheDatabaseOpen) {
  CreateDataBase("own");
  gSymbolTableChanged = 0;
  gSegsChanged = 0;
  EXPECT_EQ(stopped_after(kFunctions, [] { return IncludeDataBaseFile("x"); }),
            CommandEnd::interrupted);
  EXPECT_EQ(console().messages, "x.ddb was read in part; what was read of it stays in memory\n");
  EXPECT_EQ(gDDB_basename, "own");
  EXPECT_EQ(Db_f_name, "own.ddb");
  EXPECT_EQ(gSymbolTableChanged, 1);
  EXPECT_EQ(gSegsChanged, 1);
}

// Reading looks at the key only now and then, so the files are long.
TEST_F(CutOffTest, AReadingThatIsStoppedBringsNothing) {
  for (const char *ending : {"ddb", "seg"}) {
    SCOPED_TRACE(ending);
    const std::string name = std::string("x.") + ending;
    const std::string text = get(name);
    put(name, text + std::string(8 << 20, '\n'));
    EXPECT_EQ(opened_until(1 << 30), CommandEnd::interrupted);
    EXPECT_NE(said().find(name), std::string::npos) << said();
    EXPECT_TRUE(said().ends_with("Query interrupted\n")) << said();
    EXPECT_TRUE(nothing_is_open());
    EXPECT_EQ(functions() + pictures(), 0);
    put(name, text);
  }
}

TEST_F(CutOffTest, ADatabaseThatRanOutOfSpaceIsNotForgottenAgainOnceItIsOpen) {
  int tries = 0;
  const Command command = [&tries] {
    OpeningGuard opening("x.ddb", OpeningGuard::Means::open);
    load("fdec\n n0 ::= int ; ;\n");
    if (++tries == 1)
      error_exit("Insufficient Query Space\n");
    opening.done();
    return 1;
  };
  EXPECT_EQ(run_command(command, command), CommandEnd::done);
  EXPECT_EQ(tries, 2);
  EXPECT_EQ(functions(), 1);
}

TEST_F(PairTest, CommitCloseForgetsEverythingItSaved) {
  CreateDataBase("x");
  load("fdec\n f ::= int ; ;\n");
  EXPECT_EQ(CommitClose(), 1);
  EXPECT_EQ(gDDB_basename, "");
  EXPECT_EQ(Db_file, 0);
  EXPECT_EQ(find_symbol("f", 0), nullptr);
  EXPECT_NE(get("x.ddb").find("\tf ::= int ;\n"), std::string::npos);
}

TEST_F(PairTest, TheSaveQuestionIsAskedOnlyForChangesAndWithTwoDocuments) {
  CreateDataBase("x");
  gSymbolTableChanged = gSegsChanged = 0;
  gNumDocuments = 2;
  EXPECT_EQ(SaveDBChanges("Untitled1"), 1);
  load("fdec\n f ::= int ; ;\n");
  gNumDocuments = 1;
  EXPECT_EQ(SaveDBChanges("Untitled1"), 1);
  EXPECT_EQ(questions(""), 0);
  gNumDocuments = 2;
  console().choices = {5, kNo, kYes};
  EXPECT_EQ(SaveDBChanges("Untitled1"), 0);
  EXPECT_EQ(SaveDBChanges("Untitled1"), 1);
  EXPECT_EQ(get("x.ddb"), kEmptyText);
  EXPECT_EQ(SaveDBChanges("Untitled1"), 1);
  EXPECT_EQ(questions("Save Changes to Database:\\n x?"), 3);
  EXPECT_NE(get("x.ddb").find("\tf ::= int ;\n"), std::string::npos);
  EXPECT_TRUE(said().ends_with("\nAll files saved\n"));
}

TEST_F(PairTest, ASaveThatFailsIsNotTakenForOneThatWorked) {
  CreateDataBase("x");
  load("fdec\n f ::= int ; ;\n");
  fs::remove("x.ddb.bak");
  fs::create_directories("x.ddb.bak/inside");
  gNumDocuments = 2;
  console().choices = {kYes, 5};
  EXPECT_EQ(SaveDBChanges("Untitled1"), 0);
  EXPECT_NE(find_symbol("f", 0), nullptr);
  console().choices = {kYes, 1};
  EXPECT_EQ(SaveDBChanges("Untitled1"), 1);
  EXPECT_EQ(questions("The changes are not saved."), 2);
}

TEST_F(PairTest, ATextOpenedWithoutItsPicturesIsSavedWithoutThem) {
  put("x.ddb", "fdec\n f ::= int ;\n;\n");
  put("x.seg", kPicture);
  fdb_open_db("x");
  load("fdec\n g ::= int ; ;\n");
  EXPECT_EQ(SaveDataBase("Untitled1"), 1);
  EXPECT_EQ(get("x.seg"), kPicture);
  EXPECT_NE(get("x.ddb").find("\tg ::= int ;\n"), std::string::npos);
}

TEST_F(PairTest, APairIsCompletedWhenTheProgramEnds) {
  CreateDataBase("x");
  fs::remove("x.seg");
  put("x.segs", "$$$$");
  CompleteDataBasePair();
  EXPECT_EQ(get("x.seg"), "(none)");
  fs::remove("x.segs");
  CompleteDataBasePair();
  EXPECT_EQ(get("x.seg"), "$$$$");
  reset();
  fs::remove("x.seg");
  CompleteDataBasePair();
  EXPECT_EQ(get("x.seg"), "(none)");
}

// --- copies ------------------------------------------------------------------------------------

class DbCopies : public PairTest {
protected:
  void SetUp() override {
    PairTest::SetUp();
    put("x.ddb", "tdec\n\n;\n" + long_line_ + "\n");
    put("x.seg", "one\n$$$$");
    Setup_Global_DDB_name("x.ddb");
  }
  const std::string long_line_ = std::string(3000, 'l');
};

TEST_F(DbCopies, OfThisMachineIsTheSame) {
  console().choices = {2};
  BackupDataBase();
  EXPECT_EQ(said(), "Saving a copy as x.2\nDataBase Copy Saved\n");
  EXPECT_EQ(get("x.2.ddb"), get("x.ddb"));
  EXPECT_EQ(get("x.2.seg"), "one\n$$$$");
}

TEST_F(DbCopies, ForTheMacEndsEveryLineInACarriageReturn) {
  console().choices = {1};
  BackupDataBase();
  EXPECT_EQ(said(), "Saving a copy as xMAC\nDataBase Copy Saved\n");
  EXPECT_EQ(get("xMAC.ddb"), "tdec\r\r;\r" + long_line_ + "\r");
  EXPECT_EQ(get("xMAC.seg"), "one\r$$$$\r");
}

TEST_F(DbCopies, IsTakenBackByCancel) {
  BackupDataBase();
  EXPECT_EQ(said(), "");
  EXPECT_EQ(files().size(), 2u);
}

TEST_F(DbCopies, StopsAtAFileThatCannotBeReadOrWritten) {
  fs::remove("x.seg");
  EXPECT_EQ(DataBaseCopy(), 0);
  EXPECT_TRUE(said().ends_with("Can't open x.seg for read\n"));
  EXPECT_EQ(get("x.2.ddb"), get("x.ddb"));
  fs::create_directories("xMAC.ddb");
  EXPECT_EQ(MacFormat(), 0);
  EXPECT_NE(said().find("Can't open xMAC.ddb for write: Error "), std::string::npos);
  fs::remove("x.2.ddb");
  fs::create_directories("x.2.ddb");
  EXPECT_EQ(PCFormat(), 0);
  EXPECT_TRUE(said().ends_with("Can't open x.2.ddb for write\n"));
}

TEST_F(PairTest, TheOlderBackupSavesThePicturesBesideTheText) {
  gDDB_basename = "old";
  add_picture("f");
  EXPECT_EQ(oldBackupDataBase(), 1);
  EXPECT_EQ(get("old.seg"), kPicture);
  EXPECT_EQ(said(), "Picture segments saved in file old.seg\n");
}

} // namespace
