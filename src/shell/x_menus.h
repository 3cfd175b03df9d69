// The dispatcher of menu commands and the rules that say which items are enabled. Called by the
// entries of the window system.
#pragma once

#include "platform/desktop.h"
#include "shell/menu_table.h"

namespace velora {

// The placement mode of the adding commands, and the step that follows it; every command clears
// them first.
extern int greqMode;
extern int greqNext;

// Everything that the enabling of items depends on.
struct MenuSnapshot {
  bool picture = false;
  bool selection = false;
  bool database = false;
  bool text_window = false;
  bool searched = false;
  bool committable = false;
  bool network_shown = false;
  EditState edit;
};
// Looks at the windows as they are.
MenuSnapshot take_menu_snapshot();
// Whether a command is of use.
bool command_enabled(const MenuCommand &command, const MenuSnapshot &snapshot);
// Brings the menus up to date; items that have not changed are left alone.
void AdjustMenus();

// Does a menu command chosen from `bar`; a number that is no command is an item of the bar's user
// menu. Answers what the command answered.
int DoMenuCommandPC(int MenuID, MenuBar bar);

} // namespace velora
