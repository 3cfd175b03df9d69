// The menu bars: made from the table of commands and the layout of the menus, shown one at a time,
// and the accelerators, which work with any of them.
#pragma once

#include <QKeySequence>

#include <string>
#include <vector>

#include "platform/desktop.h"

class QMenu;
class QPoint;

namespace velora::qt {

// Makes all bars and shows the main one.
void make_menus();
void show_bar(MenuBar bar);
MenuBar shown_bar();
void enable_menu_item(int command, bool on);
void enable_whole_menu(MenuBar bar, const std::string &label, bool on);
void enable_all_menus(bool on);
void fill_user_menu(MenuBar bar, const std::string &header, const std::vector<std::string> &names,
                    int first_command);
// Shows what can be done in a picture beside the pointer: the items of Edit, the other menus.
void show_picture_menu(const QPoint &at);
// The label of an item of a bar's user menu, at most 79 characters of it; empty for none.
std::string user_menu_label(MenuBar bar, int command);
// Does what an accelerator stands for; false when the keys are none.
bool choose_by_key(const QKeySequence &keys);
// The commands that are the desktop's own stand in menus that it adds to each bar.
void choose_command(int number);

} // namespace velora::qt
