// Every call that touches a file is made to fail once, and the program is ended before each, while
// a database is opened, saved, committed, closed and copied. After each trial opening gives the
// whole old or the whole new pair, and what failed is told and can be done again.
//
// Ordinary runs try every seventh call; with VELORA_ALL_FAULTS set all of them are tried.
#include "unit/db/db_kit.h"

#include <sys/resource.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "editor/model/vel_segs.h"

using namespace velora;
using namespace velora::db_test;

namespace {

// What is done to the call number `wanted`: it fails with `error`, or the process ends for 0.
struct Trial {
  int wanted = 0;
  int error = 0;
};
Trial trial;
int calls_seen = 0;

constexpr int kKilled = 9;

// So many that a text is written in several pieces.
constexpr int kFunctions = 12;
constexpr const char *kLastOld = "old11";
constexpr const char *kLastNew = "new11";

FileFault act(FileStep, std::size_t bytes) {
  if (calls_seen++ != trial.wanted)
    return {};
  if (trial.error == 0)
    _exit(kKilled);
  return {trial.error, bytes / 2};
}

int stride() {
  return std::getenv("VELORA_ALL_FAULTS") != nullptr ? 1 : 7;
}

// Runs `work` in a process of its own; its answer is the exit status.
template <class Work> int in_child(Work work) {
  const pid_t child = fork();
  if (child == 0)
    _exit(work());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
}

class SaveFaults : public DbTest {
protected:
  enum Opened { kOldPair, kNewPair, kNeither };

  void SetUp() override {
    DbTest::SetUp();
    gFileChunk = 512;
    CreateDataBase("x");
    load(functions("old", kFunctions));
    ASSERT_EQ(SaveDataBase(""), 1);
    old_ = files();
    load(functions("new", kFunctions));
    add_picture();
    new_text_ = database_text();
    new_pictures_ = pictures_text();
    console().clear();
  }
  static std::string functions(const std::string &name, int count) {
    std::string text = "fdec\n";
    for (int i = 0; i < count; ++i)
      text += name + std::to_string(i) + " ::= int -> int ;\n";
    text += ";\nfdef\n";
    for (int i = 0; i < count; ++i)
      text += name + std::to_string(i) + " ?0 ::= " + name + "0 ?0 ;\n";
    return text + ";\n";
  }
  static void add_picture() {
    WinInfo *wi = nullptr;
    NewWinInfo(0, kFunctionPicture, &wi);
    wi->name = "new0";
    wi->cmpnt = 0;
    Segm *box = extra_segment(wi);
    box->type = kBox;
    box->segnum = 1;
    box->label = "label";
  }
  void restore_files() const {
    forget_state();
    for (const auto &[name, content] : files())
      fs::remove_all(name);
    for (const auto &[name, content] : old_)
      put(name, content);
  }
  // Opens what stands in a fresh process, and answers which pair it is. `text_alone`: the pictures
  // were not to be saved.
  int opened(bool text_alone) {
    return in_child([&] {
      gFileFault = nullptr;
      reset();
      Setup_Global_DDB_name("x");
      if (OpenDataBaseFile() == 0 || find_symbol(kLastOld, 0) == nullptr)
        return kNeither;
      const bool new_text =
          find_symbol("new0", 0) != nullptr && find_symbol(kLastNew, 0) != nullptr;
      const bool any_new = find_symbol("new0", 0) != nullptr || find_symbol(kLastNew, 0) != nullptr;
      const bool new_picture = gWinInfo != nullptr;
      if (new_text != any_new || (!text_alone && new_text != new_picture))
        return kNeither;
      return new_text ? kNewPair : kOldPair;
    });
  }
  // Nothing but the pair, its backups and the lock may be left once a later save has worked.
  static bool is_tidy() {
    for (const auto &entry : fs::directory_iterator(".")) {
      const std::string name = entry.path().filename().string();
      if (name.starts_with(".") && name != ".x.lock")
        return false;
    }
    return true;
  }

  // True when the files are both old or both new.
  bool is_whole(bool text_alone) {
    const std::string text = get("x.ddb");
    const std::string pictures = get("x.seg");
    const std::string &new_pictures = text_alone ? old_.at("x.seg") : new_pictures_;
    return (text == old_.at("x.ddb") && pictures == old_.at("x.seg")) ||
           (text == new_text_ && pictures == new_pictures);
  }
  enum Ended { kDone = 1, kRepaired, kNotMet, kUnfinished, kFault };
  // One trial in a process of its own. A call that fails is told; then the files are whole, unless
  // a marker leaves them to the next opening, and saving once more works.
  Ended attempt(const std::function<int()> &work, bool text_alone) {
    console().choices.assign(20, 1);
    calls_seen = 0;
    gFileFault = act;
    const bool done = work() != 0;
    gFileFault = nullptr;
    if (calls_seen <= trial.wanted)
      return kNotMet;
    if (file_exists(".x.save"))
      return kUnfinished;
    if (!is_whole(text_alone) || (done && get("x.ddb") != new_text_))
      return kFault;
    if (done)
      return kDone;
    console().choices.assign(20, 1);
    return SaveDataBase("") == 1 && get("x.ddb") == new_text_ && is_tidy() ? kRepaired : kFault;
  }

  // Makes the calls of `work` fail one after the other, in each way. `work` answers 1 when it says
  // that it succeeded.
  void try_all(const char *what, const std::function<int()> &work, bool text_alone = false) {
    int trials = 0;
    for (const int error : {0, ENOSPC, EIO, EACCES}) {
      for (int wanted = 0; wanted < 400; wanted += stride()) {
        restore_files();
        trial = {wanted, error};
        const int answer = in_child([&] { return attempt(work, text_alone); });
        if (answer == kNotMet)
          break;
        ++trials;
        const std::string where = std::string(what) + ", call " + std::to_string(wanted) +
                                  ", error " + std::to_string(error);
        ASSERT_TRUE(answer == kKilled || (answer >= kDone && answer <= kUnfinished))
            << where << ": " << answer;
        if (answer == kKilled || answer == kUnfinished) {
          ASSERT_NE(opened(text_alone), kNeither) << where;
        }
      }
    }
    EXPECT_GT(trials, 0) << what;
    std::printf("%s: %d trials\n", what, trials);
  }

  std::map<std::string, std::string> old_;
  std::string new_text_;
  std::string new_pictures_;
};

TEST_F(SaveFaults, ASaveOfBothFilesIsWholeOrNotAtAll) {
  try_all("save", [] { return SaveDataBase(""); });
}

TEST_F(SaveFaults, ACommitOfTheTextIsWholeOrNotAtAll) {
  try_all(
      "commit", [] { return fdb_commit_db(); }, true);
}

TEST_F(SaveFaults, ClosingWithASaveIsWholeOrNotAtAll) {
  try_all("close", [] { return CommitClose() == 0 ? 0 : 1; });
}

// The copies are whole or absent, whatever happens; the pair stays as it is.
TEST_F(SaveFaults, CopiesAreWholeOrAbsent) {
  int trials = 0;
  for (const int error : {0, ENOSPC, EIO, EACCES}) {
    int answer = 1;
    for (int wanted = 0; answer != 3; wanted += stride()) {
      restore_files();
      answer = in_child([&] {
        trial = {wanted, error};
        calls_seen = 0;
        gFileFault = act;
        const int done = DataBaseCopy();
        gFileFault = nullptr;
        return calls_seen <= wanted ? 3 : done != 0 ? 1 : 2;
      });
      const std::string text = get("x.2.ddb");
      const std::string pictures = get("x.2.seg");
      ASSERT_TRUE(text == "(none)" || text == old_["x.ddb"]) << wanted << ' ' << error;
      ASSERT_TRUE(pictures == "(none)" || pictures == old_["x.seg"]) << wanted << ' ' << error;
      ASSERT_EQ(get("x.ddb"), old_["x.ddb"]);
      trials += answer != 3 ? 1 : 0;
    }
    EXPECT_EQ(get("x.2.seg"), old_["x.seg"]);
  }
  std::printf("copy: %d trials\n", trials);
}

// What cannot be read is no empty database, and no name for a later save.
TEST_F(SaveFaults, AnOpeningReadsAllOrSaysThatItCannot) {
  int trials = 0;
  for (const int error : {ENOSPC, EIO, EACCES}) {
    for (int wanted = 0;; ++wanted) {
      const int answer = in_child([&] {
        reset();
        Setup_Global_DDB_name("x");
        trial = {wanted, error};
        calls_seen = 0;
        gFileFault = act;
        const int done = OpenDataBaseFile();
        gFileFault = nullptr;
        if (calls_seen <= wanted)
          return 3;
        if (done != 0)
          return find_symbol(kLastOld, 0) != nullptr ? 1 : 6;
        return gDDB_basename.empty() && Db_file == 0 && find_symbol("old0", 0) == nullptr &&
                       console().text.find("Loaded") == std::string::npos
                   ? 2
                   : 7;
      });
      ASSERT_TRUE(answer >= 1 && answer <= 3) << wanted << ' ' << error << ": " << answer;
      EXPECT_EQ(files(), old_);
      if (answer == 3)
        break;
      ++trials;
    }
  }
  std::printf("open: %d trials\n", trials);
}

// A save that was cut off is finished by the next opening; one that was cut off in turn too.
TEST_F(SaveFaults, FinishingACutOffSaveCanBeCutOffToo) {
  std::set<int> pairs;
  int trials = 0;
  for (int first = 0; first < 200; first += stride()) {
    int saving = 0;
    for (int second = 0; second < 40; second += 3) {
      restore_files();
      saving = in_child([&] {
        console().choices.assign(20, 1);
        trial = {first, 0};
        calls_seen = 0;
        gFileFault = act;
        return SaveDataBase("") != 0 ? 3 : 4;
      });
      const bool unfinished = file_exists(".x.save");
      const int opening = in_child([&] {
        reset();
        Setup_Global_DDB_name("x");
        trial = {second, 0};
        calls_seen = 0;
        gFileFault = act;
        return OpenDataBaseFile() != 0 ? 3 : 4;
      });
      const int pair = opened(false);
      ASSERT_NE(pair, kNeither) << first << ' ' << second;
      EXPECT_FALSE(file_exists(".x.save"));
      if (unfinished) {
        EXPECT_EQ(pair, kNewPair) << first << ' ' << second;
      }
      pairs.insert(pair);
      ++trials;
      if (opening == 3 || !unfinished)
        break;
    }
    if (saving == 3)
      break;
  }
  EXPECT_EQ(pairs.size(), 2u);
  std::printf("save and opening cut off: %d trials\n", trials);
}

// Another program was killed between the two renames. Who copies, exports or commits now must not
// take the new pictures with the old text.
TEST_F(SaveFaults, WhoeverComesNextFinishesAHalfFinishedSave) {
  const auto is_mixed = [this] {
    return get("x.seg") == new_pictures_ && get("x.ddb") == old_.at("x.ddb");
  };
  const std::function<int()> comers[] = {[] { return DataBaseCopy(); },
                                         [] { return fdb_commit_db(); }};
  for (const auto &comer : comers) {
    restore_files();
    for (int wanted = 0; wanted < 400 && !is_mixed(); ++wanted) {
      restore_files();
      trial = {wanted, 0};
      in_child([this] {
        console().choices.assign(20, 1);
        calls_seen = 0;
        gFileFault = act;
        return SaveDataBase("");
      });
    }
    ASSERT_TRUE(is_mixed() && file_exists(".x.save"));
    comer();
    EXPECT_FALSE(file_exists(".x.save"));
    EXPECT_EQ(get("x.seg"), new_pictures_);
    EXPECT_EQ(get("x.ddb"), new_text_);
  }
}

// The first new file cannot take its name and nothing can be removed, so that the save is taken
// back but its marker stays.
TEST_F(SaveFaults, ASaveFinishedLaterKeepsTheVersionBeforeIt) {
  restore_files();
  console().choices.assign(20, 1);
  static int renames = 0;
  renames = 0;
  gFileFault = [](FileStep step, std::size_t) {
    constexpr int kFirstName = 3; // behind the marker and two backups
    const bool fails =
        step == FileStep::rename ? renames++ == kFirstName : step == FileStep::remove;
    return FileFault{fails ? EIO : 0, 0};
  };
  EXPECT_EQ(SaveDataBase(""), 0);
  gFileFault = nullptr;
  EXPECT_NE(console().messages.find("the save is not finished"), std::string::npos);
  EXPECT_EQ(get("x.ddb"), old_.at("x.ddb"));
  ASSERT_TRUE(file_exists(".x.save"));
  EXPECT_EQ(opened(false), kNewPair);
  EXPECT_EQ(get("x.ddb.bak"), old_.at("x.ddb"));
  EXPECT_EQ(get("x.seg.bak"), old_.at("x.seg"));
  EXPECT_TRUE(is_tidy());
}

TEST_F(SaveFaults, AMarkerThatDoesNotFitIsAskedAboutAndTouchesNothing) {
  ASSERT_EQ(SaveDataBase(""), 1);
  put(".x.save", "velora save 1\ntoken 0123456789abcdef\nsum 0\n");
  const auto before = files();
  reset();
  Setup_Global_DDB_name("x");
  EXPECT_EQ(OpenDataBaseFile(), 0); // cancelled
  EXPECT_EQ(questions("Go on with the files of x as they are?"), 1);
  EXPECT_EQ(files(), before);
  console().choices = {1};
  Setup_Global_DDB_name("x");
  EXPECT_EQ(OpenDataBaseFile(), 1);
  EXPECT_EQ(files(), before);
}

TEST_F(SaveFaults, WhatAKilledSaveLeftBesideGoesWithTheNextSave) {
  put(".x.ddb.0123456789abcdef.new", "half");
  put(".x.seg.0123456789abcdef.old", "$$$$");
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_TRUE(is_tidy());
  put(".x.ddb.mine.new", "no name of ours");
  put(".y.ddb.0123456789abcdef.new", "another database's");
  console().choices.assign(20, 1);
  EXPECT_EQ(SaveDataBase(""), 1);
  EXPECT_EQ(get(".x.ddb.mine.new") + get(".y.ddb.0123456789abcdef.new"),
            "no name of oursanother database's");
}

TEST_F(SaveFaults, AnotherProgramThatIsSavingIsWaitedForOrTold) {
  const FileLock other(".x.lock");
  ASSERT_TRUE(other.held());
  EXPECT_EQ(SaveDataBase(""), 0);
  EXPECT_NE(console().messages.find("Another program is saving x.ddb"), std::string::npos);
  EXPECT_EQ(gSymbolTableChanged + gSegsChanged, 2);
  EXPECT_EQ(fdb_commit_db(), 0);
  EXPECT_EQ(files(), old_);
}

// In a folder that several users share, the one who comes second cannot write the lock's file.
TEST_F(SaveFaults, TheLockOfAnotherUserCounts) {
  fs::permissions(".x.lock", fs::perms(0444));
  const FileLock other(".x.lock");
  ASSERT_TRUE(other.held());
  const int status = in_child([] {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setuid(kNobody) != 0)
      return 9;
    return FileLock(".x.lock").busy() ? 1 : 2;
  });
  EXPECT_EQ(status, 1);
}

TEST_F(SaveFaults, AFileSizeLimitLeavesTheOldFiles) {
  const int status = in_child([this] {
    const rlimit limit{100, 100};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_IGN);
    const int saved = SaveDataBase("");
    return saved != 0 ? 3
           : said().ends_with("Unable to save graphs\n") && gSymbolTableChanged != 0 &&
                   console().notes.find("x.ddb: File too large") != std::string::npos
               ? 1
               : 2;
  });
  EXPECT_EQ(status, 1);
  EXPECT_EQ(files(), old_);
}

TEST_F(SaveFaults, AFolderThatMayNotBeWrittenKeepsItsFiles) {
  fs::permissions(".", fs::perms(0555));
  const int status = in_child([this] {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setuid(kNobody) != 0) // whoever may do everything cannot be refused
      return 9;
    const bool told = SaveDataBase("") == 0 && said().ends_with("Unable to save graphs\n") &&
                      fdb_commit_db() == 0 &&
                      said().ends_with("Can't remove old backup file x.ddb.bak\n") &&
                      console().notes.find("./: Permission denied") != std::string::npos;
    return told && find_symbol(kLastNew, 0) != nullptr ? 0 : 1;
  });
  fs::permissions(".", fs::perms::owner_all);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(files(), old_);
}

TEST_F(SaveFaults, AKillAtAnyMomentLeavesAWholePair) {
  const int kills = stride() == 1 ? 100 : 20;
  int killed = 0;
  for (int i = 0; i < kills; ++i) {
    restore_files();
    const pid_t child = fork();
    if (child == 0) {
      gFileChunk = 32;
      for (;;) {
        console().choices = {1, 1};
        SaveDataBase("");
      }
    }
    usleep(static_cast<useconds_t>(300 + i * 170));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    killed += WIFSIGNALED(status) ? 1 : 0;
    ASSERT_NE(opened(false), kNeither) << "kill " << i;
  }
  EXPECT_EQ(killed, kills);
}

} // namespace
