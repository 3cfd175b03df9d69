// What the mouse and the keys do in a picture. Called by the entries of the window system, which
// are shell/desk_events, outside of a command; what changes the picture runs a command through
// run_entry.
#pragma once

#include "editor/model/records.h"
#include "platform/input.h"

namespace velora {

// Both answer whether the picture took the event.
bool picture_mouse(WinInfo *wi, const MouseEvent &event);
bool picture_key(WinInfo *wi, const KeyEvent &event);

} // namespace velora
