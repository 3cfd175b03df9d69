// Names of the current database: its base name, its directory, the title of the console.
#pragma once

#include <string>

#include "platform/desk_windows.h"

namespace velora {

// The console's window; 0 in programs without windows. Set by the shell.
extern WindowId hControl;

// The name less ".ddb", ".DDB", ".seg", ".SEG", ".segs" or ".SEGS".
void Make_Base_Name(const std::string &name, std::string &base);
// Makes the name less ".ddb", ".DDB", ".seg" or ".segs" the base name of the current database, and
// the current directory its directory.
void Setup_Global_DDB_name(const std::string &name);
// No database is current.
void Unset_DDB_name();
// The directory of the database is that of the program's start again.
void Unset_DDB_Dir();
// Changes to the directory of the current database, which relative base names count from.
void ChangeToDDBDir();

// Titles the console "CONTROL [%s]" with the base name.
void SetControlWinName(const std::string &name);
// Called after every file that the system writes; marks it as the system's own where a file system
// keeps such marks.
void setVeloraEye(const std::string &fname);

} // namespace velora
