// The commands that this desktop does by itself: help, fonts, arranging, printing and files of
// pictures, recent databases. They stand in the menus beside those of the menu table.
#pragma once

#include <span>

class QMenu;
class QString;

namespace velora::qt {

struct OwnCommand {
  int number;
  const char *label;
  const char *accelerator;
  const char *hint; // for the status line
  bool (*of_use)(); // null when it always is
  void (*run)();
};

std::span<const OwnCommand> own_commands();
// Does the command; false when the number is none of these. One that is of no use now does nothing.
bool run_own_command(int number);
// Adds the desktop's items to a menu of the table, known by its label without mnemonics.
void add_own_items(QMenu *menu, const QString &label);
// The menus that the desktop adds to every bar.
QMenu *make_view_menu();
QMenu *make_help_menu();

} // namespace velora::qt
