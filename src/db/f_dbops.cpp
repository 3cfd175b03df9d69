// Creates, reads, rewrites and forgets the database file. Writing goes through memory and the safe
// replacement of files, so a failed or interrupted commit leaves the old file whole. A file that
// could not be read to its end, or not without errors, is copied aside before it is replaced:
// what the parser skipped is in no symbol and would be lost.
#include "db/f_dbops.h"

#include <cerrno>
#include <utility>

#include "core/symbols.h"
#include "db/commit.h"
#include "db/needs.h"
#include "db/pair_file.h"
#include "db/removal.h"
#include "db/vel_util.h"
#include "editor/model/wininfo.h"
#include "eval/needs.h"
#include "front/parse.h"
#include "front/parser.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trust.h"

namespace velora {

std::string gDDB_basename;
std::string Db_f_name;
int Db_file = 0;

namespace {

// The file as it was when this program last read or wrote it.
FileStamp seen;
// The text of the open file when something in it could not be read, else empty.
std::string damaged_text;
bool written = false;

void forget_file() {
  Db_file = 0;
  Db_f_name.clear();
  seen = {};
  damaged_text.clear();
  written = false;
}

// What an opening that is abandoned leaves behind, for the return point to settle.
struct CutOffOpening {
  bool met = false;
  bool takes_back = false;
  std::string file;
};
CutOffOpening cut_off;
int openings = 0; // that are being read, one inside of another

bool is_user_symbol(const symbol *s) {
  return (s->stype & (kBuiltinBit | kSystemBit)) == 0;
}

// What the user has drawn counts as much as what is in the code.
bool memory_is_empty() {
  if (gWinInfo != nullptr)
    return false;
  for (const symbol *s = Symbol_table; s != nullptr; s = s->next)
    if (is_user_symbol(s))
      return false;
  return true;
}

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
bool read_database(const std::string &text) {
  const int errors = gParseErrors;
  bool whole = true;
  {
    const DatabaseReading reading;
    const FileSource source(text, Db_f_name);
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

// Writes the file aside as it was read before it is replaced when part of it is in no symbol.
// 1 or 0.
int keep_damaged() {
  if (!damaged_text.empty() && !keep_damaged_copy(Db_f_name, damaged_text))
    return 0;
  damaged_text.clear();
  return 1;
}

// Asks `question` once for the file as it is now; what is agreed to is known from then on.
bool overwrites_after_question(const std::string &question, const char *button) {
  constexpr int kOverwrite = 1;
  if (PromptUser(question, {button, "Cancel"}) != kOverwrite)
    return false;
  seen = stamp_of(Db_f_name);
  return true;
}

} // namespace

OpeningGuard::OpeningGuard(std::string file, Means means)
    : file_(std::move(file)), outermost_(openings == 0), forgets_(means == Means::open),
      takes_back_(means == Means::open && memory_is_empty()) {
  ++openings;
}

OpeningGuard::~OpeningGuard() {
  --openings;
  if (done_ || !outermost_)
    return;
  cut_off.met = true;
  cut_off.takes_back = takes_back_;
  std::swap(cut_off.file, file_);
  if (!forgets_)
    return;
  forget_file();
  Unset_DDB_name();
}

std::string database_file(const std::string &base) {
  const std::string usual = base + File_ext;
  const std::string upper = base + ".DDB";
  return !file_exists(usual) && file_exists(upper) ? upper : usual;
}

std::string current_database_file() {
  if (!Db_f_name.empty() || gDDB_basename.empty())
    return Db_f_name;
  return database_file(gDDB_basename);
}

std::string open_database_file() {
  return Db_f_name;
}

int fdb_create_db(const std::string &name) {
  const std::string file_name = database_file(name);
  if (file_exists(file_name)) {
    DisplayResponsef("Database: %s already exists\n", name.c_str());
    return 0;
  }
  std::string reason;
  constexpr const char *kEmptyDatabase = "\n;\n";
  if (!write_whole_file(file_name, kEmptyDatabase, reason)) {
    DisplayResponsef("Failed to create database: %s\n", file_name.c_str());
    show_note("note: " + reason);
    return 0;
  }
  note_own_text(kEmptyDatabase);
  DisplayResponsef("Created: %s\n", file_name.c_str());
  setVeloraEye(file_name);
  return 1;
}

void report_unreadable(const std::string &name, int error) {
  const std::string file_name = database_file(name);
  DisplayResponsef("Failed to open %s\n", file_name.c_str());
  if (error != ENOENT)
    show_note("note: " + file_error_text(file_name, error));
  else if (file_exists(file_name + ".bak"))
    show_note("note: " + file_name + ".bak holds the version before the last save");
}

int fdb_open_db(const std::string &name) {
  if (Db_file != 0) {
    DisplayResponse("Db file already open\n");
    return 0;
  }
  if (!settle_cut_off_save(name))
    return 0;
  std::string text;
  if (!read_plain_file(database_file(name), text)) {
    report_unreadable(name, errno);
    return 0;
  }
  return fdb_open_text(name, text);
}

int fdb_open_text(const std::string &name, const std::string &text) {
  if (Db_file != 0) {
    DisplayResponse("Db file already open\n");
    return 0;
  }
  OpeningGuard opening(database_file(name), OpeningGuard::Means::open);
  Db_f_name = database_file(name);
  Db_file = 1;
  seen = stamp_of_text(text);
  note_database_read(Db_f_name, text);
  DisplayResponsef("Loading %s. . .", Db_f_name.c_str());
  if (!read_database(text) && Db_file != 0)
    damaged_text = text;
  DisplayResponse(" Loaded\n");
  opening.done();
  return 1;
}

void attach_database(const std::string &name, const std::string &text) {
  Db_f_name = database_file(name);
  Db_file = 1;
  seen = stamp_of_text(text);
}

bool db_is_as_left() {
  const FileStamp now = stamp_of(Db_f_name);
  return !now.exists || now == seen;
}

int may_overwrite_db() {
  const bool wanted =
      db_is_as_left() ||
      overwrites_after_question(Db_f_name + " was changed by another program. Overwrite it?",
                                "Overwrite");
  return wanted && may_replace_protected(Db_f_name) ? 1 : 0;
}

int may_save_db() {
  if (!Db_f_name.empty() && !file_exists(Db_f_name) &&
      !overwrites_after_question(Db_f_name + " is gone. Write it anew?", "Write"))
    return 0;
  return may_overwrite_db() != 0 && keep_damaged() != 0 ? 1 : 0;
}

void report_commit(const SetOutcome &end) {
  if (end.outcome == SaveOutcome::cannot_keep_old)
    DisplayResponsef("Can't remove old backup file %s.bak\n", link_target(Db_f_name).c_str());
  else
    DisplayResponsef("Can't write to %s\n", Db_f_name.c_str());
  show_note("note: " + end.reason);
}

bool db_was_written() {
  return written;
}

void note_commit(const std::string &text) {
  Db_file = 1;
  seen = stamp_of_text(text);
  written = true;
  note_own_text(text);
  setVeloraEye(Db_f_name);
}

int fdb_commit_db() {
  if (Db_f_name.empty()) {
    DisplayResponse("No database is open\n");
    return 0;
  }
  if (!file_exists(Db_f_name)) {
    DisplayResponsef("Can't remove old backup file %s.bak\n", link_target(Db_f_name).c_str());
    return 0;
  }
  // What another program was cut off at saving is finished first: its marker must not outlive this.
  std::string base;
  Make_Base_Name(Db_f_name, base);
  if (!settle_cut_off_save(base) || may_overwrite_db() == 0 || keep_damaged() == 0)
    return 0;
  const FileLock lock(set_lock_name(Db_f_name));
  if (lock.busy()) {
    orvek_errorf("Sorry! Another program is saving %s\n", Db_f_name.c_str());
    return 0;
  }
  const std::string text = database_text();
  const SetOutcome end = replace_files({{Db_f_name, text}}, "");
  if (end.outcome != SaveOutcome::saved) {
    report_commit(end);
    return 0;
  }
  note_commit(text);
  return 1;
}

int fdb_close_db() {
  clear_user_symbols();
  note_databases_closed();
  free_linkages();
  forget_file();
  Unset_DDB_name();
  Unset_DDB_Dir();
  return 1;
}

void settle_cut_off_opening() {
  if (!std::exchange(cut_off.met, false))
    return;
  if (!cut_off.takes_back) {
    gSymbolTableChanged = 1; // what was read is in no database that is open
    gSegsChanged = 1;
    orvek_errorf("%s was read in part; what was read of it stays in memory\n",
                 cut_off.file.c_str());
    return;
  }
  clear_user_symbols();
  note_databases_closed();
  FreeAllPictures();
  forget_segment_files();
  gSymbolTableChanged = 0;
  gSegsChanged = 0;
  orvek_errorf("%s is not open; nothing of it is kept\n", cut_off.file.c_str());
}

} // namespace velora
