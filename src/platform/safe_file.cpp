// Replacing one file. Every call that touches the disk is one of file_calls.h, so that a fault can
// be made at each.
#include "platform/safe_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace velora {

std::size_t gFileChunk = 65536;

// --- the hidden file ---------------------------------------------------------------------------

HiddenFile::~HiddenFile() {
  if (fd_ >= 0)
    close();
  if (made_)
    remove_file(name_);
}

bool HiddenFile::make(const std::string &name) {
  name_ = name;
  fd_ = make_file(name);
  made_ = fd_ >= 0;
  return made_;
}

bool HiddenFile::write(std::string_view bytes) const {
  return write_bytes(fd_, bytes);
}

bool HiddenFile::close() {
  const int fd = fd_;
  fd_ = -1;
  return close_file_number(fd);
}

// The first error counts; the file is closed in any case.
bool HiddenFile::finish(const std::string &of) {
  if (take_mode(fd_, name_, of))
    return finish_private();
  const int error = errno;
  close();
  errno = error;
  return false;
}

bool HiddenFile::finish_private() {
  const bool whole = sync_file(fd_);
  const int error = errno;
  const bool closed = close();
  if (!whole)
    errno = error;
  return whole && closed;
}

bool HiddenFile::take(const std::string &name) {
  if (!rename_file(name_, name))
    return false;
  made_ = false;
  return true;
}

// --- replacing one file ------------------------------------------------------------------------

SafeFile::SafeFile(std::string name)
    : name_(std::move(name)), target_(link_target(name_)),
      channel_(entry_kind(target_, true) == EntryKind::other) {}

SafeFile::~SafeFile() {
  if (channel_fd_ >= 0)
    close_file_number(channel_fd_);
}

std::string SafeFile::reason() const {
  return reason_;
}

// Called with errno set; the first failure is the cause of all others.
void SafeFile::fail(const std::string &path) {
  if (error_ == 0) {
    error_ = errno;
    reason_ = file_error_text(path, error_);
  }
  failed_ = true;
}

bool SafeFile::open() {
  errno = EISDIR;
  bool opened = false;
  if (channel_) {
    channel_fd_ = open_channel(target_);
    opened = channel_fd_ >= 0;
  } else if (entry_kind(target_) != EntryKind::folder) {
    opened = hidden_.make(hidden_name(target_, random_token(), "new"));
  }
  // Where nothing may be made it is the folder that refuses; a missing one too.
  if (!opened && !channel_ && (errno == EACCES || errno == EROFS))
    fail(folder_of(target_));
  else if (!opened)
    fail(name_);
  opened_ = opened;
  failed_ = !opened;
  return opened;
}

void SafeFile::flush_chunk() {
  if (!failed_ && !chunk_.empty() &&
      !(channel_ ? write_bytes(channel_fd_, chunk_) : hidden_.write(chunk_)))
    fail(name_);
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

bool SafeFile::finish_channel() {
  const int fd = channel_fd_;
  channel_fd_ = -1;
  if (!failed_ && !close_file_number(fd))
    fail(name_);
  return !failed_;
}

SaveOutcome SafeFile::replace() {
  if (!opened_)
    return SaveOutcome::cannot_open;
  flush_chunk();
  if (channel_)
    return finish_channel() ? SaveOutcome::saved : SaveOutcome::cannot_write;
  if (!failed_ && !hidden_.finish(target_))
    fail(name_);
  if (failed_)
    return SaveOutcome::cannot_write;
  if (!hidden_.take(target_)) {
    fail(name_);
    return SaveOutcome::cannot_replace;
  }
  sync_folder(folder_of(target_));
  return SaveOutcome::saved;
}

bool may_replace_protected(const std::string &name) {
  constexpr int kReplace = 1;
  return !is_protected_file(name) ||
         PromptUser(format_text("%s is write-protected. Replace it?", name.c_str()),
                    {"Replace", "Cancel"}) == kReplace;
}

bool write_whole_file(const std::string &name, std::string_view text, std::string &reason) {
  SafeFile out(name);
  if (out.open())
    out.write(text);
  if (out.replace() == SaveOutcome::saved)
    return true;
  reason = out.reason();
  return false;
}

bool write_or_tell(const std::string &name, std::string_view text) {
  std::string reason;
  if (write_whole_file(name, text, reason))
    return true;
  show_note("note: " + reason);
  return false;
}

} // namespace velora
