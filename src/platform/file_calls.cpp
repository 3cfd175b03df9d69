// The layer between the program and the calls of file_system.h: faults on purpose, whole writes.
#include "platform/file_calls.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/file_system.h"

namespace velora {

FileFault (*gFileFault)(FileStep step, std::size_t bytes) = nullptr;
int gSyncFiles = 1;

namespace {

// True when the call has to fail; errno then says why.
bool fails_at(FileStep step) {
  const int error = gFileFault != nullptr ? gFileFault(step, 0).error : 0;
  if (error == 0)
    return false;
  errno = error;
  return true;
}

// Writes all of it: a system may take less at a time.
bool write_all(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const std::ptrdiff_t written = system_files::write(fd, bytes.data(), bytes.size());
    if (written < 0)
      return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

} // namespace

EntryKind entry_kind(const std::string &name, bool follow) {
  return system_files::entry_kind(name.c_str(), follow);
}

bool is_protected_file(const std::string &name) {
  return system_files::is_protected(name.c_str());
}

int open_to_read(const std::string &name) {
  return fails_at(FileStep::open) ? -1 : system_files::open_to_read(name.c_str());
}

int make_file(const std::string &name) {
  return fails_at(FileStep::make) ? -1 : system_files::make(name.c_str());
}

int open_channel(const std::string &name) {
  return fails_at(FileStep::make) ? -1 : system_files::open_channel(name.c_str());
}

int open_to_append(const std::string &name, bool cut) {
  return fails_at(FileStep::make) ? -1 : system_files::open_to_append(name.c_str(), cut);
}

std::ptrdiff_t read_bytes(int fd, char *bytes, std::size_t count) {
  return fails_at(FileStep::read) ? -1 : system_files::read(fd, bytes, count);
}

bool write_bytes(int fd, std::string_view bytes) {
  const FileFault fault =
      gFileFault != nullptr ? gFileFault(FileStep::write, bytes.size()) : FileFault{};
  if (fault.error == 0)
    return write_all(fd, bytes);
  write_all(fd, bytes.substr(0, fault.bytes));
  errno = fault.error;
  return false;
}

bool sync_file(int fd) {
  if (fails_at(FileStep::sync))
    return false;
  return gSyncFiles == 0 || system_files::sync(fd);
}

bool close_file_number(int fd) {
  const bool fails = fails_at(FileStep::close);
  const int error = errno;
  const bool closed = system_files::close(fd);
  if (!fails)
    return closed;
  errno = error;
  return false;
}

bool take_mode(int fd, const std::string &name, const std::string &of) {
  return !fails_at(FileStep::mode) && system_files::take_mode(fd, name.c_str(), of.c_str());
}

bool link_file(const std::string &from, const std::string &to) {
  return !fails_at(FileStep::link) && system_files::link(from.c_str(), to.c_str());
}

bool rename_file(const std::string &from, const std::string &to) {
  return !fails_at(FileStep::rename) && system_files::rename(from.c_str(), to.c_str());
}

bool remove_file(const std::string &name) {
  return !fails_at(FileStep::remove) && system_files::remove(name.c_str());
}

bool sync_folder(const std::string &folder) {
  if (fails_at(FileStep::sync_folder))
    return false;
  return gSyncFiles == 0 || system_files::sync_folder(folder.c_str());
}

std::string folder_of(const std::string &name) {
  const std::size_t slash = name.find_last_of(system_files::kSeparators);
  return slash == std::string::npos ? "./" : name.substr(0, slash + 1);
}

std::string file_part(const std::string &name) {
  const std::string folder = folder_of(name);
  return name.starts_with(folder) ? name.substr(folder.size()) : name;
}

std::string link_target(const std::string &name) {
  constexpr int kMostLinks = 40;
  std::filesystem::path path(name);
  std::error_code error;
  for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i)
    path = path.parent_path() / std::filesystem::read_symlink(path, error);
  return path == name ? name : path.string();
}

FileLock::FileLock(const std::string &name) : fd_(-1), error_(0) {
  errno = 0;
  if (!fails_at(FileStep::lock))
    fd_ = system_files::lock(name.c_str());
  error_ = fd_ < 0 ? errno : 0;
}

FileLock::~FileLock() {
  if (fd_ >= 0)
    system_files::close(fd_);
}

bool FileLock::busy() const {
  return error_ == EWOULDBLOCK || error_ == EAGAIN;
}

} // namespace velora
