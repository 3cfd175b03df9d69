// The one table of menu commands: for every command its number, the menu bars that show it, its
// label there, its accelerator, what it needs to be of use, and the function that does it. The
// dispatcher, the enabling rules and the check of the resource script all read this table.
#pragma once

#include <span>

#include "platform/desktop.h"

namespace velora {

// The menu bars as a set.
enum BarSet : unsigned {
  kMainBar = 1,
  kFunctionsBar = 2,
  kDatatypeBar = 4,
  kNetworkBar = 8,
  kOrvekBar = 16,
  kTextBars = kMainBar | kOrvekBar,
  kPictureBars = kFunctionsBar | kDatatypeBar | kNetworkBar,
  kAllBars = kTextBars | kPictureBars,
  kNoBar = 0
};

// What a command needs; all that is named must be there.
enum Need : unsigned {
  kNothing = 0,
  kPicture = 1,          // the active window shows a picture
  kSelection = 2,        // something is selected in it
  kDatabase = 4,         // a database is current
  kTextWindow = 8,       // the active window holds text
  kUndoable = 16,        // its text or picture can be undone
  kPasteable = 32,       // the clipboard holds what fits
  kTextSelected = 64,    // something in it is selected
  kSearched = 128,       // a text has been searched for
  kNetworkShown = 256,   // the active window shows a network
  kRedoable = 512,       // a step that was taken back can be done again
  kEarlierWindow = 1024, // another window had the focus before
  kLaterWindow = 2048,   // one that had it was gone back from
  kMarkedOutside = 4096  // switched by gEnableItem and gDisableItem alone
};

// A row. A command whose `run` is null has nothing to do yet and is never enabled. `run` answers
// nonzero when the menus are to be adjusted afterwards. A number may stand in several rows, with
// another label on other bars; the first row's `run` and `needs` count.
struct MenuCommand {
  int number;
  unsigned bars;
  const char *label;
  const char *accelerator;
  unsigned needs;
  int (*run)();
};

std::span<const MenuCommand> menu_commands();
// The first row of that number, or null.
const MenuCommand *find_menu_command(int number);

// The place of a bar in the set.
constexpr unsigned bar_bit(MenuBar bar) {
  switch (bar) {
  case MenuBar::main:
    return kMainBar;
  case MenuBar::functions:
    return kFunctionsBar;
  case MenuBar::datatype:
    return kDatatypeBar;
  case MenuBar::network:
    return kNetworkBar;
  case MenuBar::orvek:
    return kOrvekBar;
  }
  return kNoBar;
}

} // namespace velora
