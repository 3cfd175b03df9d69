// The database in the terminal program: opening the one named on the command line,
// and the question asked before the program ends. Called by main.
#pragma once

#include <string>

namespace velora {

// Opens the database named on the command line with its pictures. A picture file is not made where
// there is none; a file that is no database is loaded. 1 or 0.
int open_named_database(const std::string &name);

// Offers to save changes. 1 when the program may end. `typed`: a person answers, so code that
// belongs to no database is asked for too.
int leave_database(bool typed);

// True when a database is open or named.
bool database_is_current();

// Keeps what is unsaved for the next start and says where. 1, or 0 when it could not be kept.
int keep_unsaved_work();
// Offers what an earlier session left without a database. Answers 1.
int offer_unnamed();

// Commands of the shell, in the table of colon.cpp.
int colon_new(const std::string &argument);
int colon_open(const std::string &argument);
int colon_include(const std::string &argument);
int colon_save(const std::string &argument);
int colon_close(const std::string &argument);
int colon_copy(const std::string &argument);
int colon_status(const std::string &argument);
int colon_trust(const std::string &argument);

} // namespace velora
