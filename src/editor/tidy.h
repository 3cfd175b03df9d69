// Laying out pictures anew: rows by depth, the inputs of a box in their order, nothing on top of
// anything else, arguments in their band. A tidied picture means what it meant before. Called by
// the builder and by the Edit menu's command Tidy.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// The nodes in the band at the top of a function picture, its arguments, from left to right.
std::vector<Segm *> argument_nodes(const WinInfo *wi);

// What spoils the look or the meaning of a picture: boxes on top of each other, or a box that has
// an input and stands among the arguments. Empty when nothing does.
std::string layout_fault(const WinInfo *wi);

// Lays out the selected nodes, or all when none is selected, with their arcs. False, with the
// picture as it was, when the order of arguments or of inputs could not be kept.
bool tidy_picture(WinInfo *wi);

// Puts the ends of all arcs where their nodes are.
void arcs_follow(WinInfo *wi);

} // namespace velora
