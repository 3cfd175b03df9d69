// The one way in which a shown picture changes. Every tool, gesture and command runs its change
// inside edit_picture, which makes one step of it that can be taken back, settles what the change
// touched, sets the flags and redraws. What is written to a shown picture past this is no step and
// cannot be undone.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "editor/model/records.h"

namespace velora {

struct EditOptions {
  // Steps in a row with the same text, not empty, are one: nudges, zooms, a box and its first
  // label.
  std::string_view merge = {};
  // The change sets `saved` and `clean` itself, as loading does. Otherwise a change clears both.
  bool own_flags = false;
  // Boxes whose label or shape the change touched grow to hold their label, and arrows run to the
  // boxes they join. A size that the user gave is left.
  bool settle = true;
};

// Runs `change` on a shown picture as one step called `what` ("Move"); true when anything changed.
// Inside another call for the same picture the change belongs to the outer step. When the change is
// abandoned the picture is put back as it was.
bool edit_picture(WinInfo *wi, std::string_view what, const std::function<void()> &change,
                  const EditOptions &options = {});

// Says that what the picture shows stands stored now: it becomes clean, and no other state that its
// steps lead to is.
void picture_stored(WinInfo *wi);

// The step that Undo would take back, or Redo do again, as the user calls it; empty for none.
std::string step_to_undo(const WinInfo *wi);
std::string step_to_redo(const WinInfo *wi);
// Take the last step back, or do it again: 1, or 0 after a message when that cannot be.
int undo_step(WinInfo *wi);
int redo_step(WinInfo *wi);

// The height under which the band of the arguments lies, whatever the text size: what stands below
// it is never taken for an argument.
int argument_band();
// Sets a node that is no parameter below the band, in a function picture.
void keep_below_band(const WinInfo *wi, Segm *node);
// Moves a node by its corners, and nothing else.
void move_node(Segm *node, int dx, int dy);

} // namespace velora
