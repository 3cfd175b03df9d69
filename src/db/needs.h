// What the database level needs from the levels above it, each with the one who defines it.
#pragma once

#include <string>

namespace velora {

struct WinInfo;

// Shows the picture of that name, or the data type that holds it, in the window of `wi` or in a new
// one when that is null: its first component when `type` is 0, else the component found.
// 1 when a picture was shown. Defined by the shell, by the editor in programs with windows.
int ShowGraphic(const char *name, int type, WinInfo *wi);

// Closes the language text windows, whose text is in the database now. Defined by the shell.
void FreeOrvekWindows();

// Asks where to, and saves the text of the language text windows there as NAME.ddb; 1 and `name`
// filled, or 0. Defined by the shell.
int BackupOrvekCode(std::string &name);

// Frees all sets of call links. Defined by network/links.
void free_linkages();

} // namespace velora
