// Text files as the file built-ins see them: characters with every kind of line end read as "\n",
// lines and words of bounded or unbounded length, and output that is kept only when it is whole.
// Knows nothing of expressions.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

// A file's name has fewer than 80 characters; 1 when `name` fits, else a message and 0.
inline constexpr std::size_t kFileNameSize = 80;
int file_name_fits(std::string_view name);

struct FileCloser {
  void operator()(std::FILE *fp) const { std::fclose(fp); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// Opens a file for reading; null when it cannot be read (a folder cannot).
FileHandle open_text(const char *name);

// The next character, a carriage return before a newline being passed over; EOF at the end. A file
// that has grown since its end was met is read on.
int read_char(std::FILE *fp);

// Reads up to and including the next newline, at most `most` characters (0 for any number). NUL
// bytes, which no string can hold, are passed over. 0 at the end of the file.
int read_line(std::FILE *fp, std::string &line, std::size_t most);

// Reads the next word between blanks, at most `most` characters of it. 0 at the end of the file.
int read_word(std::FILE *fp, std::string &word, std::size_t most);

// How `name` may be written: "w" to create or, for a name ending in ".tmp", to overwrite; "a" to
// append for one ending in ".add". Null, after the safety message, for any other existing file.
const char *output_mode(const char *name);

// Reads the lines of one file, without their line ends and NUL bytes, and counts them.
class LineSource {
public:
  LineSource() = default;
  explicit LineSource(const char *name);
  bool is_open() const { return file_ != nullptr; }
  // 1 with the next line in `line`, 0 at the end. A last line without line end counts.
  int next(std::string &line);
  std::int64_t lines_read() const { return count_; }

private:
  int fill();
  FileHandle file_;
  std::vector<char> buffer_; // bytes from at_ to end_ are still to be read
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  std::int64_t count_ = 0;
};

// A file being written as a whole. Unless it is committed, what was written is taken back: a new
// or overwritten file is removed, an appended one cut back to its old length.
class LineSink {
public:
  LineSink() = default;
  ~LineSink();
  LineSink(const LineSink &) = delete;
  LineSink &operator=(const LineSink &) = delete;
  // Opens `name` under the safety rule; 0, after a message, when it may not or cannot be written.
  int open(const std::string &name);
  // Writes the text and a line end; 0 when the disk does not take it.
  int write_line(std::string_view line);
  // Closes the file and keeps it; 0, after a message, when not all of it could be written.
  int commit();

private:
  void take_back();
  FileHandle file_;
  std::string name_;
  bool appending_ = false;
  std::int64_t old_length_ = -1; // of a file appended to, -1 when it is not known
  bool failed_ = false;
};

// 1 when both names lead to the same existing file.
int same_file(const std::string &one, const std::string &other);

} // namespace velora
