// Function pictures made from the network: a box for each function that a function calls, for the
// user to join.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// Stores a new function picture that holds the result node and a box for each name, on a grid of
// an area's fifths. Nothing for an empty list. 1 when it was stored.
int MakeFunctionPicture(const std::string &name, const std::vector<std::string> &names,
                        const Rect &area);

// The functions of a network that call something and have no stored picture, in slot order, and
// how many were passed over because they have one.
struct PicturelessFunctions {
  std::vector<const Segm *> nodes;
  int skipped = 0;
};
PicturelessFunctions functions_without_picture(const WinInfo *network);
// Makes a picture for each of them; answers how many. Says how many were skipped.
int NetworkToFunctions(const WinInfo *network);

} // namespace velora
