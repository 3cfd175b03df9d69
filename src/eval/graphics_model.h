// Graphics windows as data: each keeps the list of primitives drawn in it, the state of its pen and
// its grid map. The graphics built-ins write these records, draw_graphics draws them through any
// canvas; the desktop shows one in a window, the terminal saves it as a picture file.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "platform/canvas.h"
#include "platform/desk_windows.h"
#include "platform/geometry.h"

namespace velora {

// What a primitive is: the number of the built-in that draws it.
enum PrimCode {
  kPrimLine = 39,
  kPrimFrameRect = 40,
  kPrimFrameOval = 41,
  kPrimFillRect = 52,
  kPrimFillOval = 53,
  kPrimFrameTri = 54,
  kPrimFillTri = 55,
  kPrimText = 56,
  kPrimDelay = 66,
  kPrimDottedLine = 146
};

enum class TextAlign { left, centre, right };

// Which part of a window's picture a primitive belongs to: what programs draw, the lines of the
// grid, what stands on the grid.
enum class PrimLayer { drawing, grid, map };

// One primitive. `at` holds the two ends of a line, two opposite corners of a box, the three
// corners of a triangle, or the upper end of a text's place.
struct PrimInfo {
  int code = 0;
  std::array<Point, 3> at{};
  Colour colour{};
  int width = 1;  // of lines
  int number = 0; // length of a delay
  std::string text{};
  Font font{};
  TextAlign align = TextAlign::left;
  PrimLayer layer = PrimLayer::drawing;
};

// A grid of cells; column 1 is the leftmost, row 1 the topmost. No columns: there is no grid.
struct GridMap {
  int columns = 0;
  int rows = 0;
  int cell = 0;    // side of a cell
  Point corner{};  // upper left corner of cell 1 1
  Point current{}; // the cell that lines start from
};

inline constexpr Rect kGraphicsPlace{100, 50, 450, 450};

// One graphics window. Windows stand in one list in the order in which they were opened.
struct BgrWinInfo {
  int window_id = 0;
  WindowId win = 0;
  int OrigX = 0; // where the program's point 0 0 appears
  int OrigY = 0;
  std::unique_ptr<BgrWinInfo> next{};
  std::vector<PrimInfo> winPrims{};
  int width = kGraphicsPlace.width();
  int height = kGraphicsPlace.height();
  Point pen{};
  Colour fore = kPalette[kBlack];
  Colour paper = kPalette[kWhite];
  GridMap map{};
  bool plot = false; // shows a plot, which a grid does not cover
};

// The list of open windows, and the one that the built-ins draw in (null when none is open).
extern std::unique_ptr<BgrWinInfo> gBgrWinInfo;
extern BgrWinInfo *gBgrWind;

// Appends a fresh record with the next number and makes it current.
BgrWinInfo *NewGraphicWinInfo(int width, int height);
// The record of that number, or of that window; null when there is none.
BgrWinInfo *find_graphics(int window_id);
BgrWinInfo *FindGraphicWinInfo(WindowId win);
// Takes a record out of the list with all it holds. When it was current, the newest one left is.
void RemoveGraphicWinInfo(BgrWinInfo *info);
int count_graphics();
// "Graphics [n of m]" for the n-th window of the list.
std::string graphics_title(const BgrWinInfo &info);

// Takes everything off a window and puts its pen, colours and map back as in a new one.
void clear_graphics(BgrWinInfo &info);

// The part of the plane that holds the window's inside and everything drawn.
Rect graphics_extent(const BgrWinInfo &info);
// The same without the size that the window was opened with.
Rect drawn_extent(const BgrWinInfo &info);
// Draws paper and primitives, in order.
void draw_graphics(const BgrWinInfo &info, Canvas &canvas);

} // namespace velora
