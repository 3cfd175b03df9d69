// Nodes as text, for the clipboard: what each computes, as one would write it.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"

namespace velora {

// The expressions of the nodes among `slots` that feed no other of them, a line each.
std::string text_of_nodes(const WinInfo *wi, const std::vector<int> &slots);

} // namespace velora
