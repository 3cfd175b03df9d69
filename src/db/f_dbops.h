// The database file: create, open, commit, close. The built-ins of these names and the menu
// operations call it. One database can be open at a time. Every failure has printed its message.
#pragma once

#include <string>

namespace velora {

inline constexpr const char *File_ext = ".ddb";

// Path of the current database without extension; empty when none is current.
extern std::string gDDB_basename;
// Name of the database file; empty when none is open.
extern std::string Db_f_name;
// Non-zero from a successful open until the database is closed.
extern int Db_file;

// Creates `name`.ddb as an empty database. 1 or 0.
int fdb_create_db(const std::string &name);

// Reads `name`.ddb into the symbol table. 1 when it could be opened: what cannot be read in it is
// reported, and the file is kept aside as it is before it is first rewritten. 0 otherwise.
int fdb_open_db(const std::string &name);

// Rewrites the file named Db_f_name from the symbol table; the old file becomes its ".bak". Asks
// first when another program changed the file since it was read or written. 1 or 0.
int fdb_commit_db();

// 1 when the database file may be rewritten: it is as this program left it, or the user wants it
// overwritten, which is then not asked again.
int may_overwrite_db();

// Forgets the database and removes the user's symbols. Answers 1.
int fdb_close_db();

} // namespace velora
