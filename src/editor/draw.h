// Drawing pictures. DrawVeloraWindow draws any picture record through a canvas: on the screen, into
// an SVG file, into a log. Called by the windows of the shell and by the terminal's commands.
//
// A picture is first laid out: boxes grow to hold their labels where there is room, and arrows get
// their ends on the borders of the boxes they join. Then it is drawn from the back to the front:
// lines, the numbers of arguments, arrow heads, nodes, labels, marks of the selection.
#pragma once

#include <string>
#include <vector>

#include "editor/model/records.h"
#include "platform/canvas.h"

namespace velora {

// Where a node is drawn, and in which font its label fits.
struct NodePlace {
  const Segm *seg = nullptr;
  Rect box;
  Font font;
  int slant = 0; // how far the ends of a hexagon point outwards
};

// Where an arc is drawn: its corners, the last one at the head, and the argument's number there (0
// for none).
struct ArcPlace {
  const Segm *seg = nullptr;
  std::vector<Point> path;
  int number = 0;
  bool enters_end = false; // arrives at the left or right end of its box
};

struct PictureLayout {
  std::vector<NodePlace> nodes; // in slot order
  std::vector<ArcPlace> arcs;
};

// Lays a picture out, changing nothing: hit tests and drawing share the layout.
PictureLayout lay_out_picture(const WinInfo *wi);

// The box in which a node's label fits, around the same centre and never smaller than the node.
// `inputs` is the number of arguments that are numbered at its border.
Rect fit_node(const Segm *node, int inputs, const Font &font);

// Hit test on a picture as it is drawn, by the rules of search_for_segment: the lowest slot hit, 0
// for none.
int hit_picture(const PictureLayout &layout, Point at, bool nodes_only);

// Draws a picture, changing nothing.
void DrawVeloraWindow(const WinInfo *wi, Canvas &canvas);
void draw_layout(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas);

// The rectangle that everything of a layout lies in; empty for an empty picture.
Rect layout_extent(const PictureLayout &layout);

// Marks. An expanded box shows the inputs and the result that it expects and does not get.
inline constexpr unsigned kExpanded = 0x800; // a flag of Segm::status
void expand_function_segment(WinInfo *wi, int segi, int on);
void MarkItemSelection(WinInfo *wi, int segi, int on);
void show_arc(WinInfo *wi, int segi, int on);
void ColourSelectedItems(WinInfo *wi, int palette_index);

// A picture as an SVG document with that title.
std::string picture_as_svg(const WinInfo *wi, const std::string &title);
// Writes a stored picture of that name and component (its first when `component` is negative) as
// an SVG file; 1, or 0 after a message.
int draw_to_svg(const char *name, int component, const char *file);
// The same of one record, shown or stored.
int save_svg(const WinInfo *wi, const char *file);

} // namespace velora
