// What the pictures need from the levels above them, each with the one who defines it.
#pragma once

namespace velora {

// Rebuilds the user menu of a kind: 1 functions, 2 data types, 3 network nodes, 5 the language
// window. Defined by editor/user_menus.
void ReSetUpUserMenus(int kind);

} // namespace velora
