// The database file: create, open, commit, close. The built-ins of these names and the menu
// operations call it. One database can be open at a time. Every failure has printed its message.
#pragma once

#include <string>

#include "platform/file_set.h"

namespace velora {

inline constexpr const char *File_ext = ".ddb";

// Path of the current database without extension; empty when none is current.
extern std::string gDDB_basename;
// Name of the database file; empty when none is open.
extern std::string Db_f_name;
// Non-zero from a successful open until the database is closed.
extern int Db_file;

// The text file of a base name: NAME.ddb, or NAME.DDB where only that stands.
std::string database_file(const std::string &base);
// The text file of the current database; empty when none is.
std::string current_database_file();

// Creates `name`.ddb as an empty database. 1 or 0.
int fdb_create_db(const std::string &name);

// Reads `name`.ddb, which holds `text`, into the symbol table. 1 or 0 as for fdb_open_db.
int fdb_open_text(const std::string &name, const std::string &text);
// Makes `name`.ddb, which holds `text`, the open database without reading its text.
void attach_database(const std::string &name, const std::string &text);
// Tells that `name`.ddb cannot be read, and why.
void report_unreadable(const std::string &name, int error);

// Reads `name`.ddb into the symbol table. 1 when it could be opened: what cannot be read in it is
// reported, and the file is kept aside as it is before it is first rewritten. 0 otherwise.
int fdb_open_db(const std::string &name);

// Rewrites the file named Db_f_name from the symbol table; the old file becomes its ".bak". Asks
// first when another program changed the file since it was read or written. 1 or 0.
int fdb_commit_db();

// 1 when the database file may be rewritten: it is as this program left it, or the user wants it
// overwritten, which is then not asked again. A write-protected file is asked about too.
int may_overwrite_db();
// The same for a save of text and pictures, which also writes a deleted file anew if the user
// wants, and keeps aside what could not be read of it.
int may_save_db();
// True when the file holds what this program read, wrote or was told to overwrite.
bool db_is_as_left();
// Tells how replacing the database file failed.
void report_commit(const SetOutcome &end);
// True when this program has written the text of the open database since it was opened.
bool db_was_written();
// Notes that the database file now holds `text`.
void note_commit(const std::string &text);

// Forgets the database and removes the user's symbols. Answers 1.
int fdb_close_db();

// Stands from the first picture or line of a database that is brought into memory to the last. When
// the reading does not come to its end (`done`), the database is forgotten, since half of one must
// not be written back over the whole one, and the return point settles what was read. One that
// stands inside of another does nothing.
class OpeningGuard {
public:
  // Reading `file` as `Means::open` makes it the current database; as `Means::include` it joins
  // what is open, which then stays open.
  enum class Means { open, include };
  OpeningGuard(std::string file, Means means);
  ~OpeningGuard();
  OpeningGuard(const OpeningGuard &) = delete;
  OpeningGuard &operator=(const OpeningGuard &) = delete;
  void done() { done_ = true; }

private:
  std::string file_;
  bool outermost_;
  bool forgets_;
  bool takes_back_;
  bool done_ = false;
};

// Called at the return point: when a reading was abandoned half way, takes back what it brought, or
// says what stays.
void settle_cut_off_opening();

} // namespace velora
