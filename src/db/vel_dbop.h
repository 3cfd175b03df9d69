// The database operations of the menus and of the terminal's colon commands: each pairs the
// database file with its picture file under one base name.
#pragma once

#include <string>

namespace velora {

// How many windows are open, the console included; kept by the shell. The question whether to save
// is asked only when there are two or more.
extern int gNumDocuments;

// A new database or another one is refused with "Db file already open\n" while one is open.

// Asks for a name, suggesting `orig`, and makes a new database of it. 1 when it was created.
int OpenNewDataBase(const std::string &orig);
// Makes `name` the current database: creates both files, loads the template, opens the database
// and commits it. 1 when it was created.
int CreateDataBase(const std::string &name);

// Opens the current database, or one that the user chooses when none is current: first its
// pictures, then its text. 1 when both were read.
int OpenDataBaseFile();
// Adds pictures and code of a database that the user chooses to what is in memory. 1 or 0.
int IncludeDataBase();
// The same for a named database.
int IncludeDataBaseFile(const std::string &name);
// Opens the text of the current database. 1 or 0.
int OpenDB();

// Saves both files and stays open. 1 when both were saved.
int SaveDataBase(const std::string &defaultmsg);
// Saves both files and closes. 0 when the text could not be committed, or when the pictures could
// not be saved and the user does not give the changes up; nothing is closed then.
int CommitClose();
// Asks whether to save changes before the database or the program is given up; `defaultmsg` names
// a database that has no name yet. 1 to go on, 0 to stop.
int SaveDBChanges(const std::string &defaultmsg);
// Closes the database, frees every picture and sets both changed flags.
void ResetVelora();
// Gives a current database that has no picture file an empty one; called when the program ends.
void CompleteDataBasePair();

// Saves a copy of both files in a line-end convention that the user chooses.
void BackupDataBase();
// Copies both files of the current database: as NAME.2.ddb with the platform's line ends, or as
// NAMEMAC.ddb with carriage returns. 1 when both were copied.
int DataBaseCopy();
int PCFormat();
int MacFormat();
// The older copy: the code through the language windows, the pictures beside it. 1 or 0.
int oldBackupDataBase();

} // namespace velora
