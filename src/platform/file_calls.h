// Every call that touches a file which must not be lost goes through one function of this layer, so
// that tests can make each of them fail once, or end the process before it.
//
// Each function answers true, a descriptor or a count; or false or -1 with errno set.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velora {

enum class FileStep {
  open,
  read,
  make,
  write,
  mode,
  sync,
  close,
  link,
  rename,
  remove,
  sync_folder,
  lock
};

// What a fault made on purpose does: with an `error` the call fails with it, a write after `bytes`
// bytes have reached the file.
struct FileFault {
  int error = 0;
  std::size_t bytes = 0;
};

// Asked before every call when set; `bytes` is what a write is about to write. It may also end the
// process, which is what a crash at that place looks like. Only tests set it.
extern FileFault (*gFileFault)(FileStep step, std::size_t bytes);

// Non-zero forces content to the disk before a file is replaced (the default).
extern int gSyncFiles;

// What stands under a name. `unknown`: something may, but the folder does not let us look.
enum class EntryKind { none, file, folder, link, other, unknown };

// Of the name itself; a link is a link. With `follow`, of what a link leads to.
EntryKind entry_kind(const std::string &name, bool follow = false);
// True for a file whose owner has taken the right to write away.
bool is_protected_file(const std::string &name);

// Opens a file, device or pipe for reading; a folder fails with EISDIR.
int open_to_read(const std::string &name);
// Makes a file that did not exist, following no link, for its owner alone.
int make_file(const std::string &name);
// Opens a device or pipe to write into it as it is. Waiting for a reader ends with EINTR when the
// user interrupts.
int open_channel(const std::string &name);
// Opens an existing plain file for writing at its end, or cut to nothing when `cut` is true; a link
// at the end of the name fails.
int open_to_append(const std::string &name, bool cut);
// At most `count` bytes; 0 at the end.
std::ptrdiff_t read_bytes(int fd, char *bytes, std::size_t count);
bool write_bytes(int fd, std::string_view bytes);
bool sync_file(int fd);
// The descriptor is gone in any case.
bool close_file_number(int fd);
// Gives a new file the rights of the file `of`, or those of any new file when that is missing.
bool take_mode(int fd, const std::string &name, const std::string &of);
bool link_file(const std::string &from, const std::string &to);
// Takes the place of what stands under `to`.
bool rename_file(const std::string &from, const std::string &to);
bool remove_file(const std::string &name);
// Makes what happened to the names of a folder durable; what a file system cannot do is no failure.
bool sync_folder(const std::string &folder);

// The folder part of a path, with its separator, or "./".
std::string folder_of(const std::string &name);
// The path less its folder part.
std::string file_part(const std::string &name);
// The file that a chain of links leads to; the name itself where it is no link.
std::string link_target(const std::string &name);

// Holds a lock file while in scope. The file stays: what is removed could be locked twice.
class FileLock {
public:
  explicit FileLock(const std::string &name);
  ~FileLock();
  FileLock(const FileLock &) = delete;
  FileLock &operator=(const FileLock &) = delete;
  [[nodiscard]] bool held() const { return fd_ >= 0; }
  // True when another program holds it; else error() says why it could not be had.
  [[nodiscard]] bool busy() const;
  [[nodiscard]] int error() const { return error_; }

private:
  int fd_;
  int error_;
};

} // namespace velora
