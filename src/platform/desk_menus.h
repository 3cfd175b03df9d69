// The menu bars of a desktop. One of the four roles that make up a Desktop.
#pragma once

#include <string>
#include <vector>

namespace velora {

enum class MenuBar { main, functions, datatype, network, orvek };

class DeskMenus {
public:
  virtual ~DeskMenus() = default;
  virtual void show_menu_bar(MenuBar bar) = 0;
  // The bar that was shown last.
  virtual MenuBar menu_bar() = 0;
  virtual void enable_item(int command, bool on) = 0;
  // Greys a menu of a bar, with all that is in it, or gives it back.
  virtual void enable_menu(MenuBar bar, const std::string &label, bool on) = 0;
  // Greys all menus or gives them back, as they were each by itself.
  virtual void enable_menus(bool on) = 0;
  // Replaces a user menu: the names shown get the command numbers from `first_command` on.
  virtual void set_user_menu(MenuBar bar, const std::string &header,
                             const std::vector<std::string> &names, int first_command) = 0;
  // The label of an item of a bar's user menu, at most 79 characters of it; empty for none.
  virtual std::string menu_label(MenuBar bar, int command) = 0;
};

} // namespace velora
