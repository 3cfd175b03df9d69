// What the state machine of the mouse and that of the keys share. Private to the hand.
#pragma once

#include <string>

#include "editor/hand/hand.h"

namespace velora {

// A text that merges a new node's step with that of its first label, and with no other.
std::string fresh_merge();

// Forgets a picture that has gone meanwhile.
void drop_dead_hand();

// Chooses what lies in a rectangle: nodes wholly, arrows with both ends. `added` keeps what was
// chosen before.
void select_in_band(WinInfo *wi, const Rect &band, bool added);

// Places a node of the chosen tool, into an arrow unless that is 0, and opens its label.
void place_with_tool(WinInfo *wi, Point at, int arc, bool keep_tool);

// Opens the list of names with a first text.
void begin_naming(WinInfo *wi, const Insertion &where, const std::string &typed);

// The states in which a text is edited.
void labelling_mouse(WinInfo *wi, const MouseEvent &event);
void naming_mouse(WinInfo *wi, const MouseEvent &event);
bool labelling_key(WinInfo *wi, const KeyEvent &event);
bool naming_key(WinInfo *wi, const KeyEvent &event);
bool keyjoin_key(WinInfo *wi, const KeyEvent &event);

// Where the editor of a text stands in the picture, and its list of names below it.
Rect editor_box(const WinInfo *wi);
Rect names_box(const WinInfo *wi);
// The names that the list shows, from `first` to before `last`: always the chosen one among them.
struct ShownNames {
  std::size_t first;
  std::size_t last;
  int row_height;
};
ShownNames shown_names();

// Takes the text of the label that is edited; false when it was refused and the editor stays.
bool accept_label(WinInfo *wi);

} // namespace velora
