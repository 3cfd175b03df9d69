// What the editor needs from the shell above it, each with the one who defines it.
#pragma once

#include <functional>
#include <string>

#include "editor/model/records.h"
#include "platform/geometry.h"

namespace velora {

// A shown picture has changed: its title, its extent and what is seen of it are brought up to date.
// Defined by shell/picture_windows.
void picture_changed(WinInfo *wi);
// Stored pictures came, went or have other numbers, which titles tell. Defined by
// shell/picture_windows.
void stored_pictures_changed();

// Runs the end of a gesture as one command through the return point; refused with a beep while
// another runs. Defined by shell/picture_hand.
void run_gesture(const std::function<void()> &end);
// Opens the function of that name in a window: its picture, or its text when it has none. Defined
// by shell/picture_hand.
void open_function(const std::string &name);
// Shows the clauses of one function that call another, and the first of them beside the arrow of
// that slot. Defined by shell/picture_hand.
void show_calls(WinInfo *wi, int arc);
// Shows that the view of a window is to be moved by that much of the picture. Defined by
// shell/picture_view.
void pan_view(const WinInfo *wi, int dx, int dy);
// The wheel was turned with control over a point: the picture is shown larger or smaller, with that
// point where it is. Defined by shell/picture_view.
void zoom_view(const WinInfo *wi, Point at, int notches);

} // namespace velora
