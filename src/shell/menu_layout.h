// Where the commands stand in the menus: for each menu bar its menus, and for each menu its items
// in order. Labels and accelerators come from the menu table. Read by desktops that make their
// menus at run time, and by the test that holds the resource script to it.
#pragma once

#include <span>

#include "platform/desktop.h"

namespace velora {

// Numbers of items that are no command.
inline constexpr int kSeparator = 0;
inline constexpr int kUserItems = -1; // the submenu of the user's names

struct MenuSpec {
  const char *label;
  std::span<const int> items;
};

// The menus of a bar, from left to right.
std::span<const MenuSpec> menus_of(MenuBar bar);

} // namespace velora
