// Copies of the two files of a database in the line-end convention of another machine.
#include <algorithm>
#include <string>

#include "db/f_dbops.h"
#include "db/needs.h"
#include "db/pair_file.h"
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

int tell_unread(const std::string &source) {
  DisplayResponsef("Can't open %s for read\n", source.c_str());
  return 0;
}

// A copy is whole or absent; the one that stood there before stays until then.
int write_as_text(const std::string &target, const std::string &text) {
  std::string reason;
  if (write_whole_file(target, text, reason))
    return 1;
  DisplayResponsef("Can't open %s for write\n", target.c_str());
  show_note("note: " + reason);
  return 0;
}

int write_for_mac(const std::string &target, const std::string &plain) {
  const std::string text = with_carriage_returns(plain);
  SafeFile out(target);
  if (out.open())
    out.write(text);
  if (out.replace() == SaveOutcome::saved) {
    note_own_text(text);
    return 1;
  }
  DisplayResponsef("Can't open %s for write: Error %d\n", target.c_str(), out.error());
  show_note("note: " + out.reason());
  return 0;
}

// Copies both files of the current database under `copy`, read so that they belong together.
int copy_pair(const std::string &copy, int (*write)(const std::string &, const std::string &)) {
  PairTexts texts;
  if (!read_pair(gDDB_basename, texts))
    return 0;
  const std::string source = current_database_file();
  if (texts.text_error != 0) {
    tell_unread(source);
    show_note("note: " + file_error_text(source, texts.text_error));
    return 0;
  }
  if (write(copy + File_ext, texts.text) == 0)
    return 0;
  if (texts.pictures_kind != PicturesFound::whole)
    return tell_unread(texts.pictures_name);
  return write(copy + ".seg", texts.pictures);
}

} // namespace

int DataBaseCopy() {
  DisplayResponsef("Saving a copy as %s.2\n", gDDB_basename.c_str());
  return copy_pair(gDDB_basename + ".2", write_as_text);
}

int PCFormat() {
  return DataBaseCopy();
}

int MacFormat() {
  DisplayResponsef("Saving a copy as %sMAC\n", gDDB_basename.c_str());
  return copy_pair(gDDB_basename + "MAC", write_for_mac);
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
