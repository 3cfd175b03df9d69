// The file calls of Windows. Another program, often a scanner, may have a file open for a moment:
// such a sharing violation is tried again for two seconds.
#include <windows.h>

#include "platform/file_system.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

#include "platform/file_handle.h"

namespace velora::system_files {

namespace {

constexpr DWORD kPatience = 2000;
constexpr DWORD kPause = 50;

int errno_of(DWORD error) {
  switch (error) {
  case ERROR_FILE_NOT_FOUND:
  case ERROR_PATH_NOT_FOUND:
    return ENOENT;
  case ERROR_ACCESS_DENIED:
  case ERROR_SHARING_VIOLATION:
    return EACCES;
  case ERROR_ALREADY_EXISTS:
  case ERROR_FILE_EXISTS:
    return EEXIST;
  case ERROR_DISK_FULL:
  case ERROR_HANDLE_DISK_FULL:
    return ENOSPC;
  case ERROR_FILENAME_EXCED_RANGE:
    return ENAMETOOLONG;
  case ERROR_WRITE_PROTECT:
    return EROFS;
  default:
    return EIO;
  }
}

// Runs `call` until it succeeds or fails for another reason than somebody's having the file open.
template <class Call> bool with_patience(Call call) {
  for (DWORD waited = 0;; waited += kPause) {
    if (call())
      return true;
    const DWORD error = GetLastError();
    errno = errno_of(error);
    if ((error != ERROR_SHARING_VIOLATION && error != ERROR_LOCK_VIOLATION) || waited >= kPatience)
      return false;
    Sleep(kPause);
  }
}

} // namespace

const char *const kSeparators = "/\\:";

std::string state_base() {
  const char *state = std::getenv("LOCALAPPDATA");
  return state != nullptr ? state : std::string();
}

int open_to_read(const char *name) {
  const DWORD kind = GetFileAttributesA(name);
  if (kind != INVALID_FILE_ATTRIBUTES && (kind & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    errno = EISDIR;
    return -1;
  }
  return _open(name, _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}

int make(const char *name) {
  return _open(name, _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
               _S_IREAD | _S_IWRITE);
}

int open_channel(const char *name) {
  return _open(name, _O_WRONLY | _O_BINARY | _O_NOINHERIT);
}

int open_to_append(const char *name, bool cut) {
  return _open(name, _O_WRONLY | _O_BINARY | _O_NOINHERIT | (cut ? _O_TRUNC : _O_APPEND));
}

std::ptrdiff_t read(int fd, char *bytes, std::size_t count) {
  return _read(fd, bytes, static_cast<unsigned>(count > (1u << 30) ? (1u << 30) : count));
}

std::ptrdiff_t write(int fd, const char *bytes, std::size_t count) {
  return _write(fd, bytes, static_cast<unsigned>(count > (1u << 30) ? (1u << 30) : count));
}

bool sync(int fd) {
  return _commit(fd) == 0;
}

bool close(int fd) {
  return _close(fd) == 0;
}

// The rights of a folder are inherited by what is made in it; only the mark "read only" is a
// file's own.
bool take_mode(int, const char *name, const char *of) {
  const DWORD kind = GetFileAttributesA(of);
  if (kind != INVALID_FILE_ATTRIBUTES && (kind & FILE_ATTRIBUTE_READONLY) != 0)
    SetFileAttributesA(name, kind);
  return true;
}

bool link(const char *from, const char *to) {
  return with_patience([&] { return CreateHardLinkA(to, from, nullptr) != 0; });
}

bool rename(const char *from, const char *to) {
  return with_patience([&] {
    return MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  });
}

bool remove(const char *name) {
  return with_patience([&] { return DeleteFileA(name) != 0; });
}

bool sync_folder(const char *) {
  return true; // renames are written through
}

int lock(const char *name) {
  const int fd =
      _sopen(name, _O_RDWR | _O_CREAT | _O_BINARY | _O_NOINHERIT, _SH_DENYRW, _S_IREAD | _S_IWRITE);
  if (fd < 0 && errno == EACCES && GetFileAttributesA(name) != INVALID_FILE_ATTRIBUTES)
    errno = EWOULDBLOCK;
  return fd;
}

EntryKind entry_kind(const char *name, bool follow) {
  const DWORD kind = GetFileAttributesA(name);
  if (kind == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
                   error == ERROR_INVALID_NAME || error == ERROR_BAD_PATHNAME
               ? EntryKind::none
               : EntryKind::unknown;
  }
  if ((kind & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && !follow)
    return EntryKind::link;
  return (kind & FILE_ATTRIBUTE_DIRECTORY) != 0 ? EntryKind::folder : EntryKind::file;
}

bool is_protected(const char *name) {
  const DWORD kind = GetFileAttributesA(name);
  return kind != INVALID_FILE_ATTRIBUTES && (kind & FILE_ATTRIBUTE_READONLY) != 0;
}

} // namespace velora::system_files

std::FILE *velora::stream_of(int fd, const char *mode) {
  return _fdopen(fd, mode);
}
