// The file calls of systems of the Unix family. Calls that wait are taken up again after a signal
// unless it was the interrupt key.
#include "platform/file_system.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "platform/file_handle.h"
#include "platform/interrupt.h"

namespace velora::system_files {

namespace {

constexpr mode_t kOwnerOnly = 0600;
constexpr mode_t kAnyNewFile = 0666;

bool goes_on() {
  return errno == EINTR && gInterrupted == 0;
}

int open_again(const char *name, int flags, mode_t mode = 0) {
  int fd = -1;
  do
    fd = ::open(name, flags | O_CLOEXEC, mode);
  while (fd < 0 && goes_on());
  return fd;
}

// The mode of a file that any program makes.
mode_t new_file_mode() {
  const mode_t mask = ::umask(077);
  ::umask(mask);
  return kAnyNewFile & ~mask;
}

} // namespace

const char *const kSeparators = "/";

std::string state_base() {
  const char *state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && *state != '\0')
    return state;
  const char *home = std::getenv("HOME");
  return home != nullptr && *home != '\0' ? std::string(home) + "/.local/state" : std::string();
}

int open_to_read(const char *name) {
  const int fd = open_again(name, O_RDONLY);
  struct stat info = {};
  if (fd < 0 || ::fstat(fd, &info) != 0 || !S_ISDIR(info.st_mode))
    return fd;
  ::close(fd);
  errno = EISDIR;
  return -1;
}

int make(const char *name) {
  return open_again(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, kOwnerOnly);
}

int open_channel(const char *name) {
  return open_again(name, O_WRONLY | O_NOCTTY);
}

int open_to_append(const char *name, bool cut) {
  return open_again(name, O_WRONLY | O_NOFOLLOW | (cut ? O_TRUNC : O_APPEND));
}

std::ptrdiff_t read(int fd, char *bytes, std::size_t count) {
  std::ptrdiff_t got = 0;
  do
    got = ::read(fd, bytes, count);
  while (got < 0 && goes_on());
  return got;
}

std::ptrdiff_t write(int fd, const char *bytes, std::size_t count) {
  std::ptrdiff_t written = 0;
  do
    written = ::write(fd, bytes, count);
  while (written < 0 && errno == EINTR);
  return written;
}

// Some file systems offer no fsync for what they hold; that is no failure.
bool sync(int fd) {
  return ::fsync(fd) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
}

bool close(int fd) {
  return ::close(fd) == 0 || errno == EINTR;
}

bool take_mode(int fd, const char *, const char *of) {
  struct stat info = {};
  const bool there = ::stat(of, &info) == 0;
  // A file system without rights refuses to change them; the content is what counts.
  return ::fchmod(fd, there ? info.st_mode & 07777 : new_file_mode()) == 0 || errno == EPERM ||
         errno == ENOSYS || errno == ENOTSUP;
}

bool link(const char *from, const char *to) {
  return ::link(from, to) == 0;
}

bool rename(const char *from, const char *to) {
  return std::rename(from, to) == 0;
}

bool remove(const char *name) {
  return ::unlink(name) == 0;
}

bool sync_folder(const char *folder) {
  const int fd = open_again(folder, O_RDONLY | O_DIRECTORY);
  if (fd < 0)
    return errno == EACCES; // a folder that may be written but not read
  const bool done = sync(fd);
  const int error = errno;
  ::close(fd);
  errno = error;
  return done;
}

int lock(const char *name) {
  int fd = open_again(name, O_RDWR | O_CREAT | O_NOFOLLOW, kAnyNewFile);
  // The lock of another user may only be read, which is enough to hold it.
  if (fd < 0 && errno == EACCES)
    fd = open_again(name, O_RDONLY | O_NOFOLLOW);
  if (fd < 0)
    return -1;
  if (::flock(fd, LOCK_EX | LOCK_NB) == 0)
    return fd;
  const int error = errno;
  // Where a file system knows no locks, saving goes on without.
  if (error == ENOLCK || error == ENOTSUP || error == ENOSYS)
    return fd;
  ::close(fd);
  errno = error;
  return -1;
}

EntryKind entry_kind(const char *name, bool follow) {
  struct stat info = {};
  if ((follow ? ::stat(name, &info) : ::lstat(name, &info)) != 0)
    return errno == ENOENT || errno == ENOTDIR ? EntryKind::none : EntryKind::unknown;
  if (S_ISREG(info.st_mode))
    return EntryKind::file;
  if (S_ISDIR(info.st_mode))
    return EntryKind::folder;
  return S_ISLNK(info.st_mode) ? EntryKind::link : EntryKind::other;
}

bool is_protected(const char *name) {
  struct stat info = {};
  return ::stat(name, &info) == 0 && S_ISREG(info.st_mode) && (info.st_mode & S_IWUSR) == 0;
}

} // namespace velora::system_files

std::FILE *velora::stream_of(int fd, const char *mode) {
  return ::fdopen(fd, mode);
}
