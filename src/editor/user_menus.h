// The menus that hold names of the user: which there are, and where they stand. Read by the shell
// and by the programs with windows; what they show is made in user_menus.cpp. Whatever changes
// stored pictures and names together is a compound step, which rebuilds them at its end.
#pragma once

#include "platform/desk_menus.h"

namespace velora {

struct UserMenu {
  int kind;
  MenuBar bar;
  const char *label; // of the submenu
  const char *header;
  int first_command; // of the names; the header has the number before it
  bool types;        // holds data types, not functions
  bool serves;       // choosing a name does something; otherwise the names are grey
};

inline constexpr UserMenu kUserMenus[] = {
    {1, MenuBar::functions, "Functions", "User Functions :-", 9010, false, true},
    {2, MenuBar::datatype, "DataTypes", "User DataTypes :-", 10010, true, true},
    {3, MenuBar::network, "Choose Function Node", "User Functions :-", 11010, false, true},
};

// The user menu of a bar, or null.
constexpr const UserMenu *user_menu_of(MenuBar bar) {
  for (const UserMenu &menu : kUserMenus)
    if (menu.bar == bar)
      return &menu;
  return nullptr;
}

// Rebuilds all of them from the names that stand now.
void CreateUserMenus();

} // namespace velora
