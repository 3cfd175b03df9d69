// Reading and writing of text files for the file built-ins. Files are read as bytes on every
// system, so that line ends mean the same everywhere.
#include "eval/builtins/text_files.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "core/events.h"
#include "platform/response.h"

namespace velora {

namespace fs = std::filesystem;

int file_name_fits(std::string_view name) {
  if (name.size() < kFileNameSize)
    return 1;
  DisplayResponsef("File name too long, at most %d characters\n",
                   static_cast<int>(kFileNameSize) - 1);
  return 0;
}

// A folder can be opened on some systems, but not read; the look at the first byte tells.
FileHandle open_text(const char *name) {
  FileHandle file(std::fopen(name, "rb"));
  if (file == nullptr)
    return file;
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

const char *output_mode(const char *name) {
  FileHandle existing(std::fopen(name, "r"));
  if (existing == nullptr || ends_in(name, ".tmp"))
    return "w";
  if (ends_in(name, ".add"))
    return "a";
  DisplayResponse("Safer not to write onto an existing file\n");
  return nullptr;
}

LineSource::LineSource(const char *name)
    : file_(open_text(name)), buffer_(file_ == nullptr ? 0 : kReadAhead) {}

int LineSource::fill() {
  CheckForUserEvents(800);
  at_ = 0;
  end_ = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
  return end_ > 0 ? 1 : 0;
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
  const char *mode = output_mode(name.c_str());
  if (mode == nullptr)
    return 0;
  appending_ = *mode == 'a';
  std::error_code error;
  std::uintmax_t length = fs::file_size(name, error);
  old_length_ = error ? -1 : static_cast<std::int64_t>(length);
  failed_ = false;
  name_ = name;
  file_.reset(std::fopen(name.c_str(), mode));
  if (file_ == nullptr)
    DisplayResponsef("Cannot write to file %s\n", name.c_str());
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

int same_file(const std::string &one, const std::string &other) {
  std::error_code error;
  return one == other || (fs::equivalent(one, other, error) && !error) ? 1 : 0;
}

} // namespace velora
