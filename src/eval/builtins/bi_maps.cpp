// Grid maps in the current graphics window: a grid of cells, shapes placed by cell, and lines from
// cell to cell in the directions of the compass. Cells are named by column and row, 1 1 in the
// upper left corner. A cell off the grid answers "False" and changes nothing; without a grid the
// expression stays as it is. Called by the dispatcher.
#include <array>

#include "eval/bi_support.h"
#include "eval/builtins/bi_graphics.h"
#include "eval/builtins/families.h"
#include "eval/graphics_windows.h"
#include "eval/grid_map.h"

namespace velora {

namespace {

bool has_grid() {
  return gBgrWind != nullptr && gBgrWind->map.columns > 0;
}

int place(node **stack, MapShape shape) {
  int at[2];
  if (!has_grid() || !force_coordinates(stack, 1, 2, at))
    return 0;
  const Point cell{at[0], at[1]};
  if (!on_grid(*gBgrWind, cell))
    return set_bool(stack[2], false);
  place_shape(*gBgrWind, cell, shape, gBgrWind->fore);
  redraw_current();
  return set_bool(stack[2], true);
}

// Columns and rows of one step in each direction, in the order of the constructors.
constexpr std::array<Point, 8> kSteps = {Point{0, -1}, Point{0, 1}, Point{1, 0},   Point{-1, 0},
                                         Point{1, -1}, Point{1, 1}, Point{-1, -1}, Point{-1, 1}};

const Point *force_direction(node **stack, int i) {
  const node *direction = force_arg(stack, i, kConstructorNode);
  if (direction != nullptr)
    for (int row = kNorth; row <= kSWest; ++row)
      if (is_cons_node(direction, static_cast<ConsRow>(row)))
        return &kSteps[static_cast<std::size_t>(row - kNorth)];
  return nullptr;
}

// Goes `n` cells in a direction, drawing a line of the kind `code` when that is not 0.
int go(node **stack, int code) {
  int steps = 0;
  if (!has_grid())
    return 0;
  const Point *step = force_direction(stack, 1);
  if (step == nullptr || !force_coordinates(stack, 2, 1, &steps))
    return 0;
  const Point cell = cell_towards(*gBgrWind, step->x, step->y, steps);
  if (!on_grid(*gBgrWind, cell))
    return set_bool(stack[2], false);
  go_to_cell(*gBgrWind, cell, code);
  redraw_current();
  return set_bool(stack[2], true);
}

} // namespace

// Lays a grid in the current window; opens a window when there is none or it shows a plot.
int bi_mp_grid(node **stack, int) {
  int size[2];
  if (!force_coordinates(stack, 1, 2, size))
    return 0;
  if (size[0] < 1 || size[1] < 1 || size[0] > kMostCells || size[1] > kMostCells)
    return 0;
  if ((gBgrWind == nullptr || gBgrWind->plot) && open_graphics() == nullptr)
    return 0;
  lay_grid(*gBgrWind, size[0], size[1]);
  redraw_current();
  return set_bool(stack[2], true);
}

int bi_mp_sq(node **stack, int) {
  return place(stack, MapShape::square);
}
int bi_mp_tri(node **stack, int) {
  return place(stack, MapShape::triangle);
}
int bi_mp_ftri(node **stack, int) {
  return place(stack, MapShape::filled_triangle);
}
int bi_mp_cir(node **stack, int) {
  return place(stack, MapShape::circle);
}
int bi_mp_csq(node **stack, int) {
  return place(stack, MapShape::circled_square);
}

// A square filled with a colour.
int bi_mp_sqc(node **stack, int) {
  int at[2];
  if (!has_grid() || !force_coordinates(stack, 1, 2, at))
    return 0;
  const std::optional<Colour> colour = force_colour(stack, 3);
  if (!colour)
    return 0;
  const Point cell{at[0], at[1]};
  if (!on_grid(*gBgrWind, cell))
    return set_bool(stack[3], false);
  place_shape(*gBgrWind, cell, MapShape::filled_square, *colour);
  redraw_current();
  return set_bool(stack[3], true);
}

int bi_mp_move(node **stack, int) {
  return go(stack, 0);
}
int bi_mp_line(node **stack, int) {
  return go(stack, kPrimLine);
}
int bi_mp_dline(node **stack, int) {
  return go(stack, kPrimDottedLine);
}

int bi_mp_reset(node **stack, int) {
  if (!has_grid())
    return 0;
  reset_map(*gBgrWind);
  redraw_current();
  return set_bool(stack[0], true);
}

// The current cell as a pair of column and row.
int bi_mp_last(node **stack, int) {
  if (!has_grid())
    return 0;
  Root pair(LMakeConstructor(bi_cons_table[kPair].cs));
  const Root column(LMakeInteger(gBgrWind->map.current.x));
  pair = LMakeApplyNode(pair, column);
  const Root row(LMakeInteger(gBgrWind->map.current.y));
  return set_apply(stack[0], pair, row);
}

} // namespace velora
