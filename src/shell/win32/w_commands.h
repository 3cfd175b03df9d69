// The commands that this desktop has beside those of the menu table: their places in the menus,
// their keys, and what they do.
#pragma once

#include "platform/desk_menus.h"
#include "shell/win32/w_common.h"

namespace velora::win32 {

// Adds the items to a menu bar that has been loaded.
void add_own_items(HMENU bar, MenuBar which);
// Greys the items that are of no use now.
void adjust_own_items(HMENU bar);
// Does a command of that number; false when it is none of these.
bool run_own_command(int number);
// Does the command that a key stands for; false when there is none.
bool take_own_key(const MSG &message);

} // namespace velora::win32
