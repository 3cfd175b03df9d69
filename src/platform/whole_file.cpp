// Whole reading. The interrupt key is looked at here, since the level of commands cannot be asked:
// the flag stays set, and the command ends at its next step.
#include "platform/whole_file.h"

#include <cerrno>
#include <cstring>

#include "platform/console.h"
#include "platform/file_calls.h"
#include "platform/interrupt.h"

namespace velora {

namespace {

constexpr std::size_t kPiece = 65536;
// What comes from a device or a pipe is given up earlier: its end may never come.
constexpr std::size_t kLongestStream = std::size_t{1} << 28;
// Pieces between two looks at the interrupt key.
constexpr int kLookEvery = 64;

class OpenFile {
public:
  explicit OpenFile(const std::string &name) : fd_(open_to_read(name)) {}
  ~OpenFile() {
    if (fd_ >= 0)
      close_file_number(fd_);
  }
  OpenFile(const OpenFile &) = delete;
  OpenFile &operator=(const OpenFile &) = delete;
  [[nodiscard]] int fd() const { return fd_; }

private:
  int fd_;
};

// Nothing stops a reading that is part of a save.
bool interrupted(int piece) {
  if (InterruptHold::depth > 0)
    return false;
  if (piece % kLookEvery == kLookEvery - 1 && gConsole->interrupted())
    gInterrupted = 1;
  return gInterrupted != 0;
}

// False with errno set when it did not come to the end of the file.
bool read_to_end(int fd, std::string &text, std::size_t most) {
  for (int piece = 0;; ++piece) {
    const std::size_t old = text.size();
    text.resize(old + kPiece);
    const std::ptrdiff_t got = read_bytes(fd, text.data() + old, kPiece);
    text.resize(old + static_cast<std::size_t>(got > 0 ? got : 0));
    if (got <= 0)
      return got == 0;
    if (text.size() > most || (old > 0 && interrupted(piece))) {
      errno = text.size() > most ? EFBIG : EINTR;
      return false;
    }
  }
}

} // namespace

bool read_whole_file(const std::string &name, std::string &text) {
  text.clear();
  const OpenFile file(name);
  if (file.fd() < 0)
    return false;
  const bool plain = entry_kind(name, true) == EntryKind::file;
  if (read_to_end(file.fd(), text, plain ? kLargestFile : kLongestStream))
    return true;
  const int error = errno;
  text = std::string();
  errno = error;
  return false;
}

bool read_plain_file(const std::string &name, std::string &text) {
  if (entry_kind(name, true) != EntryKind::other)
    return read_whole_file(name, text);
  text.clear();
  errno = EINVAL;
  return false;
}

bool file_exists(const std::string &name) {
  return entry_kind(name) != EntryKind::none;
}

std::string file_error_text(const std::string &name, int error) {
  const std::string target = link_target(name);
  const std::string shown = target == name ? name : name + " -> " + target;
  const bool no_file = error == EINVAL && entry_kind(target, true) == EntryKind::other;
  return shown + ": " + (no_file ? "Not a plain file" : std::strerror(error));
}

} // namespace velora
