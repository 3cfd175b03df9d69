// Replacing files so that at every instant a whole version stands under the name.
//
// What is new is written into a hidden file beside the old one and forced to the disk; then it
// takes the name in one step. A writer uses it like this:
//
//   SafeFile out(name);
//   if (out.open()) {
//     out.write(head);
//     out.printf("%d\n", count);   // nothing needs checking on the way
//   }
//   if (out.replace() != SaveOutcome::saved)
//     ... out.reason() says why, with the path ...
//
// The files of a database keep the version before as NAME.bak, and several of them can be replaced
// together (file_set.h). Nothing else is kept, so files of the user's own beside NAME stay as they
// are.
//
// A symbolic link stays, and the file that it leads to is replaced. A device or a pipe is written
// to as it is. An object that is dropped without replace(), also by an abandoned command, leaves
// everything as it was.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/file_calls.h"
#include "platform/file_stamp.h"
#include "platform/response.h"
#include "platform/temp_names.h"
#include "platform/whole_file.h"

namespace velora {

// How many bytes are collected before they are written; tests make it small.
extern std::size_t gFileChunk;

enum class SaveOutcome {
  saved,           // the new content stands under the name
  cannot_open,     // the new content could not be created; nothing changed
  cannot_write,    // it could not be written whole (a full disk); nothing changed
  cannot_keep_old, // the old file could not become the backup; the old file is untouched
  cannot_replace   // the new file could not take the name; the old one stands
};

// A file that is being made under a hidden name. Gone again unless it took a name or was kept.
class HiddenFile {
public:
  HiddenFile() = default;
  ~HiddenFile();
  HiddenFile(const HiddenFile &) = delete;
  HiddenFile &operator=(const HiddenFile &) = delete;
  // Makes it; it cannot be there yet.
  bool make(const std::string &name);
  bool write(std::string_view bytes) const;
  // Gives it the rights of `of`, forces it to the disk and closes it.
  bool finish(const std::string &of);
  // The same, but for its owner alone, as it was made.
  bool finish_private();
  // Lets it take the place of `name`.
  bool take(const std::string &name);
  // It is somebody else's to remove from now on.
  void keep() { made_ = false; }
  [[nodiscard]] const std::string &name() const { return name_; }

private:
  bool close();
  std::string name_;
  int fd_ = -1;
  bool made_ = false;
};

class SafeFile {
public:
  explicit SafeFile(std::string name);
  ~SafeFile();
  SafeFile(const SafeFile &) = delete;
  SafeFile &operator=(const SafeFile &) = delete;

  // Starts the new content. On false replace() says what was wrong; writing does nothing.
  bool open();
  void write(std::string_view bytes);
  void printf(const char *format, ...) VELORA_PRINTF(2, 3);
  // Completes the new content and puts it in the place of the old. Called once.
  SaveOutcome replace();

  [[nodiscard]] const std::string &name() const { return name_; }
  // What went wrong first, in words and with its path: "x.svg: No space left on device".
  [[nodiscard]] std::string reason() const;
  // The same as the system's number; 0 when nothing went wrong.
  [[nodiscard]] int error() const { return error_; }

private:
  void fail(const std::string &path);
  void flush_chunk();
  bool finish_channel();

  std::string name_;   // as the user gave it
  std::string target_; // where its links lead
  bool channel_;       // a device or a pipe, written to as it is
  int channel_fd_ = -1;
  HiddenFile hidden_;
  std::string chunk_;
  bool opened_ = false;
  bool failed_ = true;
  std::string reason_;
  int error_ = 0;
};

// Asks before a file whose owner has taken the right to write away is replaced. True to go on, also
// when it is no such file.
bool may_replace_protected(const std::string &name);

// Writes `text` as the whole of `name`; false with the cause in `reason`.
bool write_whole_file(const std::string &name, std::string_view text, std::string &reason);
// The same, telling the cause in a note.
bool write_or_tell(const std::string &name, std::string_view text);

} // namespace velora
