// Dispatch and enabling of menu commands. Holds the last state that each item was given.
#include "shell/x_menus.h"

#include <map>
#include <string>
#include <utility>

#include "db/f_dbops.h"
#include "editor/compound.h"
#include "editor/edit.h"
#include "editor/hand/hand.h"
#include "editor/hand/tools.h"
#include "editor/user_menus.h"
#include "front/cint.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/command_numbers.h"
#include "shell/picture_windows.h"
#include "shell/text_windows.h"
#include "shell/vel_wins.h"

namespace velora {

namespace {

std::map<int, bool> last_state;
bool filters_on = true; // as the Filters menu was last told

// The needs that are met.
unsigned met_needs(const MenuSnapshot &s) {
  return (s.picture ? kPicture : 0U) | (s.selection ? kSelection : 0U) |
         (s.database ? kDatabase : 0U) | (s.text_window ? kTextWindow : 0U) |
         (s.edit.can_undo ? kUndoable : 0U) | (s.edit.can_paste ? kPasteable : 0U) |
         (s.edit.selected ? kTextSelected : 0U) | (s.searched ? kSearched : 0U) |
         (s.network_shown ? kNetworkShown : 0U) | (s.redoable ? kRedoable : 0U) |
         (s.earlier_window ? kEarlierWindow : 0U) | (s.later_window ? kLaterWindow : 0U);
}

} // namespace

MenuSnapshot take_menu_snapshot() {
  MenuSnapshot s;
  s.picture = picture_of(previous) != nullptr;
  s.selection = picture_has_selection(previous);
  s.database = !gDDB_basename.empty();
  s.text_window = TextTypeWindow(previous) != 0;
  s.searched = has_searched();
  s.network_shown = shows_network(previous);
  s.earlier_window = window_in_history(-1) != 0;
  s.later_window = window_in_history(1) != 0;
  if (s.text_window)
    s.edit = gDesktop->edit_state(previous);
  // Undo in the console, where nothing is typed, takes back what a closed window did.
  if (previous == hControl && hControl != 0 && !orphan_to_undo().empty())
    s.edit.can_undo = s.edit.can_undo || gDesktop->typed_text(hControl).empty();
  if (const WinInfo *wi = picture_of(previous); wi != nullptr) {
    const bool typing =
        gHand.wi == wi && (gHand.state == HandState::labelling || gHand.state == HandState::naming);
    s.edit = {!step_to_undo(wi).empty(), can_paste() || typing, s.selection || typing};
    s.redoable = !step_to_redo(wi).empty();
  }
  return s;
}

bool command_enabled(const MenuCommand &command, const MenuSnapshot &snapshot) {
  return command.run != nullptr && (command.needs & ~met_needs(snapshot)) == 0;
}

void AdjustMenus() {
  const MenuSnapshot now = take_menu_snapshot();
  for (const MenuCommand &command : menu_commands()) {
    if (command.bars == kNoBar || command.needs == kMarkedOutside)
      continue;
    const bool on = command_enabled(command, now);
    const auto [known, fresh] = last_state.try_emplace(command.number, !on);
    if (known->second == on)
      continue;
    known->second = on;
    gDesktop->enable_item(command.number, on);
  }
  if (filters_on != now.network_shown) {
    filters_on = now.network_shown;
    gDesktop->enable_menu(MenuBar::network, "Filters", filters_on);
  }
}

bool item_enabled(int number, MenuBar bar) {
  bool known = false;
  for (const MenuCommand &row : menu_commands()) {
    if (row.number != number)
      continue;
    known = true;
    if (row.bars != kNoBar && (row.bars & bar_bit(bar)) == 0)
      continue;
    const MenuCommand &first = *find_menu_command(number);
    return first.needs == kMarkedOutside ? gItemEnabled(number)
                                         : command_enabled(first, take_menu_snapshot());
  }
  const UserMenu *menu = user_menu_of(bar);
  return !known && menu != nullptr && menu->serves && !gDesktop->menu_label(bar, number).empty();
}

namespace {

// How the menus write a key: "Ctrl+Shift+D", "F5", "Shift+Del".
std::string key_name(const KeyEvent &event) {
  constexpr std::pair<Key, const char *> kNames[] = {
      {Key::enter, "Enter"},  {Key::escape, "Esc"},    {Key::tab, "Tab"},
      {Key::space, "Space"},  {Key::del, "Del"},       {Key::backspace, "Backspace"},
      {Key::left, "Left"},    {Key::right, "Right"},   {Key::up, "Up"},
      {Key::down, "Down"},    {Key::home, "Home"},     {Key::end, "End"},
      {Key::page_up, "PgUp"}, {Key::page_down, "PgDn"}};
  std::string name = event.held.control ? "Ctrl+" : "";
  name += event.held.alt ? "Alt+" : "";
  name += event.held.shift ? "Shift+" : "";
  if (event.key == Key::letter)
    return name + event.text;
  if (event.key == Key::function)
    return name + "F" + std::to_string(event.number);
  for (const auto &[key, text] : kNames)
    if (key == event.key)
      return name + text;
  return {};
}

} // namespace

int accelerator_command(MenuBar bar, const KeyEvent &event) {
  const std::string key = key_name(event);
  int found = 0;
  for (const MenuCommand &row : menu_commands()) {
    if (key.empty() || key != row.accelerator)
      continue;
    if (row.bars == kNoBar)
      return row.number;
    if ((row.bars & bar_bit(bar)) != 0)
      found = row.number;
  }
  return found;
}

int DoMenuCommandPC(int MenuID, MenuBar bar) {
  // There are no types in a network: what was chosen before stays.
  if (MenuID == kCmdAnyAddTypes && shows_network_window(previous))
    return 0;
  greqMode = 0;
  greqNext = 0;
  greqQuery = 0;
  const MenuCommand *command = find_menu_command(MenuID);
  if (command == nullptr)
    return choose_user_item(MenuID, bar);
  const bool outside = command->needs == kMarkedOutside;
  if (!outside && !command_enabled(*command, take_menu_snapshot()))
    return 0;
  const WindowId had_focus = previous;
  const int answer = command->run();
  if (previous == had_focus && window_kind(had_focus) != 0)
    gDesktop->focus_window(had_focus);
  return answer;
}

} // namespace velora
