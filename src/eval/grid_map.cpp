// Grid maps: cells become places on the window, and everything becomes plain primitives.
#include "eval/grid_map.h"

#include <algorithm>

namespace velora {

namespace {

constexpr int kMargin = 12;      // around the grid
constexpr int kLabelMargin = 26; // where the numbers stand
constexpr int kSmallestCell = 8;
constexpr int kLargestCell = 48;
constexpr Colour kGridLine{214, 214, 214};
constexpr Colour kGridEdge{130, 130, 130};
constexpr Colour kGridNumber{110, 110, 110};

void add(BgrWinInfo &info, PrimInfo prim, PrimLayer layer) {
  prim.layer = layer;
  info.winPrims.push_back(std::move(prim));
}

void drop_layer(BgrWinInfo &info, PrimLayer layer) {
  std::erase_if(info.winPrims, [layer](const PrimInfo &prim) { return prim.layer == layer; });
}

Point middle(const GridMap &map, Point cell) {
  return {map.corner.x + (cell.x - 1) * map.cell + map.cell / 2,
          map.corner.y + (cell.y - 1) * map.cell + map.cell / 2};
}

// Inside of a cell, clear of its lines.
Rect inside(const GridMap &map, Point cell) {
  const int left = map.corner.x + (cell.x - 1) * map.cell;
  const int top = map.corner.y + (cell.y - 1) * map.cell;
  const int gap = std::max(2, map.cell / 7);
  return {left + gap, top + gap, left + map.cell - gap, top + map.cell - gap};
}

void add_grid_line(BgrWinInfo &info, Point from, Point to, bool edge) {
  add(info, {.code = kPrimLine, .at = {from, to}, .colour = edge ? kGridEdge : kGridLine},
      PrimLayer::grid);
}

void add_number(BgrWinInfo &info, Point at, int n, TextAlign align) {
  add(info,
      {.code = kPrimText,
       .at = {at},
       .colour = kGridNumber,
       .text = std::to_string(n),
       .font = {8, false, false},
       .align = align},
      PrimLayer::grid);
}

// Cells that are too small for their numbers are numbered by fives.
bool numbered(const GridMap &map, int n) {
  return map.cell >= 18 || n % 5 == 0 || n == 1;
}

void draw_grid(BgrWinInfo &info) {
  const GridMap &map = info.map;
  const int right = map.corner.x + map.columns * map.cell;
  const int bottom = map.corner.y + map.rows * map.cell;
  for (const bool edge : {false, true}) { // the darker frame goes on top
    for (int c = 0; c <= map.columns; ++c) {
      const int x = map.corner.x + c * map.cell;
      if (edge == (c == 0 || c == map.columns))
        add_grid_line(info, {x, map.corner.y}, {x, bottom}, edge);
    }
    for (int r = 0; r <= map.rows; ++r) {
      const int y = map.corner.y + r * map.cell;
      if (edge == (r == 0 || r == map.rows))
        add_grid_line(info, {map.corner.x, y}, {right, y}, edge);
    }
  }
  for (int c = 1; c <= map.columns; ++c)
    if (numbered(map, c))
      add_number(info, {middle(map, {c, 1}).x, map.corner.y - 14}, c, TextAlign::centre);
  for (int r = 1; r <= map.rows; ++r)
    if (numbered(map, r))
      add_number(info, {map.corner.x - 5, middle(map, {1, r}).y - 6}, r, TextAlign::right);
}

void add_shape(BgrWinInfo &info, int code, const Rect &box, Colour colour) {
  PrimInfo prim{.code = code,
                .at = {Point{box.left, box.top}, Point{box.right, box.bottom}},
                .colour = colour,
                .width = 2};
  if (code == kPrimFrameTri || code == kPrimFillTri)
    prim.at = {Point{box.left + box.width() / 2, box.top}, Point{box.right, box.bottom},
               Point{box.left, box.bottom}};
  add(info, std::move(prim), PrimLayer::map);
}

} // namespace

int lay_grid(BgrWinInfo &info, int columns, int rows) {
  if (columns < 1 || rows < 1 || columns > kMostCells || rows > kMostCells)
    return 0;
  drop_layer(info, PrimLayer::grid);
  drop_layer(info, PrimLayer::map);
  const int fits = std::min((info.width - kLabelMargin - kMargin) / columns,
                            (info.height - kLabelMargin - kMargin) / rows);
  info.map = {columns,
              rows,
              std::clamp(fits, kSmallestCell, kLargestCell),
              {kLabelMargin, kLabelMargin},
              {1, 1}};
  draw_grid(info);
  info.pen = middle(info.map, info.map.current);
  return 1;
}

bool on_grid(const BgrWinInfo &info, Point cell) {
  return cell.x >= 1 && cell.y >= 1 && cell.x <= info.map.columns && cell.y <= info.map.rows;
}

void reset_map(BgrWinInfo &info) {
  drop_layer(info, PrimLayer::map);
  info.map.current = {1, 1};
  info.pen = middle(info.map, info.map.current);
}

void place_shape(BgrWinInfo &info, Point cell, MapShape shape, Colour colour) {
  const Rect box = inside(info.map, cell);
  const int quarter = box.width() / 4;
  switch (shape) {
  case MapShape::square:
    add_shape(info, kPrimFrameRect, box, colour);
    break;
  case MapShape::triangle:
    add_shape(info, kPrimFrameTri, box, colour);
    break;
  case MapShape::filled_triangle:
    add_shape(info, kPrimFillTri, box, colour);
    break;
  case MapShape::circle:
    add_shape(info, kPrimFrameOval, box, colour);
    break;
  case MapShape::filled_square:
    add_shape(info, kPrimFillRect, box, colour);
    break;
  case MapShape::circled_square:
    add_shape(info, kPrimFrameRect, box, colour);
    add_shape(info, kPrimFillOval,
              {box.left + quarter, box.top + quarter, box.right - quarter, box.bottom - quarter},
              colour);
    break;
  }
  go_to_cell(info, cell, 0);
}

Point cell_towards(const BgrWinInfo &info, int dx, int dy, int steps) {
  // Everything beyond twice the largest grid is off every grid.
  const int far = std::clamp(steps, -2 * kMostCells, 2 * kMostCells);
  return {info.map.current.x + dx * far, info.map.current.y + dy * far};
}

void go_to_cell(BgrWinInfo &info, Point cell, int code) {
  const Point to = middle(info.map, cell);
  if (code != 0)
    add(info,
        {.code = code,
         .at = {middle(info.map, info.map.current), to},
         .colour = info.fore,
         .width = code == kPrimLine ? 3 : 2},
        PrimLayer::map);
  info.map.current = cell;
  info.pen = to;
}

} // namespace velora
