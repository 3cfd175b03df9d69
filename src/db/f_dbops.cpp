// Creates, reads, rewrites and forgets the database file. Writing goes through memory and the safe
// replacement of files, so a failed or interrupted commit leaves the old file whole. A file that
// could not be read to its end, or not without errors, is copied aside before it is replaced:
// what the parser skipped is in no symbol and would be lost.
#include "db/f_dbops.h"

#include <cstdio>
#include <memory>

#include "db/commit.h"
#include "db/needs.h"
#include "db/removal.h"
#include "db/vel_util.h"
#include "front/parse.h"
#include "front/parser.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/response.h"
#include "platform/safe_file.h"

namespace velora {

std::string gDDB_basename;
std::string Db_f_name;
int Db_file = 0;

namespace {

// The file as it was when this program last read or wrote it.
FileStamp seen;
// The text of the open file when something in it could not be read, else empty.
std::string damaged_text;

struct Closer {
  void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

void forget_file() {
  Db_file = 0;
  Db_f_name.clear();
  seen = {};
  damaged_text.clear();
}

// Forgets the file again unless reading it came to its end: half a database must not be written
// back over the whole one.
class OpeningGuard {
public:
  OpeningGuard() = default;
  ~OpeningGuard() {
    if (!done_) {
      forget_file();
      Unset_DDB_name();
    }
  }
  OpeningGuard(const OpeningGuard &) = delete;
  OpeningGuard &operator=(const OpeningGuard &) = delete;
  void done() { done_ = true; }

private:
  bool done_ = false;
};

// An empty statement ends the reading of a file; text behind it has not been seen by the parser.
bool rest_is_empty() {
  if (pp_at_end != 0)
    return true;
  pp_get_token();
  if (pp_at_end != 0)
    return true;
  BeepMsgef(1, "%s:%ld: an empty statement ends the database here; the rest is not read\n",
            Db_f_name.c_str(), pp_line_number());
  return false;
}

// The text of a whole database ends with the `;` that closes its last section.
bool ends_with_section_end(const std::string &text) {
  constexpr const char *kBlanks = " \t\r\n";
  const std::size_t last = text.find_last_not_of(kBlanks);
  if (last == std::string::npos)
    return true;
  if (text[last] != ';')
    return false;
  const std::size_t before =
      last == 0 ? std::string::npos : text.find_last_not_of(" \t\r", last - 1);
  return before == std::string::npos || text[before] == '\n' || text[before] == ';';
}

// Runs the section parser over the database file. False when it left something out of `text`, which
// is what the file holds.
bool read_database(File file, const std::string &text) {
  const int errors = gParseErrors;
  bool whole = true;
  {
    const FileSource source(file.release(), Db_f_name);
    parse();
    whole = rest_is_empty();
  }
  if (whole && !ends_with_section_end(text)) {
    show_note("note: " + Db_f_name + ": the last section is not closed; the file may be cut off");
    whole = false;
  }
  if (gParseErrors == errors)
    return whole;
  BeepMsgef(0, "%s: %d statements could not be read\n", Db_f_name.c_str(), gParseErrors - errors);
  return false;
}

// A name that no file has: NAME.damaged, NAME.damaged.2, ...
std::string free_name_for_damaged() {
  const std::string stem = Db_f_name + ".damaged";
  std::string name = stem;
  for (int i = 2; file_exists(name); ++i)
    name = stem + "." + std::to_string(i);
  return name;
}

// Writes the file aside as it was read before it is replaced when part of it is in no symbol.
// 1 or 0.
int keep_damaged() {
  if (damaged_text.empty())
    return 1;
  SafeFile copy(free_name_for_damaged());
  if (copy.open())
    copy.write(damaged_text);
  if (copy.replace() != SaveOutcome::saved) {
    orvek_errorf("%s could not be read whole and cannot be kept as %s: %s\n", Db_f_name.c_str(),
                 copy.name().c_str(), copy.reason().c_str());
    return 0;
  }
  DisplayResponsef("What could not be read of %s is kept in %s\n", Db_f_name.c_str(),
                   copy.name().c_str());
  damaged_text.clear();
  return 1;
}

int report_save(SaveOutcome outcome, const SafeFile &file) {
  if (outcome == SaveOutcome::saved)
    return 1;
  if (outcome == SaveOutcome::cannot_keep_old)
    DisplayResponsef("Can't remove old backup file %s\n", file.backup_name().c_str());
  else
    DisplayResponsef("Can't write to %s\n", file.name().c_str());
  if (!file.reason().empty())
    show_note("note: " + file.reason());
  return 0;
}

} // namespace

int fdb_create_db(const std::string &name) {
  const std::string file_name = name + File_ext;
  if (file_exists(file_name)) {
    DisplayResponsef("Database: %s already exists\n", name.c_str());
    return 0;
  }
  SafeFile file(file_name);
  if (file.open())
    file.write("\n;\n");
  if (file.replace() != SaveOutcome::saved) {
    DisplayResponsef("Failed to create database: %s\n", file_name.c_str());
    if (!file.reason().empty())
      show_note("note: " + file.reason());
    return 0;
  }
  DisplayResponsef("Created: %s\n", file_name.c_str());
  setVeloraEye(file_name);
  return 1;
}

int fdb_open_db(const std::string &name) {
  if (Db_file != 0) {
    DisplayResponse("Db file already open\n");
    return 0;
  }
  const std::string file_name = name + File_ext;
  complete_save(file_name);
  const FileStamp before = stamp_of(file_name);
  std::string text;
  File file;
  if (read_whole_file(file_name, text))
    file.reset(std::fopen(file_name.c_str(), "r"));
  if (file == nullptr) {
    DisplayResponsef("Failed to open %s\n", file_name.c_str());
    if (file_exists(file_name + ".bak"))
      show_note("note: " + file_name + ".bak holds the version before the last save");
    return 0;
  }
  OpeningGuard opening;
  Db_f_name = file_name;
  Db_file = 1;
  seen = before;
  DisplayResponsef("Loading %s. . .", file_name.c_str());
  if (!read_database(std::move(file), text) && Db_file != 0)
    damaged_text = std::move(text);
  DisplayResponse(" Loaded\n");
  opening.done();
  return 1;
}

int may_overwrite_db() {
  const FileStamp now = stamp_of(Db_f_name);
  if (!now.exists || now == seen)
    return 1;
  constexpr int kOverwrite = 1;
  if (PromptUser(format_text("%s was changed by another program. Overwrite it?", Db_f_name.c_str()),
                 {"Overwrite", "Cancel"}) != kOverwrite)
    return 0;
  seen = now;
  return 1;
}

int fdb_commit_db() {
  if (Db_f_name.empty()) {
    DisplayResponse("No database is open\n");
    return 0;
  }
  SafeFile file(Db_f_name);
  if (!file_exists(Db_f_name)) {
    DisplayResponsef("Can't remove old backup file %s\n", file.backup_name().c_str());
    return 0;
  }
  if (may_overwrite_db() == 0 || keep_damaged() == 0)
    return 0;
  if (file.open())
    file.write(database_text());
  if (report_save(file.replace(), file) == 0)
    return 0;
  Db_file = 1;
  seen = stamp_of(Db_f_name);
  setVeloraEye(Db_f_name);
  return 1;
}

int fdb_close_db() {
  clear_user_symbols();
  free_linkages();
  forget_file();
  Unset_DDB_name();
  Unset_DDB_Dir();
  return 1;
}

} // namespace velora
