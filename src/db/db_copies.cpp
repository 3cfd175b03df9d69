// Copies of the two files of a database in the line-end convention of another machine.
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>

#include "db/f_dbops.h"
#include "db/needs.h"
#include "db/vel_dbop.h"
#include "editor/model/seg_file.h"
#include "platform/response.h"

namespace velora {

namespace {

struct Closer {
  void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

// Reads one line without its end; false at the end of the file. Lines of any length are read whole,
// so that no text is broken.
bool read_line(std::FILE *file, std::string &line) {
  line.clear();
  for (int c = std::getc(file); c != EOF; c = std::getc(file)) {
    if (c == '\n')
      return true;
    line += static_cast<char>(c);
  }
  return !line.empty();
}

// Copies what is left of `from`; true when all of it was written.
bool copy_lines(std::FILE *from, File to, char line_end) {
  std::string line;
  while (read_line(from, line)) {
    line += line_end;
    if (std::fwrite(line.data(), 1, line.size(), to.get()) != line.size())
      return false;
  }
  return std::ferror(from) == 0 && std::fclose(to.release()) == 0;
}

int copy_as_text(const std::string &source, const std::string &target) {
  const File from(std::fopen(source.c_str(), "r"));
  if (from == nullptr) {
    DisplayResponsef("Can't open %s for read\n", source.c_str());
    return 0;
  }
  File to(std::fopen(target.c_str(), "w"));
  bool copied = to != nullptr;
  for (int c = copied ? std::getc(from.get()) : EOF; copied && c != EOF; c = std::getc(from.get()))
    copied = std::putc(c, to.get()) != EOF;
  if (copied && std::fclose(to.release()) == 0)
    return 1;
  DisplayResponsef("Can't open %s for write\n", target.c_str());
  return 0;
}

int copy_for_mac(const std::string &source, const std::string &target) {
  constexpr char kCarriageReturn = '\r';
  const File from(std::fopen(source.c_str(), "r"));
  if (from == nullptr) {
    DisplayResponsef("Can't open %s for read\n", source.c_str());
    return 0;
  }
  errno = 0;
  File to(std::fopen(target.c_str(), "wb"));
  if (to != nullptr && copy_lines(from.get(), std::move(to), kCarriageReturn))
    return 1;
  DisplayResponsef("Can't open %s for write: Error %d\n", target.c_str(), errno);
  return 0;
}

} // namespace

int DataBaseCopy() {
  const std::string copy = gDDB_basename + ".2";
  DisplayResponsef("Saving a copy as %s.2\n", gDDB_basename.c_str());
  return copy_as_text(gDDB_basename + File_ext, copy + File_ext) != 0 &&
         copy_as_text(gDDB_basename + ".seg", copy + ".seg") != 0;
}

int PCFormat() {
  return DataBaseCopy();
}

int MacFormat() {
  const std::string copy = gDDB_basename + "MAC";
  DisplayResponsef("Saving a copy as %sMAC\n", gDDB_basename.c_str());
  return copy_for_mac(gDDB_basename + File_ext, copy + File_ext) != 0 &&
         copy_for_mac(gDDB_basename + ".seg", copy + ".seg") != 0;
}

void BackupDataBase() {
  constexpr int kMac = 1;
  constexpr int kPc = 2;
  const int format = PromptUser("Choose File Format", {"Apple Macintosh", "MS DOS", "Cancel"});
  if (format == kMac)
    MacFormat();
  else if (format == kPc)
    PCFormat();
  else
    return;
  DisplayResponse("DataBase Copy Saved\n");
}

int oldBackupDataBase() {
  if (BackupOrvekCode() == 0 || SaveAll(gDDB_basename + ".seg") == 0)
    return 0;
  DisplayResponsef("Picture segments saved in file %s.seg\n", gDDB_basename.c_str());
  return 1;
}

} // namespace velora
