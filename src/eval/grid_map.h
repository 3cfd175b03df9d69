// Grid maps on a graphics window: a grid of square cells, shapes placed by cell, and lines that
// lead from cell to cell in the directions of the compass. Pure data, like the graphics model.
#pragma once

#include "eval/graphics_model.h"

namespace velora {

inline constexpr int kMostCells = 200;

// Lays a grid of `columns` x `rows` cells (1 to kMostCells each), fitted to the window, in place
// of the one before; 1, or 0 when a number is out of range.
int lay_grid(BgrWinInfo &info, int columns, int rows);
// True when the window has a grid and the cell lies on it.
bool on_grid(const BgrWinInfo &info, Point cell);
// Takes everything off the grid and goes back to cell 1 1; the grid stays.
void reset_map(BgrWinInfo &info);

enum class MapShape { square, triangle, filled_triangle, circle, filled_square, circled_square };

// Places a shape in a cell, which becomes the current one.
void place_shape(BgrWinInfo &info, Point cell, MapShape shape, Colour colour);
// The cell `steps` cells from the current one; `dx` and `dy` are -1, 0 or 1.
Point cell_towards(const BgrWinInfo &info, int dx, int dy, int steps);
// Makes `cell` current; a line is drawn there from the middle of the former one when `code` is
// kPrimLine or kPrimDottedLine.
void go_to_cell(BgrWinInfo &info, Point cell, int code);

} // namespace velora
