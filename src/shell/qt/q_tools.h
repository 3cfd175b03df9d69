// The tool bars: one for the files and queries that every window has, and one for the pictures of
// each kind, which is shown while such a picture is active.
#pragma once

#include "platform/desktop.h"

namespace velora::qt {

void make_tools();
// Shows the tools that belong to a menu bar.
void show_tools(MenuBar bar);
// Marks the tool that a click in a picture would use.
void show_tool_in_use();
void enable_tool(int command, bool on);
void enable_all_tools(bool on);

} // namespace velora::qt
