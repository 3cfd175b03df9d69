// The program's own little drawings: what stands on the tools, in the corners of windows and under
// the pointer. Each is drawn on a square of 16 units and looks right at any size.
#pragma once

#include <QIcon>

class QPainter;

namespace velora::qt {

enum class Glyph {
  none,
  program,
  function_picture,
  data_picture,
  network_picture,
  console,
  text,
  graphics,
  box,
  bold_box,
  double_box,
  hexagon,
  bold_hexagon,
  double_hexagon,
  junction,
  hold,
  recursive,
  import_list,
  join,
  start_join,
  end_join,
  move,
  lasso,
  new_file,
  open_file,
  save_file,
  undo,
  redo,
  zoom_in,
  zoom_out,
  zoom_whole,
  evaluate,
  commit,
  next,
  find,
  query,
  children,
  parents,
  annotation
};

// Draws it in `ink`, with the painter's square of 16 units at the origin.
void draw_glyph(QPainter &painter, Glyph glyph, const QColor &ink);
// An icon that follows the colours of the palette and the resolution of the screen.
QIcon glyph_icon(Glyph glyph);

} // namespace velora::qt
