// A network picture in the formats of other programs: a graph description for layout programs
// (DOT), GraphML, and a table of links (CSV). Pure text; the callers write it.
#pragma once

#include <string>

#include "editor/model/records.h"

namespace velora {

// The visible nodes and the arcs among them; ways over hidden nodes as dotted edges.
std::string network_as_dot(const WinInfo *wi);
std::string network_as_graphml(const WinInfo *wi);
// A line "caller,callee" for each arc, under a heading; texts quoted where they need it.
std::string network_as_csv(const WinInfo *wi);

} // namespace velora
