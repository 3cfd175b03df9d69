// Copies of the two files of a database in the line-end convention of another machine.
#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>

#include "db/f_dbops.h"
#include "db/needs.h"
#include "db/vel_dbop.h"
#include "editor/model/seg_file.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trust.h"

namespace velora {

namespace {

// The text with every line, the last one too, ending in a carriage return.
std::string with_carriage_returns(std::string text) {
  if (!text.empty() && text.back() != '\n')
    text += '\n';
  std::replace(text.begin(), text.end(), '\n', '\r');
  return text;
}

bool read_source(const std::string &source, std::string &text) {
  if (read_whole_file(source, text))
    return true;
  const std::string reason = file_error_text(source, errno);
  DisplayResponsef("Can't open %s for read\n", source.c_str());
  show_note("note: " + reason);
  return false;
}

// A copy is whole or absent; the one that stood there before stays until then.
int copy_as_text(const std::string &source, const std::string &target) {
  std::string text;
  std::string reason;
  if (!read_source(source, text))
    return 0;
  if (write_whole_file(target, text, reason))
    return 1;
  DisplayResponsef("Can't open %s for write\n", target.c_str());
  show_note("note: " + reason);
  return 0;
}

int copy_for_mac(const std::string &source, const std::string &target) {
  std::string text;
  std::string reason;
  if (!read_source(source, text))
    return 0;
  text = with_carriage_returns(std::move(text));
  SafeFile out(target);
  if (out.open())
    out.write(text);
  if (out.replace() == SaveOutcome::saved) {
    note_own_text(text);
    return 1;
  }
  reason = out.reason();
  DisplayResponsef("Can't open %s for write: Error %d\n", target.c_str(), out.error());
  show_note("note: " + reason);
  return 0;
}

// The segment file, or the variant of its name that stands.
std::string picture_source() {
  for (const char *ending : {".seg", ".segs", ".SEG", ".SEGS"})
    if (file_exists(gDDB_basename + ending))
      return gDDB_basename + ending;
  return gDDB_basename + ".seg";
}

} // namespace

int DataBaseCopy() {
  const std::string copy = gDDB_basename + ".2";
  DisplayResponsef("Saving a copy as %s.2\n", gDDB_basename.c_str());
  return copy_as_text(current_database_file(), copy + File_ext) != 0 &&
         copy_as_text(picture_source(), copy + ".seg") != 0;
}

int PCFormat() {
  return DataBaseCopy();
}

int MacFormat() {
  const std::string copy = gDDB_basename + "MAC";
  DisplayResponsef("Saving a copy as %sMAC\n", gDDB_basename.c_str());
  return copy_for_mac(current_database_file(), copy + File_ext) != 0 &&
         copy_for_mac(picture_source(), copy + ".seg") != 0;
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
  std::string name;
  if (BackupOrvekCode(name) == 0 || SaveAll(gDDB_basename + ".seg") == 0)
    return 0;
  DisplayResponsef("Picture segments saved in file %s.seg\n", gDDB_basename.c_str());
  return 1;
}

} // namespace velora
