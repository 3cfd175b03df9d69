// Replacing a file so that at every instant a whole version of it stands under its name or under
// its ".bak". The database file and the segment file are both written through this.
//
// The new content goes to NAME.new beside the file and is forced to the disk; then the old file
// becomes NAME.bak and NAME.new becomes NAME. A writer uses it like this:
//
//   SafeFile out(name);
//   if (out.open()) {
//     out.write("tdec\n");
//     out.printf("\t%s ::= enum ;\n", text);   // nothing needs checking on the way
//   }
//   switch (out.replace()) { ... one message for each outcome ... }
//
// A symbolic link stays, and the file that it leads to is replaced. A device or a pipe is written
// to as it is.
//
// An object that is dropped without replace(), also by an abandoned command, removes NAME.new and
// leaves everything as it was. Failed writes are remembered and reported by replace().
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "platform/response.h"

namespace velora {

// The steps of a replacement, for faults made on purpose.
enum class FileStep { open, write, sync, close, remove, rename };

// Asked before every step when set. Answers -1 to go on; otherwise the step fails as on a full
// disk, a write after that many of its `bytes` have reached the file. The hook may also end the
// process, which is what a crash at that step looks like. Only tests set it.
extern int (*gFileFault)(FileStep step, std::size_t bytes);

// How many bytes are collected before they are written; tests make it small.
extern std::size_t gFileChunk;

// Non-zero forces content to the disk before a file is replaced (the default).
extern int gSyncFiles;

enum class SaveOutcome {
  saved,           // the new content stands under the name, the old under ".bak"
  cannot_open,     // the new content could not be created; nothing changed
  cannot_write,    // it could not be written whole (a full disk); nothing changed
  cannot_keep_old, // the old file could not become the backup; the old file is untouched
  cannot_replace   // the new file could not take the name; the old one was put back
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
  [[nodiscard]] std::string backup_name() const { return name_ + ".bak"; }
  // The system's text for what went wrong, such as "No space left on device".
  [[nodiscard]] std::string reason() const;

private:
  struct Closer {
    void operator()(std::FILE *file) const { std::fclose(file); }
  };
  void fail();
  void flush_chunk();
  bool finish_content();
  bool keep_old();
  bool take_name();

  std::string name_;
  bool channel_; // a device or a pipe, written to as it is
  std::string new_name_;
  std::string chunk_;
  std::unique_ptr<std::FILE, Closer> file_;
  SaveOutcome outcome_ = SaveOutcome::cannot_open;
  bool failed_ = true;
  bool made_ = false; // NAME.new exists and is ours
  int error_ = 0;
};

// Completes a replacement that was cut off between its two renames: when no file of that name
// stands but its NAME.new and NAME.bak do, the new content, which was whole before the old file was
// touched, takes the name. True when it did.
bool complete_replacement(const std::string &name);

// Reads a whole file into `text`; false when it cannot be opened or read.
bool read_whole_file(const std::string &name, std::string &text);

// True when a file or folder of that name exists.
bool file_exists(const std::string &name);

// A name among the temporary files that nothing else uses, with that ending; empty when there is no
// folder for them.
std::string new_temporary_name(const std::string &ending);

// What a file looked like when it was last read or written, to notice that another program has
// changed it since. A missing file has `exists` false.
struct FileStamp {
  bool exists = false;
  std::uintmax_t size = 0;
  std::int64_t time = 0;
  friend bool operator==(const FileStamp &, const FileStamp &) = default;
};
FileStamp stamp_of(const std::string &name);

} // namespace velora
