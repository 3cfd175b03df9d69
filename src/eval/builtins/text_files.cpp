// Reading and writing of text files for the file built-ins. Files are read as bytes on every
// system, so that line ends mean the same everywhere.
#include "eval/builtins/text_files.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "core/events.h"
#include "platform/file_calls.h"
#include "platform/response.h"
#include "platform/trust.h"
#include "platform/whole_file.h"

namespace velora {

namespace fs = std::filesystem;

int file_name_fits(std::string_view name) {
  if (name.size() < kFileNameSize)
    return 1;
  DisplayResponsef("File name too long, at most %d characters\n",
                   static_cast<int>(kFileNameSize) - 1);
  return 0;
}

FileHandle open_text(const char *name) {
  const int fd = open_to_read(name);
  if (fd < 0) {
    poll_user_events();
    return nullptr;
  }
  FileHandle file(stream_of(fd, "rb"));
  // Some files can be opened, but not read; the look at the first byte tells.
  int first = std::getc(file.get());
  if (first == EOF && std::ferror(file.get()))
    return nullptr;
  if (first != EOF)
    std::ungetc(first, file.get());
  return file;
}

namespace {

constexpr std::size_t kReadAhead = std::size_t{1} << 16;

// The next byte, looking again at a file whose end was met before.
int read_byte(std::FILE *fp) {
  if (std::feof(fp))
    std::clearerr(fp);
  return std::getc(fp);
}

bool is_blank_byte(int c) {
  return c < 0x80 && std::isspace(c) != 0;
}

void append_without_nuls(std::string &line, std::string_view bytes) {
  const std::size_t old = line.size();
  line += bytes;
  if (bytes.find('\0') != std::string_view::npos)
    line.erase(std::remove(line.begin() + static_cast<std::ptrdiff_t>(old), line.end(), '\0'),
               line.end());
}

bool ends_in(std::string_view name, std::string_view ending) {
  return name.size() >= ending.size() && name.substr(name.size() - ending.size()) == ending;
}

} // namespace

int read_char(std::FILE *fp) {
  int c = read_byte(fp);
  if (c != '\r')
    return c;
  int next = read_byte(fp);
  if (next == '\n')
    return next;
  if (next != EOF)
    std::ungetc(next, fp);
  return c;
}

int read_line(std::FILE *fp, std::string &line, std::size_t most) {
  line.clear();
  while (most == 0 || line.size() < most) {
    int c = read_char(fp);
    if (c == EOF)
      break;
    if (c == '\0') {
      CheckForUserEvents(800);
      continue;
    }
    line += static_cast<char>(c);
    if (c == '\n')
      break;
  }
  return line.empty() ? 0 : 1;
}

int read_word(std::FILE *fp, std::string &word, std::size_t most) {
  word.clear();
  int c = read_byte(fp);
  while (c != EOF && (is_blank_byte(c) || c == '\0')) {
    CheckForUserEvents(800);
    c = read_byte(fp);
  }
  while (c != EOF && !is_blank_byte(c)) {
    if (c != '\0')
      word += static_cast<char>(c);
    if (word.size() >= most)
      return 1;
    c = read_byte(fp);
  }
  if (c != EOF)
    std::ungetc(c, fp);
  return word.empty() ? 0 : 1;
}

namespace {

// Where a link may be followed to: inside its own folder always, elsewhere when the user says so.
bool may_follow(const std::string &name, const std::string &target) {
  if (gTrustAll || lies_in(resolved_path(target), folder_of(name)))
    return true;
  constexpr int kFollow = 1;
  const std::string place = resolved_path(target);
  const std::string question =
      format_text("%s leads out of its folder to %s. Write there?", name.c_str(), place.c_str());
  if (gPersonAnswers && PromptUser(question, {"Write", "Cancel"}) == kFollow)
    return true;
  refuse_effect("to write " + name + ", which leads out of its folder to " + place);
  return false;
}

// Opens what stands under `target` as its kind allows, or makes it; -1 with errno set.
int open_for_output(const std::string &target, bool append) {
  switch (entry_kind(target)) {
  case EntryKind::none: {
    const int fd = make_file(target);
    if (fd >= 0)
      take_mode(fd, target, {});
    return fd;
  }
  case EntryKind::other:
    return open_channel(target);
  default:
    return open_to_append(target, !append);
  }
}

} // namespace

int output_is_safe(const std::string &name) {
  if (!file_exists(name) || may_write_again(name))
    return 1;
  DisplayResponse("Safer not to write onto an existing file\n");
  return 0;
}

FileHandle open_output(const std::string &name, char &mode) {
  const bool append = ends_in(name, ".add");
  errno = 0;
  if (output_is_safe(name) == 0)
    return nullptr;
  mode = append && file_exists(name) ? 'a' : 'w';
  const std::string target = link_target(name);
  if (target != name && !may_follow(name, target)) {
    errno = 0;
    return nullptr;
  }
  const int fd = open_for_output(target, append);
  const int error = errno;
  if (fd >= 0)
    return FileHandle(stream_of(fd, append ? "ab" : "wb"));
  poll_user_events(); // who stopped the waiting for a reader knows why it ended
  errno = error;
  return nullptr;
}

LineSource::LineSource(const char *name)
    : file_(open_text(name)), buffer_(file_ == nullptr ? 0 : kReadAhead) {}

int LineSource::fill() {
  CheckForUserEvents(800);
  at_ = 0;
  end_ = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
  if (end_ == 0 && std::ferror(file_.get()) != 0)
    error_ = errno;
  return end_ > 0 ? 1 : 0;
}

bool LineSource::failed(const std::string &name) const {
  if (error_ == 0)
    return false;
  DisplayResponsef("Cannot read all of file %s\n", name.c_str());
  show_note("note: " + file_error_text(name, error_));
  return true;
}

int LineSource::next(std::string &line) {
  CheckForUserEvents(800);
  line.clear();
  bool met_any = false, met_end = false;
  while (!met_end && (at_ < end_ || fill())) {
    met_any = true;
    const char *from = buffer_.data() + at_;
    const void *newline = std::memchr(from, '\n', end_ - at_);
    met_end = newline != nullptr;
    std::size_t count =
        met_end ? static_cast<std::size_t>(static_cast<const char *>(newline) - from) : end_ - at_;
    append_without_nuls(line, {from, count});
    at_ += count + (met_end ? 1 : 0);
  }
  if (met_end && line.ends_with('\r'))
    line.pop_back();
  count_ += met_any ? 1 : 0;
  return met_any ? 1 : 0;
}

LineSink::~LineSink() {
  if (file_ != nullptr)
    take_back();
}

int LineSink::open(const std::string &name) {
  std::error_code error;
  std::uintmax_t length = fs::file_size(name, error);
  old_length_ = error ? -1 : static_cast<std::int64_t>(length);
  failed_ = false;
  name_ = name;
  char mode = 'w';
  file_ = open_output(name, mode);
  if (file_ == nullptr && errno != 0) {
    const std::string reason = file_error_text(name, errno);
    DisplayResponsef("Cannot write to file %s\n", name.c_str());
    show_note("note: " + reason);
  }
  appending_ = mode == 'a';
  return file_ == nullptr ? 0 : 1;
}

int LineSink::write_line(std::string_view line) {
  std::FILE *fp = file_.get();
  if (std::fwrite(line.data(), 1, line.size(), fp) != line.size() || std::putc('\n', fp) == EOF)
    failed_ = true;
  return failed_ ? 0 : 1;
}

int LineSink::commit() {
  if (std::fflush(file_.get()) != 0)
    failed_ = true;
  if (failed_) {
    DisplayResponsef("Cannot write all of file %s\n", name_.c_str());
    take_back();
    return 0;
  }
  file_.reset();
  return 1;
}

void LineSink::take_back() {
  file_.reset();
  std::error_code ignored;
  if (!appending_)
    fs::remove(name_, ignored);
  else if (old_length_ >= 0)
    fs::resize_file(name_, static_cast<std::uintmax_t>(old_length_), ignored);
}

bool may_write_again(const std::string &name) {
  return ends_in(name, ".tmp") || ends_in(name, ".add");
}

int same_file(const std::string &one, const std::string &other) {
  std::error_code error;
  return one == other || (fs::equivalent(one, other, error) && !error) ? 1 : 0;
}

} // namespace velora
