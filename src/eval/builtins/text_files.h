// Text files as the file built-ins see them: characters with every kind of line end read as "\n",
// lines and words of bounded or unbounded length, and output that is kept only when it is whole.
// Knows nothing of expressions.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_handle.h"

namespace velora {

// A file's name has fewer than 80 characters; 1 when `name` fits, else a message and 0.
inline constexpr std::size_t kFileNameSize = 80;
int file_name_fits(std::string_view name);

// Opens a file for reading; null when it cannot be read (a folder cannot). Ends the command when
// the user interrupts the waiting for a pipe.
FileHandle open_text(const char *name);

// 1 when `name` may be written: nothing stands there, or its ending is ".tmp" or ".add"; else 0
// after the safety message. What stands is taken from the directory entry, readable or not.
int output_is_safe(const std::string &name);

// Opens a file to be written: a new one exclusively, so that nothing that stands is written over;
// one whose name ends in ".tmp" from its beginning, in ".add" from its end. `mode` receives 'w' or
// 'a'. Null, with errno 0 after a message: the safety message for any other name under which
// something stands; or with errno set when the file cannot be opened. A link out of its folder is
// followed only when the user says so.
FileHandle open_output(const std::string &name, char &mode);

// The next character, a carriage return before a newline being passed over; EOF at the end. A file
// that has grown since its end was met is read on.
int read_char(std::FILE *fp);

// Reads up to and including the next newline, at most `most` characters (0 for any number). NUL
// bytes, which no string can hold, are passed over. 0 at the end of the file.
int read_line(std::FILE *fp, std::string &line, std::size_t most);

// Reads the next word between blanks, at most `most` characters of it. 0 at the end of the file.
int read_word(std::FILE *fp, std::string &word, std::size_t most);

// Reads the lines of one file, without their line ends and NUL bytes, and counts them.
class LineSource {
public:
  LineSource() = default;
  explicit LineSource(const char *name);
  bool is_open() const { return file_ != nullptr; }
  // 1 with the next line in `line`, 0 at the end. A last line without line end counts.
  int next(std::string &line);
  std::int64_t lines_read() const { return count_; }
  // True when reading ended at an error and not at the end of the file, which is then told.
  bool failed(const std::string &name) const;

private:
  int fill();
  FileHandle file_;
  std::vector<char> buffer_; // bytes from at_ to end_ are still to be read
  std::size_t at_ = 0;
  std::size_t end_ = 0;
  std::int64_t count_ = 0;
  int error_ = 0;
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

// True for a name that an existing file may be written under: it ends in ".tmp" or ".add".
bool may_write_again(const std::string &name);
// 1 when both names lead to the same existing file.
int same_file(const std::string &one, const std::string &other);

} // namespace velora
