// The part of the shell that shows pictures and language text in windows, for programs that have no
// such windows: there is nothing to show and nothing to close.
#include "db/needs.h"

namespace velora {

int ShowGraphic(const char *, int, WinInfo *) {
  return 0;
}

void FreeOrvekWindows() {}

int BackupOrvekCode() {
  return 1;
}

} // namespace velora
