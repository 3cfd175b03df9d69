// Cursors and marks of windows out of the program's drawings.
#include "shell/qt/q_cursors.h"

#include <QPainter>
#include <QPixmap>

#include "shell/qt/q_art.h"

namespace velora::qt {

namespace {

constexpr int kSide = 32;
CursorShape in_use = CursorShape::arrow;

Glyph glyph_of(CursorShape shape) {
  switch (shape) {
  case CursorShape::box:
    return Glyph::box;
  case CursorShape::bold_box:
    return Glyph::bold_box;
  case CursorShape::double_box:
    return Glyph::double_box;
  case CursorShape::hexagon:
    return Glyph::hexagon;
  case CursorShape::bold_hexagon:
    return Glyph::bold_hexagon;
  case CursorShape::double_hexagon:
    return Glyph::double_hexagon;
  case CursorShape::junction:
    return Glyph::junction;
  case CursorShape::start_join:
    return Glyph::start_join;
  case CursorShape::end_join:
    return Glyph::end_join;
  default:
    return Glyph::none;
  }
}

// Pointers are black with a white rim, so that they show on any ground.
QCursor drawn(Glyph glyph) {
  QPixmap map(kSide, kSide);
  map.fill(Qt::transparent);
  QPainter painter(&map);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(6, 6);
  painter.scale(1.25, 1.25);
  for (const QPointF shift :
       {QPointF(-0.8, 0), QPointF(0.8, 0), QPointF(0, -0.8), QPointF(0, 0.8)}) {
    painter.save();
    painter.translate(shift);
    draw_glyph(painter, glyph, Qt::white);
    painter.restore();
  }
  draw_glyph(painter, glyph, Qt::black);
  return QCursor(map, kSide / 2, kSide / 2);
}

} // namespace

CursorShape cursor_in_use() {
  return in_use;
}

void use_cursor(CursorShape shape) {
  in_use = shape;
}

QCursor cursor_for(CursorShape shape) {
  switch (shape) {
  case CursorShape::busy:
    return Qt::BusyCursor;
  case CursorShape::hand:
    return Qt::OpenHandCursor;
  case CursorShape::finger:
    return Qt::PointingHandCursor;
  case CursorShape::ibeam:
    return Qt::IBeamCursor;
  case CursorShape::cross:
    return Qt::CrossCursor;
  case CursorShape::arrow:
    return Qt::ArrowCursor;
  default:
    return drawn(glyph_of(shape));
  }
}

QIcon kind_icon(WindowKind kind) {
  switch (kind) {
  case kFunctionWindow:
    return glyph_icon(Glyph::function_picture);
  case kDataWindow:
    return glyph_icon(Glyph::data_picture);
  case kNetworkWindow:
    return glyph_icon(Glyph::network_picture);
  case kControlWindow:
    return glyph_icon(Glyph::console);
  case kGraphicsWindow:
    return glyph_icon(Glyph::graphics);
  default:
    return glyph_icon(Glyph::text);
  }
}

QIcon program_icon() {
  return glyph_icon(Glyph::program);
}

} // namespace velora::qt
