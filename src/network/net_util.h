// Growing and pruning a network picture by the call links of the database. These change a picture
// as it stands; whoever calls them for a shown one records the change and redraws.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// What ExpandNetNodes adds for each selected node.
enum ExpandChoice {
  kDescendants = 1,
  kDescendantsInNewWindow = 2,
  kChildren = 3,
  kAncestors = 4,
  kAncestorsInNewWindow = 5,
  kParents = 6
};
// Which lowest functions DelLowestFuns deletes.
enum LowestChoice { kBuiltinAndSystem = 1, kConstructorsOnly = 2, kAllLowest = 3 };

// Adds to a network picture what the selected nodes call or what calls them, or shows it in new
// windows. Nodes that have links are done first. Answers the number of selected nodes without any,
// for which the caller says "There are no links in the Network".
int ExpandNetNodes(WinInfo *wi, int choice);

// Removes the nodes without callees that the selected nodes reach (also a selected node itself).
// Answers how many were removed.
int DelLowestFuns(WinInfo *wi, int choice);

// Adds every function that nobody calls, on a grid of tenths of the window, and names the picture.
// A picture that is not empty is warned of and kept. "There are no links in the Network" through
// the error exit before anything has changed.
int DisplayRootNodes(WinInfo *wi);

// Adds the node of a function at the first free place of the same grid; a node that is there
// already is shown again if it was hidden. Answers its slot, 0 on failure.
int Add_Net_Node(WinInfo *wi, const std::string &name);

// The selected nodes in the order of their slots.
std::vector<Segm *> selected_nodes(const WinInfo *wi);

} // namespace velora
