// A replaced file is whole at every instant: stopped at every step in turn, as by a crash, and
// failed at every step in turn, as by a full disk.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "platform/safe_file.h"

using namespace velora;

namespace {

namespace fs = std::filesystem;

const std::string kOlder = "older\n";
const std::string kOld = std::string(300, 'o') + "\n";
const std::string kNew = std::string(500, 'n') + "\n";

int steps_seen = 0;
int step_wanted = 0;
int bytes_allowed = 0;

int stop_there(FileStep, std::size_t) {
  if (steps_seen++ == step_wanted)
    _exit(9);
  return -1;
}

int fail_there(FileStep, std::size_t) {
  return steps_seen++ == step_wanted ? bytes_allowed : -1;
}

class SafeFileTest : public testing::Test {
protected:
  void SetUp() override {
    folder = fs::temp_directory_path() / ("velora_safe_" + std::to_string(getpid()));
    fs::create_directories(folder);
    name = (folder / "x.ddb").string();
    gFileChunk = 64;
    put(name + ".bak", kOlder);
    put(name, kOld);
  }
  void TearDown() override {
    gFileFault = nullptr;
    gFileChunk = 65536;
    fs::permissions(folder, fs::perms::owner_all);
    fs::remove_all(folder);
  }
  static void put(const std::string &file, const std::string &text) {
    std::ofstream(file, std::ios::binary) << text;
  }
  static std::string get(const std::string &file) {
    std::string text;
    return read_whole_file(file, text) ? text : "(none)";
  }
  SaveOutcome save() const {
    SafeFile out(name);
    out.open();
    out.write(kNew.substr(0, 100));
    out.printf("%s", kNew.substr(100).c_str());
    return out.replace();
  }
  [[nodiscard]] bool whole_version_stands() const {
    const std::string now = get(name);
    const std::string kept = get(name + ".bak");
    return now == kOld || now == kNew || (now == "(none)" && kept == kOld);
  }

  fs::path folder;
  std::string name;
};

TEST_F(SafeFileTest, TheOldFileBecomesTheBackup) {
  EXPECT_EQ(save(), SaveOutcome::saved);
  EXPECT_EQ(get(name), kNew);
  EXPECT_EQ(get(name + ".bak"), kOld);
  EXPECT_FALSE(file_exists(name + ".new"));
}

TEST_F(SafeFileTest, AMissingFileIsMadeAndTheBackupStays) {
  fs::remove(name);
  EXPECT_EQ(save(), SaveOutcome::saved);
  EXPECT_EQ(get(name), kNew);
  EXPECT_EQ(get(name + ".bak"), kOlder);
}

TEST_F(SafeFileTest, ALinkStaysAndItsFileIsReplaced) {
  const std::string first = (folder / "first.ddb").string();
  const std::string second = (folder / "second.ddb").string();
  fs::create_symlink("x.ddb", second);
  fs::create_symlink(second, first);
  SafeFile out(first);
  out.open();
  out.write(kNew);
  EXPECT_EQ(out.replace(), SaveOutcome::saved);
  EXPECT_TRUE(fs::is_symlink(first) && fs::is_symlink(second));
  EXPECT_EQ(get(name), kNew);
  EXPECT_EQ(get(name + ".bak"), kOld);
  fs::rename(name, name + ".new"); // cut off between the renames
  EXPECT_TRUE(complete_replacement(first));
  EXPECT_EQ(get(first), kNew);
}

TEST_F(SafeFileTest, APipeIsWrittenToAsItIs) {
  const std::string pipe = (folder / "pipe").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  SafeFile out(pipe);
  out.open();
  out.write("text");
  EXPECT_EQ(out.replace(), SaveOutcome::saved);
  char got[8] = {};
  EXPECT_EQ(read(reader, got, sizeof got), 4);
  close(reader);
  EXPECT_STREQ(got, "text");
  EXPECT_TRUE(fs::is_fifo(pipe));
  EXPECT_FALSE(file_exists(pipe + ".new") || file_exists(pipe + ".bak"));
}

TEST_F(SafeFileTest, StoppedAtEveryStepAWholeVersionStands) {
  int stopped = 0;
  for (step_wanted = 0; step_wanted < 100; ++step_wanted) {
    SetUp();
    const pid_t child = fork();
    if (child == 0) {
      steps_seen = 0;
      gFileFault = stop_there;
      save();
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(whole_version_stands()) << "step " << step_wanted;
    if (WEXITSTATUS(status) == 0)
      break;
    ++stopped;
  }
  // One open, eight writes, one sync, one close and two renames.
  EXPECT_EQ(stopped, 13);
  EXPECT_EQ(get(name), kNew);
}

TEST_F(SafeFileTest, KilledAtAnyMomentAWholeVersionStands) {
  for (int round = 0; round < 40; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      for (;;)
        save();
    }
    usleep(static_cast<useconds_t>(500 + 700 * (round % 10)));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string now = get(name);
    const std::string kept = get(name + ".bak");
    EXPECT_TRUE(now == kOld || now == kNew || (now == "(none)" && (kept == kOld || kept == kNew)))
        << round;
    put(name, kOld);
  }
}

TEST_F(SafeFileTest, FailedAtEveryStepNothingIsLost) {
  for (const int allowed : {0, 10}) {
    bytes_allowed = allowed;
    int failures = 0;
    for (step_wanted = 0; step_wanted < 100; ++step_wanted) {
      SetUp();
      steps_seen = 0;
      gFileFault = fail_there;
      const SaveOutcome outcome = save();
      gFileFault = nullptr;
      EXPECT_FALSE(file_exists(name + ".new")) << "step " << step_wanted;
      if (steps_seen <= step_wanted)
        break;
      if (outcome != SaveOutcome::saved) {
        EXPECT_EQ(get(name), kOld) << "step " << step_wanted;
        ++failures;
      } else {
        // Only the first rename may fail unnoticed: it is tried again without the old backup.
        EXPECT_EQ(get(name), kNew);
        EXPECT_EQ(get(name + ".bak"), kOld);
      }
    }
    EXPECT_EQ(failures, 12);
  }
}

TEST_F(SafeFileTest, ADroppedReplacementLeavesEverything) {
  {
    SafeFile out(name);
    ASSERT_TRUE(out.open());
    out.write(kNew);
  }
  EXPECT_EQ(get(name), kOld);
  EXPECT_EQ(get(name + ".bak"), kOlder);
  EXPECT_FALSE(file_exists(name + ".new"));
}

TEST_F(SafeFileTest, AFullDiskIsReported) {
  const pid_t child = fork();
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{400, 400};
    setrlimit(RLIMIT_FSIZE, &limit);
    _exit(save() == SaveOutcome::cannot_write && get(name) == kOld ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(get(name), kOld);
}

TEST_F(SafeFileTest, AFolderWithoutWritePermissionIsReported) {
  fs::permissions(folder, fs::perms(0555));
  const pid_t child = fork();
  if (child == 0) {
    // The superuser may write everywhere, so the test gives that up.
    if (geteuid() == 0 && seteuid(65534) != 0)
      _exit(2);
    _exit(save() == SaveOutcome::cannot_keep_old ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(get(name), kOld);
}

TEST_F(SafeFileTest, AFolderIsNeverMovedAway) {
  fs::remove(name);
  fs::create_directory(name);
  EXPECT_EQ(save(), SaveOutcome::cannot_open);
  EXPECT_TRUE(fs::is_directory(name));
}

TEST_F(SafeFileTest, AChangeByAnotherProgramShowsInTheStamp) {
  const FileStamp before = stamp_of(name);
  EXPECT_EQ(before, stamp_of(name));
  put(name, kNew);
  EXPECT_NE(before, stamp_of(name));
  EXPECT_FALSE(stamp_of(name + ".none").exists);
}

} // namespace
