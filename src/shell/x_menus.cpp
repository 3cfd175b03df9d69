// Dispatch and enabling of menu commands. Holds the last state that each item was given.
#include "shell/x_menus.h"

#include <map>

#include "db/f_dbops.h"
#include "front/cint.h"
#include "shell/picture_windows.h"
#include "shell/text_windows.h"
#include "shell/vel_wins.h"

namespace velora {

int greqMode = 0;
int greqNext = 0;

namespace {

std::map<int, bool> last_state;
bool filters_on = true; // as the Filters menu was last told

// The needs that are met.
unsigned met_needs(const MenuSnapshot &s) {
  return (s.picture ? kPicture : 0U) | (s.selection ? kSelection : 0U) |
         (s.database ? kDatabase : 0U) | (s.text_window ? kTextWindow : 0U) |
         (s.edit.can_undo ? kUndoable : 0U) | (s.edit.can_paste ? kPasteable : 0U) |
         (s.edit.selected ? kTextSelected : 0U) | (s.searched ? kSearched : 0U) |
         (s.committable ? kCommittable : 0U) | (s.network_shown ? kNetworkShown : 0U);
}

} // namespace

MenuSnapshot take_menu_snapshot() {
  MenuSnapshot s;
  s.picture = picture_of(previous) != nullptr;
  s.selection = picture_has_selection(previous);
  s.database = !gDDB_basename.empty();
  s.text_window = TextTypeWindow(previous) != 0;
  s.searched = has_searched();
  s.committable = !s.picture;
  s.network_shown = shows_network(previous);
  if (s.text_window)
    s.edit = gDesktop->edit_state(previous);
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

int DoMenuCommandPC(int MenuID, MenuBar bar) {
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
  if (answer != 0)
    AdjustMenus();
  if (previous == had_focus && window_kind(had_focus) != 0)
    gDesktop->focus_window(had_focus);
  return answer;
}

} // namespace velora
