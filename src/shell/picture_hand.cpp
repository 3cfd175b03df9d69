// The mouse and the keys in pictures: what the hand needs of the shell.
#include "shell/picture_hand.h"

#include "db/needs.h"
#include "editor/hand/hand.h"
#include "editor/needs.h"
#include "platform/response.h"
#include "shell/desk_events.h"
#include "shell/picture_windows.h"
#include "shell/vel_wins.h"
#include "shell/x_menus.h"

namespace velora {

// Pictures stand still while a command runs: it may be about to change them.
bool picture_mouse(WinInfo *wi, const MouseEvent &event) {
  return !command_runs() && hand_mouse(wi, event);
}

bool picture_key(WinInfo *wi, const KeyEvent &event) {
  return !command_runs() && hand_key(wi, event);
}

void run_gesture(const std::function<void()> &end) {
  const auto whole = [&end] {
    end();
    register_picture_windows(); // a gesture may have opened one
    return 1;
  };
  if (command_runs())
    whole(); // a command ends what was begun before it
  else
    run_entry(whole);
}

void open_function(const std::string &name) {
  if (!name.empty())
    ShowGraphic(name.c_str(), 0, nullptr);
}

} // namespace velora
