// The dispatcher of menu commands and the rules that say which items are enabled. Called by the
// entries of the window system.
#pragma once

#include "platform/desktop.h"
#include "platform/input.h"
#include "shell/menu_table.h"

namespace velora {

// Everything that the enabling of items depends on.
struct MenuSnapshot {
  bool picture = false;
  bool selection = false;
  bool database = false;
  bool text_window = false;
  bool searched = false;
  bool network_shown = false;
  // Of the text, or of the picture: its steps, its selection, what can be pasted into it.
  EditState edit;
  bool redoable = false;
  bool earlier_window = false;
  bool later_window = false;
};
// Looks at the windows as they are.
MenuSnapshot take_menu_snapshot();
// Whether a command is of use.
bool command_enabled(const MenuCommand &command, const MenuSnapshot &snapshot);
// Whether an item of a bar can be chosen, be it a command or a name of the bar's user menu.
bool item_enabled(int number, MenuBar bar);
// The command that a key stands for while `bar` is shown, 0 for none. Those that send the same
// number whatever the bar, and those of the bar itself.
int accelerator_command(MenuBar bar, const KeyEvent &event);
// Brings the menus up to date; items that have not changed are left alone. Done once after each
// command, by the gate.
void AdjustMenus();

// Does a menu command chosen from `bar`; a number that is no command is an item of the bar's user
// menu. Answers what the command answered.
int DoMenuCommandPC(int MenuID, MenuBar bar);

} // namespace velora
