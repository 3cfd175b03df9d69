// Replacing files safely. Called by the database file and the segment file writers. Every change
// on disk goes through one of the step functions below, so that a fault can be made at each.
#include "platform/safe_file.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstring>
#include <filesystem>
#include <system_error>

#if defined(_WIN32)
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace velora {

int (*gFileFault)(FileStep step, std::size_t bytes) = nullptr;
std::size_t gFileChunk = 65536;
int gSyncFiles = 1;

namespace {

constexpr int kNoFault = -1;

int fault_at(FileStep step, std::size_t bytes = 0) {
  const int allowed = gFileFault != nullptr ? gFileFault(step, bytes) : kNoFault;
  if (allowed != kNoFault)
    errno = ENOSPC;
  return allowed;
}

bool step_rename(const std::string &from, const std::string &to) {
  return fault_at(FileStep::rename) == kNoFault && std::rename(from.c_str(), to.c_str()) == 0;
}

bool step_remove(const std::string &name) {
  return fault_at(FileStep::remove) == kNoFault && std::remove(name.c_str()) == 0;
}

bool step_write(std::FILE *file, std::string_view bytes) {
  const int allowed = fault_at(FileStep::write, bytes.size());
  if (allowed == kNoFault)
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  std::fwrite(bytes.data(), 1, static_cast<std::size_t>(allowed), file);
  errno = ENOSPC;
  return false;
}

bool step_sync(std::FILE *file) {
  if (fault_at(FileStep::sync) != kNoFault)
    return false;
  if (gSyncFiles == 0)
    return true;
#if defined(_WIN32)
  return _commit(_fileno(file)) == 0;
#else
  // Some file systems offer no fsync for what they hold; that is no failure of the save.
  return fsync(fileno(file)) == 0 || errno == EINVAL || errno == ENOSYS;
#endif
}

// Makes the renames in a folder durable. Best effort: the order of the renames is what keeps a
// whole version, and not every system can do this.
void sync_folder(const std::string &name) {
#if defined(_WIN32)
  (void)name;
#else
  if (gSyncFiles == 0)
    return;
  const std::string::size_type slash = name.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : name.substr(0, slash + 1);
  const int fd = ::open(folder.c_str(), O_RDONLY);
  if (fd < 0)
    return;
  (void)fsync(fd);
  ::close(fd);
#endif
}

// A new file takes the access rights of the one it replaces.
void copy_rights(const std::string &from, const std::string &to) {
  std::error_code error;
  const auto status = std::filesystem::status(from, error);
  if (!error)
    std::filesystem::permissions(to, status.permissions(), error);
}

bool is_folder(const std::string &name) {
  std::error_code error;
  return std::filesystem::is_directory(name, error);
}

// A device or a pipe: what is written goes through it, and nothing may take its place.
bool is_channel(const std::string &name) {
  std::error_code error;
  return std::filesystem::is_other(std::filesystem::status(name, error));
}

// The file that a chain of links leads to, which is the one to replace; links stay as they are.
std::string link_target(const std::string &name) {
  constexpr int kMostLinks = 40;
  std::filesystem::path path(name);
  std::error_code error;
  for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i)
    path = path.parent_path() / std::filesystem::read_symlink(path, error);
  return path == name ? name : path.string();
}

} // namespace

bool file_exists(const std::string &name) {
  std::error_code error;
  return std::filesystem::exists(name, error);
}

bool complete_replacement(const std::string &name) {
  const std::string target = link_target(name);
  const std::string made = target + ".new";
  return !file_exists(target) && file_exists(target + ".bak") && file_exists(made) &&
         std::rename(made.c_str(), target.c_str()) == 0;
}

std::string new_temporary_name(const std::string &ending) {
  std::error_code failed;
  const auto folder = std::filesystem::temp_directory_path(failed);
  if (failed)
    return {};
  const auto now = std::chrono::system_clock::now().time_since_epoch().count();
  return (folder / ("velora-" + std::to_string(now) + ending)).string();
}

FileStamp stamp_of(const std::string &name) {
  FileStamp stamp;
  std::error_code error;
  const auto time = std::filesystem::last_write_time(name, error);
  if (error)
    return stamp;
  stamp.exists = true;
  stamp.time = static_cast<std::int64_t>(time.time_since_epoch().count());
  stamp.size = std::filesystem::file_size(name, error);
  return stamp;
}

bool read_whole_file(const std::string &name, std::string &text) {
  text.clear();
  if (is_folder(name))
    return false;
  struct Closer {
    void operator()(std::FILE *file) const { std::fclose(file); }
  };
  const std::unique_ptr<std::FILE, Closer> file(std::fopen(name.c_str(), "rb"));
  if (file == nullptr)
    return false;
  char part[65536];
  std::size_t got = 0;
  while ((got = std::fread(part, 1, sizeof part, file.get())) > 0)
    text.append(part, got);
  return std::ferror(file.get()) == 0;
}

SafeFile::SafeFile(std::string name)
    : name_(link_target(name)), channel_(is_channel(name_)),
      new_name_(channel_ ? name_ : name_ + ".new") {}

SafeFile::~SafeFile() {
  file_.reset();
  if (made_)
    std::remove(new_name_.c_str());
}

std::string SafeFile::reason() const {
  return error_ != 0 ? std::strerror(error_) : std::string();
}

void SafeFile::fail() {
  if (!failed_)
    error_ = errno;
  failed_ = true;
}

bool SafeFile::open() {
  errno = 0;
  if (is_folder(name_))
    errno = EISDIR;
  else if (fault_at(FileStep::open) == kNoFault)
    file_.reset(std::fopen(new_name_.c_str(), "wb"));
  if (file_ == nullptr) {
    error_ = errno;
    // In a folder that may not be written to, the old file could not be moved either.
    if ((error_ == EACCES || error_ == EPERM || error_ == EROFS) && file_exists(name_))
      outcome_ = SaveOutcome::cannot_keep_old;
    return false;
  }
  // The chunk is the buffer: each write below reaches the file when it is made.
  std::setvbuf(file_.get(), nullptr, _IONBF, 0);
  made_ = !channel_;
  failed_ = false;
  return true;
}

void SafeFile::flush_chunk() {
  if (!failed_ && !chunk_.empty() && !step_write(file_.get(), chunk_))
    fail();
  chunk_.clear();
}

void SafeFile::write(std::string_view bytes) {
  while (!failed_ && !bytes.empty()) {
    const std::size_t room = gFileChunk > chunk_.size() ? gFileChunk - chunk_.size() : 1;
    const std::size_t taken = std::min(room, bytes.size());
    chunk_.append(bytes.substr(0, taken));
    bytes.remove_prefix(taken);
    if (chunk_.size() >= gFileChunk)
      flush_chunk();
  }
}

void SafeFile::printf(const char *format, ...) {
  std::va_list args;
  va_start(args, format);
  std::va_list again;
  va_copy(again, args);
  const int needed = std::vsnprintf(nullptr, 0, format, args);
  va_end(args);
  if (needed > 0) {
    std::string text(static_cast<std::size_t>(needed) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, again);
    text.pop_back();
    write(text);
  }
  va_end(again);
}

// Everything that was written must have reached the disk before the old file is touched.
bool SafeFile::finish_content() {
  flush_chunk();
  if (!failed_ && !step_sync(file_.get()))
    fail();
  const bool fault = fault_at(FileStep::close) != kNoFault;
  std::FILE *file = file_.release();
  if (file != nullptr && (std::fclose(file) != 0 || fault))
    fail();
  return !failed_;
}

bool SafeFile::keep_old() {
  // Where a rename may not replace a file, the old backup is deleted first. The old file itself
  // stands under its name until it stands under the backup's.
  return step_rename(name_, backup_name()) ||
         (step_remove(backup_name()) && step_rename(name_, backup_name()));
}

bool SafeFile::take_name() {
  if (!step_rename(new_name_, name_)) {
    error_ = errno;
    return false;
  }
  made_ = false;
  sync_folder(name_);
  return true;
}

SaveOutcome SafeFile::replace() {
  if (file_ == nullptr)
    return outcome_;
  if (!finish_content())
    return SaveOutcome::cannot_write;
  if (channel_)
    return SaveOutcome::saved;
  const bool replaces = file_exists(name_);
  if (replaces) {
    copy_rights(name_, new_name_);
    if (!keep_old()) {
      error_ = errno;
      return SaveOutcome::cannot_keep_old;
    }
  }
  if (take_name())
    return SaveOutcome::saved;
  if (replaces)
    (void)std::rename(backup_name().c_str(), name_.c_str());
  return SaveOutcome::cannot_replace;
}

} // namespace velora
