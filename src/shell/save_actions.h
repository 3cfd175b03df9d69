// How an edited picture is saved: which actions fit it, the question among them, and what each
// does. Called when a picture window closes, by Commit, and before a picture is overwritten.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// What a button of the question does.
enum class SaveAction { declaration, component_of, component, data_type, replace, redefine };

// The code of what can be done with a picture, 0 for nothing, 1 to 10 as in the table of buttons.
int GuessSaveAction(const WinInfo *wi, bool named);
// The buttons that a code offers, in order; none for 0.
struct SaveButton {
  const char *label;
  SaveAction action;
};
std::vector<SaveButton> save_buttons(int code);

// Asks what to do with a picture and does it. 1 when it was saved and its window may close; 0 when
// it was not, and also after the actions that ask for a name, which leave the picture shown under
// its new name.
int SaveWindowAction(WinInfo *wi);
// True when the last SaveWindowAction stored something, whatever it answered.
bool save_action_stored();

// Commits a window: the text of an ORVEK window, or the picture by the save action. Never closes
// the window. 1 when something was stored.
int commitWindow(WindowId window);

// Asks what of a picture is to be removed, and removes it. 1 when something went.
int RemoveThis(WinInfo *wi);
// What can be removed of a function picture, by the number of its button.
enum RemoveChoice { kRemoveBoth = 1, kRemovePicture, kRemoveCode, kDestroyFunction };
const char *remove_label(int choice);
// Asks to confirm a choice, or the removal of a picture that no clause goes with; 1 to go on.
int confirm_removal(int choice);
int confirm_picture_removal();
// Removes that of the component that a record names; answers -1 when nothing could be removed, else
// the number of components that stood before it (0 when the component stays).
int remove_parts(const WinInfo *wi, int choice);

} // namespace velora
