// What the database level needs from the levels above it, each with the one who defines it.
#pragma once

namespace velora {

// Opens the picture of that name and component; `choose` non-zero lets the user choose among the
// pictures of the name. 1 when a picture was opened. Defined by the shell.
int ShowGraphic(const char *name, int component, int choose);

} // namespace velora
