// What the database level needs from the levels above it, each with the one who defines it.
#pragma once

namespace velora {

struct WinInfo;

// Shows the picture of that name, or the data type that holds it, in the window of `wi` or in a new
// one when that is null: its first component when `type` is 0, else the component found.
// 1 when a picture was shown. Defined by the shell, by the editor in programs with windows.
int ShowGraphic(const char *name, int type, WinInfo *wi);

// Closes the language text windows, whose text is in the database now. Defined by the shell.
void FreeOrvekWindows();

// Saves the text of the language text windows as a copy of the code; 1 on success. Defined by the
// shell.
int BackupOrvekCode();

// Frees all sets of call links. Defined by network/links.
void free_linkages();

} // namespace velora
