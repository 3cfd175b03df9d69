// A save that is stopped or fails at any step leaves a whole version of both files under their
// names or their backups, and nothing that was saved before is lost.
#include "unit/db/db_kit.h"

#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>

#include "editor/model/vel_segs.h"

using namespace velora;
using namespace velora::db_test;

namespace {

int steps_seen = 0;
int step_wanted = 0;

int stop_there(FileStep, std::size_t) {
  if (steps_seen++ == step_wanted)
    _exit(9);
  return -1;
}

int fail_there(FileStep, std::size_t) {
  return steps_seen++ == step_wanted ? 0 : -1;
}

class SaveFaults : public DbTest {
protected:
  void SetUp() override {
    DbTest::SetUp();
    gFileChunk = 512;
    CreateDataBase("x");
    load(functions("old", 40));
    ASSERT_EQ(SaveDataBase(""), 1);
    old_text_ = get("x.ddb");
    old_seg_ = get("x.seg");
    load(functions("new", 40));
    add_picture();
    new_text_ = database_text();
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
  // The version of a file that counts after an accident.
  static std::string standing(const std::string &name) {
    return file_exists(name) ? get(name) : get(name + ".bak");
  }
  [[nodiscard]] bool all_is_whole() const {
    const std::string text = standing("x.ddb");
    const std::string seg = standing("x.seg");
    return (text == old_text_ || text == new_text_) && (seg == old_seg_ || seg == kNewSeg);
  }
  // What was read is the whole old or the whole new version, pictures included.
  [[nodiscard]] bool database_is_one_of_two() const {
    const bool new_text = find_symbol("new39", 0) != nullptr;
    const bool new_picture = gWinInfo != nullptr;
    return find_symbol("old39", 0) != nullptr && (new_picture || !new_text);
  }
  // Puts the files back as they were before the save.
  void restore_files() const {
    for (const auto &[name, content] : files())
      fs::remove_all(name);
    put("x.ddb", old_text_);
    put("x.seg", old_seg_);
  }

  const std::string kNewSeg = "new0 0 1 1 12\nlabel 1 2 0 0 0 0 0\n\n\n$$$$";
  std::string old_text_;
  std::string old_seg_;
  std::string new_text_;
};

// Runs `save` in a process of its own and answers how it ended.
template <class Save> int in_child(Save save) {
  const pid_t child = fork();
  if (child == 0) {
    save();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

TEST_F(SaveFaults, AStopAtAnyStepLeavesWholeFiles) {
  int stops = 0;
  for (step_wanted = 0; step_wanted < 200; ++step_wanted) {
    const int status = in_child([this] {
      console().choices = {1, 1, 1, 1}; // the files put back count as changed
      steps_seen = 0;
      gFileFault = stop_there;
      SaveDataBase("");
    });
    ASSERT_TRUE(all_is_whole()) << "stopped at step " << step_wanted;
    const int opened = in_child([this] {
      reset();
      Setup_Global_DDB_name("x");
      _exit(OpenDataBaseFile() != 0 && database_is_one_of_two() ? 0 : 1);
    });
    EXPECT_EQ(WEXITSTATUS(opened), 0) << "opened after a stop at step " << step_wanted;
    EXPECT_TRUE(file_exists("x.ddb") && file_exists("x.seg"));
    restore_files();
    if (WEXITSTATUS(status) == 0)
      break;
    ++stops;
  }
  EXPECT_GT(stops, 15); // both files: open, several writes, sync, close, renames
}

TEST_F(SaveFaults, AFailureAtAnyStepIsToldAndTheNextSaveSavesAll) {
  int failures = 0;
  for (step_wanted = 0; step_wanted < 200; ++step_wanted) {
    console().choices = {1, 1, 1, 1};
    steps_seen = 0;
    gFileFault = fail_there;
    console().clear();
    const int saved = SaveDataBase("");
    gFileFault = nullptr;
    const bool fault_met = steps_seen > step_wanted;
    ASSERT_TRUE(all_is_whole()) << "failed at step " << step_wanted;
    if (saved == 0) {
      ++failures;
      EXPECT_TRUE(said().find("Unable to save graphs\n") != std::string::npos ||
                  said().find("Graphs saved but not DataBase\n") != std::string::npos);
      console().choices = {1, 1, 1, 1};
      ASSERT_EQ(SaveDataBase(""), 1) << "after the failure at step " << step_wanted;
    }
    EXPECT_EQ(get("x.ddb"), new_text_);
    EXPECT_EQ(get("x.seg"), kNewSeg);
    restore_files();
    if (!fault_met)
      break;
  }
  EXPECT_GT(failures, 10);
}

TEST_F(SaveFaults, AFileSizeLimitLeavesTheOldFiles) {
  const int status = in_child([this] {
    const rlimit limit{100, 100};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_IGN);
    const int saved = SaveDataBase("");
    _exit(saved != 0 ? 3 : said().find("Graphs saved but not DataBase\n") != std::string::npos);
  });
  EXPECT_EQ(WEXITSTATUS(status), 1);
  EXPECT_EQ(get("x.ddb"), old_text_);
  EXPECT_EQ(files().count("x.ddb.new"), 0u);
}

TEST_F(SaveFaults, AFolderThatMayNotBeWrittenKeepsItsFiles) {
  const auto before = files();
  fs::permissions(".", fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                           fs::perms::others_exec);
  const int status = in_child([this] {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setuid(kNobody) != 0) // whoever may do everything cannot be refused
      _exit(9);
    const bool told = SaveDataBase("") == 0 && said().ends_with("Unable to save graphs\n") &&
                      fdb_commit_db() == 0 &&
                      said().ends_with("Can't remove old backup file x.ddb.bak\n");
    _exit(told && find_symbol("new39", 0) != nullptr ? 0 : 1);
  });
  fs::permissions(".", fs::perms::owner_all);
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(files(), before);
}

TEST_F(SaveFaults, AKillAtAnyMomentLeavesWholeFiles) {
  constexpr int kKills = 60;
  int killed = 0;
  for (int i = 0; i < kKills; ++i) {
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
    ASSERT_TRUE(all_is_whole()) << "kill " << i;
    restore_files();
  }
  EXPECT_EQ(killed, kKills);
}

} // namespace
