// A replaced file is whole at every instant: stopped before every call in turn, as by a crash, and
// failed at every call in turn, as by a full disk. Names and stamps beside it.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "platform/file_set.h"
#include "platform/interrupt.h"
#include "platform/safe_file.h"
#include "platform/sha256.h"

using namespace velora;

namespace {

namespace fs = std::filesystem;

const std::string kOld = std::string(300, 'o') + "\n";
const std::string kNew = std::string(500, 'n') + "\n";

int calls_seen = 0;
int call_wanted = 0;
int error_wanted = 0;

FileFault act(FileStep, std::size_t bytes) {
  if (calls_seen++ != call_wanted)
    return {};
  if (error_wanted == 0)
    _exit(9);
  return {error_wanted, bytes / 2};
}

class SafeFileTest : public testing::Test {
protected:
  void SetUp() override {
    folder = fs::temp_directory_path() / ("velora_safe_" + std::to_string(getpid()));
    fs::remove_all(folder);
    fs::create_directories(folder);
    name = (folder / "x.svg").string();
    gFileChunk = 64;
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
  [[nodiscard]] int entries() const {
    return static_cast<int>(std::distance(fs::directory_iterator(folder), {}));
  }

  fs::path folder;
  std::string name;
};

TEST_F(SafeFileTest, NothingButTheFileIsTouched) {
  put(name + ".bak", "the user's own");
  put(name + ".new", "the user's own too");
  EXPECT_EQ(save(), SaveOutcome::saved);
  EXPECT_EQ(get(name), kNew);
  EXPECT_EQ(get(name + ".bak") + get(name + ".new"), "the user's ownthe user's own too");
  EXPECT_EQ(entries(), 3);
}

TEST_F(SafeFileTest, RightsOfTheOldFileAreKept) {
  fs::permissions(name, fs::perms(0640));
  EXPECT_EQ(save(), SaveOutcome::saved);
  EXPECT_EQ(fs::status(name).permissions(), fs::perms(0640));
}

TEST_F(SafeFileTest, ALinkStaysAndItsFileIsReplaced) {
  const std::string first = (folder / "first").string();
  const std::string second = (folder / "second").string();
  fs::create_symlink("x.svg", second);
  fs::create_symlink(second, first);
  std::string reason;
  EXPECT_TRUE(write_whole_file(first, kNew, reason)) << reason;
  EXPECT_TRUE(fs::is_symlink(first) && fs::is_symlink(second));
  EXPECT_EQ(get(name), kNew);
  EXPECT_EQ(entries(), 3);
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
  EXPECT_EQ(entries(), 2);
}

TEST_F(SafeFileTest, StoppedBeforeEveryCallAWholeVersionStands) {
  error_wanted = 0;
  int stopped = 0;
  for (call_wanted = 0; call_wanted < 100; ++call_wanted) {
    SetUp();
    const pid_t child = fork();
    if (child == 0) {
      calls_seen = 0;
      gFileFault = act;
      save();
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(get(name) == kOld || get(name) == kNew) << "call " << call_wanted;
    remove_leftovers(name);
    EXPECT_EQ(entries(), 1);
    if (WEXITSTATUS(status) == 0)
      break;
    ++stopped;
  }
  // Made, written in eight pieces, its rights, forced to the disk, closed, renamed, the folder.
  EXPECT_EQ(stopped, 14);
  EXPECT_EQ(get(name), kNew);
}

TEST_F(SafeFileTest, FailedAtEveryCallTheOldFileStandsAndTheCauseIsTold) {
  for (const int error : {ENOSPC, EIO, EACCES}) {
    error_wanted = error;
    int failures = 0;
    for (call_wanted = 0; call_wanted < 100; ++call_wanted) {
      SetUp();
      calls_seen = 0;
      gFileFault = act;
      SafeFile out(name);
      out.open();
      out.write(kNew);
      const SaveOutcome outcome = out.replace();
      gFileFault = nullptr;
      if (calls_seen <= call_wanted)
        break;
      if (outcome == SaveOutcome::saved) {
        EXPECT_EQ(get(name), kNew) << "only the folder may fail to be forced to the disk";
        continue;
      }
      EXPECT_EQ(get(name), kOld) << "call " << call_wanted;
      EXPECT_TRUE(out.reason().ends_with(std::strerror(error))) << out.reason();
      EXPECT_TRUE(out.reason().starts_with(folder.string())) << out.reason();
      ++failures;
    }
    EXPECT_EQ(failures, 13);
    EXPECT_EQ(entries(), 1);
  }
}

// The first rename fails, and the second one when the backup has been removed to make room for it.
TEST_F(SafeFileTest, ABackupThatCannotBeReplacedComesBack) {
  static int renames;
  renames = 0;
  put(name + ".bak", "the version before");
  gFileFault = [](FileStep step, std::size_t) {
    return FileFault{step == FileStep::rename && ++renames <= 2 ? EACCES : 0, 0};
  };
  std::string reason;
  EXPECT_FALSE(write_with_backup(name, kNew, reason));
  gFileFault = nullptr;
  EXPECT_EQ(reason, name + ".bak: Permission denied");
  EXPECT_EQ(get(name), kOld);
  EXPECT_EQ(get(name + ".bak"), "the version before");
  EXPECT_EQ(entries(), 3); // with the lock
}

TEST_F(SafeFileTest, ADroppedReplacementLeavesEverything) {
  {
    SafeFile out(name);
    ASSERT_TRUE(out.open());
    out.write(kNew);
  }
  EXPECT_EQ(get(name), kOld);
  EXPECT_EQ(entries(), 1);
}

TEST_F(SafeFileTest, TheRealCauseIsTold) {
  std::string reason;
  const std::string lost = (folder / "lost").string();
  fs::create_symlink("/no/such/place/y", lost);
  EXPECT_FALSE(write_whole_file(lost, "x", reason));
  EXPECT_EQ(reason, lost + " -> /no/such/place/y: No such file or directory");
  reason.clear();
  const std::string longest = (folder / std::string(300, 'n')).string();
  EXPECT_FALSE(write_whole_file(longest, "x", reason));
  EXPECT_EQ(reason, longest + ": File name too long");
  reason.clear();
  EXPECT_FALSE(write_whole_file(folder.string(), "x", reason));
  EXPECT_EQ(reason, folder.string() + ": Is a directory");
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

TEST_F(SafeFileTest, AChangeByAnotherProgramShowsInTheStamp) {
  const FileStamp before = stamp_of(name);
  const auto time = fs::last_write_time(name);
  EXPECT_EQ(before, stamp_of_text(kOld));
  put(name, std::string(300, 'p') + "\n");
  fs::last_write_time(name, time);
  EXPECT_NE(before, stamp_of(name)) << "neither time nor size tell it";
  EXPECT_FALSE(stamp_of(name + ".none").exists);
  const std::string text(200000, 'x');
  put(name, text);
  gInterrupted = 1;
  EXPECT_EQ(stamp_of(name), stamp_of_text(text)) << "a waiting interrupt is no change";
  gInterrupted = 0;
}

TEST_F(SafeFileTest, ReadingEndsAtAnErrorAnEndOrTheInterruptKey) {
  std::string text = "before";
  gFileFault = [](FileStep step, std::size_t) {
    return step == FileStep::read ? FileFault{EIO, 0} : FileFault{};
  };
  EXPECT_FALSE(read_whole_file(name, text));
  EXPECT_EQ(errno, EIO);
  EXPECT_EQ(text, "");
  gFileFault = nullptr;
  gInterrupted = 1;
  EXPECT_FALSE(read_whole_file("/dev/zero", text));
  EXPECT_EQ(errno, EINTR);
  gInterrupted = 0;
  EXPECT_FALSE(read_whole_file(folder.string(), text));
  EXPECT_EQ(errno, EISDIR);
}

TEST_F(SafeFileTest, WhatIsThereIsSeenFromTheEntry) {
  const std::string lost = (folder / "lost").string();
  fs::create_symlink("nowhere", lost);
  EXPECT_TRUE(file_exists(lost));
  EXPECT_EQ(entry_kind(lost), EntryKind::link);
  EXPECT_EQ(entry_kind(lost, true), EntryKind::none);
  EXPECT_EQ(entry_kind(name + "/inside"), EntryKind::none);
  EXPECT_EQ(entry_kind("/dev/null"), EntryKind::other);
}

// The examples of the published definition.
TEST(Sha256, AgreesWithItsDefinition) {
  EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(sha256(std::string(1000000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

} // namespace
