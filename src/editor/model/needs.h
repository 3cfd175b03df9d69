// What the pictures need from the levels above them, each with the one who defines it.
#pragma once

#include <string>

namespace velora {

// Rebuilds the user menu of a kind: 1 functions, 2 data types, 3 network nodes; there is none of
// other kinds. Defined by editor/user_menus.
void ReSetUpUserMenus(int kind);

// Marks a file that the system created or rewrote as its own document. Defined by db/vel_util.
void setVeloraEye(const std::string &fname);

} // namespace velora
