// Graphics windows as picture files. Used by the terminal's commands and its --graphics-dir option,
// and by the desktop's menu.
#pragma once

namespace velora {

// Writes what the graphics window of that number shows as an SVG file; 1, or 0 after a message.
int save_graphics(int window, const char *file);
// Writes every open graphics window as "graphics-N.svg" into the folder, which is made if need be;
// 1, or 0 after a message for each one that failed.
int save_all_graphics(const char *dir);
// Shows the numbers and titles of the open graphics windows, a line each.
void list_graphics();

} // namespace velora
