// Drawing a laid-out picture, from the back to the front, and the marks of its segments.
#include "editor/draw.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "editor/draw_layout.h"
#include "editor/draw_network.h"
#include "editor/model/vel_segs.h"
#include "editor/picture_walk.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "platform/text_measures.h"

namespace velora {

namespace {

constexpr Colour kWhiteFill{255, 255, 255};
constexpr Colour kSelectedFill{223, 223, 255};
constexpr Colour kNumberColour{70, 70, 70};
constexpr int kHandle = 5; // size of the marks at the corners of a selected item

Colour line_colour(const Segm *seg) {
  if (is_arc(seg) && (seg->status & kHighlighted) != 0)
    return kPalette[kRed];
  return kPalette[colour_index(seg)];
}

// What a value comes in by, goes out by, or simply is: the ground of parameters, of the result and
// of constants.
constexpr Colour kParameterFill{223, 255, 223};
constexpr Colour kResultFill{255, 223, 223};
constexpr Colour kConstantFill{255, 250, 205};

Colour plain_fill(const Segm *seg, int wtype) {
  if (seg->type != kHexagon || wtype != kFunctionPicture)
    return kWhiteFill;
  if (seg->segnum == 1)
    return kResultFill;
  if (shape_style(seg) == kBold)
    return kParameterFill;
  return shape_style(seg) == kPlain ? kConstantFill : kWhiteFill;
}

// A coloured node is filled with a light shade of its colour, so that any label can be read.
Colour fill_colour(const Segm *seg, int wtype) {
  if ((seg->status & kSelected) != 0)
    return kSelectedFill;
  if (colour_index(seg) == kBlack)
    return plain_fill(seg, wtype);
  const auto light = [](std::uint8_t part) { return static_cast<std::uint8_t>(223 + part / 8); };
  const Colour line = line_colour(seg);
  return {light(line.red), light(line.green), light(line.blue)};
}

std::array<Point, 6> hexagon(const Rect &box, int slant) {
  const int y = box.centre().y;
  return {Point{box.left, y}, {box.left + slant, box.top},     {box.right - slant, box.top},
          {box.right, y},     {box.right - slant, box.bottom}, {box.left + slant, box.bottom}};
}

Rect inset(const Rect &box, int by) {
  return {box.left + by, box.top + by, box.right - by, box.bottom - by};
}

void draw_outline(const Segm *seg, const Rect &box, int slant, const Pen &pen, const Brush &brush,
                  Canvas &canvas) {
  if (seg->type == kBox)
    canvas.rectangle(box, pen, brush);
  else if (seg->type == kJunction)
    canvas.ellipse(box, pen, brush);
  else
    canvas.polygon(hexagon(box, slant), pen, brush);
}

// The upright bars that tell a hold value from a hexagon.
void draw_bars(const NodePlace &node, const Pen &pen, Canvas &canvas) {
  for (const int x : {node.box.left + node.slant, node.box.right - node.slant})
    canvas.line({x, node.box.top}, {x, node.box.bottom}, pen);
}

void draw_label(const NodePlace &node, Canvas &canvas) {
  const std::string_view label = label_of(node.seg);
  if (label.empty())
    return;
  const int width = measured_width(label, node.font);
  const int height = measured_height(node.font);
  const Point centre = node.box.centre();
  const bool clipped = width > node.box.width();
  if (clipped)
    canvas.set_clip(inset(node.box, 1));
  canvas.text({clipped ? node.box.left + 2 : centre.x - width / 2, centre.y - height / 2}, label,
              node.font, kPalette[kBlack]);
  if (clipped)
    canvas.clear_clip();
}

// A line below the result, as below a sum: it is told from a parameter without colours too.
void draw_sum_line(const NodePlace &node, const Pen &pen, Canvas &canvas) {
  const int y = node.box.bottom + kDoubleGap + 1;
  canvas.line({node.box.left + node.slant, y}, {node.box.right - node.slant, y}, pen);
}

void draw_node(const NodePlace &node, int wtype, Canvas &canvas) {
  const Segm *seg = node.seg;
  const Pen pen{line_colour(seg), shape_style(seg) == kBold ? 2 : 1, PenStyle::solid};
  draw_outline(seg, node.box, node.slant, pen, Brush{fill_colour(seg, wtype), true}, canvas);
  // The inner border's slant keeps the same distance all around.
  if (shape_style(seg) == kDouble && seg->type != kJunction)
    draw_outline(seg, inset(node.box, kDoubleGap), std::max(1, node.slant - 1), pen,
                 Brush{{}, false}, canvas);
  if (seg->type == kHoldValue)
    draw_bars(node, pen, canvas);
  if (seg->type == kHexagon && seg->segnum == 1 && wtype == kFunctionPicture)
    draw_sum_line(node, pen, canvas);
  draw_label(node, canvas);
}

void draw_handle(Point at, Canvas &canvas) {
  const int half = kHandle / 2;
  canvas.rectangle({at.x - half, at.y - half, at.x + half, at.y + half},
                   Pen{kPalette[kBlack], 1, PenStyle::none}, Brush{kPalette[kBlack], true});
}

// The last stretch of an arrow: its tip, the unit vector towards it and its length.
struct LastStretch {
  Point tip;
  double dx;
  double dy;
  double length;
};

LastStretch last_stretch(const ArcPlace &arc) {
  const Point tip = arc.path.back();
  const Point before = arc.path[arc.path.size() - 2];
  const double dx = tip.x - before.x;
  const double dy = tip.y - before.y;
  const double length = std::sqrt(dx * dx + dy * dy);
  if (length < 1)
    return {tip, 0, 1, 0};
  return {tip, dx / length, dy / length, length};
}

Pen arc_pen(const Segm *arc) {
  const bool marked = (arc->status & (kSelected | kHighlighted)) != 0;
  return Pen{line_colour(arc), marked ? 2 : 1, PenStyle::solid};
}

void draw_line(const ArcPlace &arc, Canvas &canvas) {
  for (std::size_t i = 1; i < arc.path.size(); ++i)
    canvas.line(arc.path[i - 1], arc.path[i], arc_pen(arc.seg));
}

std::array<Point, 3> head_corners(const ArcPlace &arc, int size) {
  const LastStretch at = last_stretch(arc);
  const double length = std::min<double>(head_length(size), std::max(3.0, at.length * 0.7));
  const double half = length * 0.4;
  const auto corner = [&](double back, double aside) {
    return Point{static_cast<int>(std::lround(at.tip.x - back * at.dx - aside * at.dy)),
                 static_cast<int>(std::lround(at.tip.y - back * at.dy + aside * at.dx))};
  };
  return {at.tip, corner(length, half), corner(length, -half)};
}

void draw_head(const ArcPlace &arc, int size, Canvas &canvas) {
  const Colour colour = line_colour(arc.seg);
  canvas.polygon(head_corners(arc, size), Pen{colour, 1, PenStyle::solid}, Brush{colour, true});
}

// Where the ink of an argument's number stands: beside its arrow, clear of the line and of the
// head. An arrow from above has it on the right, so that each number of several arrows stands
// between its own and the next; one that arrives at an end of its box has it above.
Rect number_box(const ArcPlace &arc, int width, int height, const Font &font) {
  const LastStretch at = last_stretch(arc);
  const double head = head_length(font.size);
  const double half_head = head * 0.4;
  const double across = std::max(0.01, std::fabs(at.dx));
  const double down = std::max(0.01, std::fabs(at.dy));
  double x = 0;
  double y = 0;
  if (arc.enters_end) {
    x = at.tip.x - (at.dx < 0 ? -1 : 1) * (width / 2.0 + 2);
    const double line = at.tip.y - std::fabs(x - at.tip.x) * at.dy / across;
    y = line - std::max(height / 2.0 + width / 2.0 * down / across, half_head + height / 2.0) - 1;
  } else {
    const double side = at.dy < 0 ? 1 : -1; // an arrow from below has it below its box
    y = at.tip.y + side * (height / 2.0 + 2);
    const double line = at.tip.x - std::fabs(y - at.tip.y) * at.dx / down;
    x = line + std::max(width / 2.0 + height / 2.0 * across / down, half_head + width / 2.0) + 1;
  }
  const int left = static_cast<int>(std::lround(x - width / 2.0));
  const int top = static_cast<int>(std::lround(y - height / 2.0));
  return {left, top, left + width, top + height};
}

Rect number_box(const ArcPlace &arc, const Font &font) {
  const Font small = number_font(font);
  const int width = measured_width(std::to_string(arc.number), small);
  return number_box(arc, width, measured_height(small) / 2, font);
}

void draw_number(const ArcPlace &arc, const Font &font, Canvas &canvas) {
  if (arc.number == 0)
    return;
  const std::string text = std::to_string(arc.number);
  const Font small = number_font(font);
  const int height = measured_height(small);
  const Rect ink = number_box(arc, font);
  canvas.rectangle(ink, Pen{kWhiteFill, 1, PenStyle::none}, Brush{kWhiteFill, true});
  canvas.text({ink.left, ink.centre().y - height / 2}, text, small, kNumberColour);
}

void draw_handles(const PictureLayout &layout, int picture_size, Canvas &canvas) {
  for (const NodePlace &node : layout.nodes) {
    if ((node.seg->status & kSelected) == 0)
      continue;
    const Rect &box = node.box;
    for (const Point at : {Point{box.left, box.top},
                           {box.right, box.top},
                           {box.left, box.bottom},
                           {box.right, box.bottom}})
      draw_handle(at, canvas);
  }
  for (const ArcPlace &arc : layout.arcs)
    if ((arc.seg->status & kSelected) != 0) {
      // Behind the head, which must stay to be seen.
      const LastStretch at = last_stretch(arc);
      const double back = std::min(head_length(picture_size) + 3.0, at.length);
      draw_handle(arc.path.front(), canvas);
      draw_handle({static_cast<int>(std::lround(at.tip.x - back * at.dx)),
                   static_cast<int>(std::lround(at.tip.y - back * at.dy))},
                  canvas);
    }
}

void set_status(WinInfo *wi, int segi, unsigned bit, int on) {
  Segm *seg = wi->seg_ments[segi];
  if (seg == nullptr)
    return;
  seg->status = on != 0 ? seg->status | bit : seg->status & ~bit;
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
}

} // namespace

void draw_layout(const WinInfo *wi, const PictureLayout &layout, Canvas &canvas) {
  const Font font = picture_font(wi);
  if (wi->wtype == kNetworkPicture)
    draw_network_ground(wi, layout, canvas);
  for (const ArcPlace &arc : layout.arcs)
    draw_line(arc, canvas);
  for (const ArcPlace &arc : layout.arcs)
    draw_number(arc, font, canvas);
  for (const ArcPlace &arc : layout.arcs)
    draw_head(arc, font.size, canvas);
  for (const NodePlace &node : layout.nodes)
    draw_node(node, wi->wtype, canvas);
  for (const NodePlace &node : layout.nodes)
    if ((node.seg->status & kExpanded) != 0)
      draw_expanded(node, canvas);
  if (wi->wtype == kNetworkPicture)
    draw_network_marks(layout, canvas);
  draw_handles(layout, font.size, canvas);
}

void DrawVeloraWindow(const WinInfo *wi, Canvas &canvas) {
  draw_layout(wi, lay_out_picture(wi), canvas);
}

Rect arrow_end_box(const ArcPlace &arc, const Font &font, int height) {
  const LastStretch at = last_stretch(arc);
  const double down = std::max(0.01, std::fabs(at.dy));
  const double back = std::min(at.length, height / down);
  const Point start{static_cast<int>(std::lround(at.tip.x - back * at.dx)),
                    static_cast<int>(std::lround(at.tip.y - back * at.dy))};
  Rect box = Rect{start.x, start.y, at.tip.x, at.tip.y}.normalised();
  const auto cover = [&box](Point point) {
    box = {std::min(box.left, point.x), std::min(box.top, point.y), std::max(box.right, point.x),
           std::max(box.bottom, point.y)};
  };
  for (const Point corner : head_corners(arc, font.size))
    cover(corner);
  if (arc.number == 0)
    return box;
  const Rect number = number_box(arc, font);
  cover({number.left, number.top});
  cover({number.right, number.bottom});
  return box;
}

Rect layout_extent(const PictureLayout &layout) {
  Rect extent;
  bool first = true;
  const auto include = [&](Point at) {
    if (first)
      extent = {at.x, at.y, at.x, at.y};
    first = false;
    extent = {std::min(extent.left, at.x), std::min(extent.top, at.y), std::max(extent.right, at.x),
              std::max(extent.bottom, at.y)};
  };
  for (const NodePlace &node : layout.nodes) {
    include({node.box.left, node.box.top});
    include({node.box.right, node.box.bottom});
  }
  for (const ArcPlace &arc : layout.arcs)
    for (const Point corner : arc.path)
      include(corner);
  return extent;
}

void MarkItemSelection(WinInfo *wi, int segi, int on) {
  set_status(wi, segi, kSelected, on);
}

void expand_function_segment(WinInfo *wi, int segi, int on) {
  set_status(wi, segi, kExpanded, on);
}

void show_arc(WinInfo *wi, int segi, int on) {
  set_status(wi, segi, kHighlighted, on);
}

void ColourSelectedItems(WinInfo *wi, int palette_index) {
  for (int slot = 1; slot <= wi->seg_ct; ++slot) {
    Segm *seg = wi->seg_ments[slot];
    if (seg != nullptr && (seg->status & kSelected) != 0)
      set_colour(seg, palette_index);
  }
  if (wi->win != 0)
    gDesktop->invalidate(wi->win);
}

} // namespace velora
