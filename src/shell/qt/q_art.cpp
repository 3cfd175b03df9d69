// The drawings, one a short list of strokes. The icons are drawn anew at each size.
#include "shell/qt/q_art.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <cmath>

#include "shell/qt/q_guard.h"

namespace velora::qt {

namespace {

const QColor kBlue(0x1f6feb);
const QColor kGreen(0x1a7f37);
const QColor kOrange(0xbc4c00);

QPolygonF hexagon(const QRectF &r, double cut) {
  return QPolygonF{{{r.left() + cut, r.top()},
                    {r.right() - cut, r.top()},
                    {r.right(), r.center().y()},
                    {r.right() - cut, r.bottom()},
                    {r.left() + cut, r.bottom()},
                    {r.left(), r.center().y()}}};
}

void arrow(QPainter &p, QPointF from, QPointF to, double head) {
  const double angle = std::atan2(to.y() - from.y(), to.x() - from.x());
  const auto side = [&](double turn) {
    return to + head * QPointF(std::cos(angle + turn), std::sin(angle + turn));
  };
  p.drawLine(from, to);
  p.drawLine(to, side(M_PI - 0.55));
  p.drawLine(to, side(M_PI + 0.55));
}

void pen(QPainter &p, const QColor &ink, double width) {
  p.setPen(QPen(ink, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void page(QPainter &p) {
  QPainterPath path;
  path.moveTo(3.5, 1.5);
  path.lineTo(9.5, 1.5);
  path.lineTo(12.5, 4.5);
  path.lineTo(12.5, 14.5);
  path.lineTo(3.5, 14.5);
  path.closeSubpath();
  p.drawPath(path);
  p.drawPolyline(QPolygonF{{{9.5, 1.5}, {9.5, 4.5}, {12.5, 4.5}}});
}

void draw_shape(QPainter &p, Glyph glyph, const QColor &ink) {
  const QRectF box(2, 4, 12, 8);
  const QRectF inner(4, 6, 8, 4);
  const bool bold = glyph == Glyph::bold_box || glyph == Glyph::bold_hexagon;
  pen(p, ink, bold ? 2.4 : 1.3);
  switch (glyph) {
  case Glyph::double_box:
    p.drawRect(inner);
    [[fallthrough]];
  case Glyph::box:
  case Glyph::bold_box:
    p.drawRect(box);
    break;
  case Glyph::double_hexagon:
    p.drawPolygon(hexagon(inner, 2));
    [[fallthrough]];
  default:
    p.drawPolygon(hexagon(box, 3.4));
  }
}

void draw_zoom(QPainter &p, Glyph glyph, const QColor &ink) {
  pen(p, ink, 1.4);
  p.drawEllipse(QRectF(2, 2, 9, 9));
  pen(p, ink, 2);
  p.drawLine(QPointF(10.2, 10.2), QPointF(14, 14));
  pen(p, ink, 1.4);
  if (glyph != Glyph::find)
    p.drawLine(QPointF(4.5, 6.5), QPointF(8.5, 6.5));
  if (glyph == Glyph::zoom_in)
    p.drawLine(QPointF(6.5, 4.5), QPointF(6.5, 8.5));
}

void draw_turn(QPainter &p, Glyph glyph) {
  if (glyph == Glyph::redo) {
    p.translate(16, 0);
    p.scale(-1, 1);
  }
  QPainterPath path;
  path.moveTo(3, 6.5);
  path.cubicTo(7, 3, 14, 5, 13, 12.5);
  p.drawPath(path);
  p.drawPolyline(QPolygonF{{{6.6, 8.4}, {3, 6.5}, {5.4, 3}}});
}

// The windows' own marks: a coloured sheet with what the window holds.
void draw_window(QPainter &p, Glyph glyph, const QColor &ink) {
  switch (glyph) {
  case Glyph::function_picture:
    pen(p, kBlue, 1.4);
    p.drawRect(QRectF(4, 2, 8, 4));
    p.drawPolygon(hexagon(QRectF(3, 10, 10, 4), 2));
    arrow(p, {8, 10}, {8, 6.4}, 2.4);
    break;
  case Glyph::data_picture:
    pen(p, kGreen, 1.4);
    p.drawRect(QRectF(5, 2, 6, 4));
    p.drawRect(QRectF(1.5, 10, 5.5, 4));
    p.drawRect(QRectF(9, 10, 5.5, 4));
    p.drawLine(QPointF(4.5, 10), QPointF(7, 6));
    p.drawLine(QPointF(11.5, 10), QPointF(9, 6));
    break;
  case Glyph::network_picture:
    pen(p, kOrange, 1.4);
    p.drawLine(QPointF(4, 4), QPointF(12, 8));
    p.drawLine(QPointF(4, 4), QPointF(4.5, 12.5));
    p.drawLine(QPointF(4.5, 12.5), QPointF(12, 8));
    p.setBrush(kOrange);
    for (const QPointF at : {QPointF(4, 4), QPointF(12, 8), QPointF(4.5, 12.5)})
      p.drawEllipse(at, 2, 2);
    break;
  case Glyph::console:
    pen(p, ink, 1.3);
    p.drawRoundedRect(QRectF(1.5, 2.5, 13, 11), 1.5, 1.5);
    pen(p, kBlue, 1.6);
    p.drawPolyline(QPolygonF{{{4, 6}, {6.5, 8.2}, {4, 10.4}}});
    p.drawLine(QPointF(8, 10.6), QPointF(12, 10.6));
    break;
  case Glyph::graphics:
    pen(p, ink, 1.3);
    p.drawRect(QRectF(1.5, 2.5, 13, 11));
    pen(p, kGreen, 1.6);
    p.drawPolyline(QPolygonF{{{3, 11}, {6, 6}, {9, 9}, {13, 4}}});
    break;
  case Glyph::program:
    pen(p, kBlue, 2);
    p.setBrush(QColor(0xdbeafe));
    p.drawPolygon(hexagon(QRectF(1, 2, 14, 12), 4));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF{{{5, 5}, {8, 11}, {11, 5}}});
    break;
  default:
    pen(p, ink, 1.2);
    page(p);
    for (const double y : {7.0, 9.2, 11.4})
      p.drawLine(QPointF(5.5, y), QPointF(10.5, y));
  }
}

void draw_file(QPainter &p, Glyph glyph, const QColor &ink) {
  pen(p, ink, 1.3);
  if (glyph == Glyph::new_file) {
    page(p);
  } else if (glyph == Glyph::open_file) {
    p.drawPolygon(QPolygonF{{{1.5, 13.5}, {1.5, 3.5}, {6, 3.5}, {7.5, 5.5}, {13, 5.5}, {13, 7.5}}});
    p.drawPolygon(QPolygonF{{{1.5, 13.5}, {4, 7.5}, {15, 7.5}, {12.5, 13.5}}});
  } else {
    p.drawPolygon(QPolygonF{{{2, 2}, {11.5, 2}, {14, 4.5}, {14, 14}, {2, 14}}});
    p.drawRect(QRectF(5, 2, 5, 4));
    p.drawRect(QRectF(4.5, 9, 7, 5));
  }
}

void draw_network_step(QPainter &p, Glyph glyph, const QColor &ink) {
  pen(p, ink, 1.3);
  if (glyph == Glyph::parents) {
    p.translate(0, 16);
    p.scale(1, -1);
  }
  p.drawRect(QRectF(5, 2, 6, 3.5));
  p.drawRect(QRectF(1.5, 10.5, 5, 3.5));
  p.drawRect(QRectF(9.5, 10.5, 5, 3.5));
  arrow(p, {7, 5.5}, {4.5, 10}, 2);
  arrow(p, {9, 5.5}, {11.5, 10}, 2);
}

void draw_move(QPainter &p, const QColor &ink) {
  pen(p, ink, 1.4);
  for (const QPointF to : {QPointF(8, 1.5), QPointF(8, 14.5), QPointF(1.5, 8), QPointF(14.5, 8)})
    arrow(p, {8, 8}, to, 2.6);
}

void draw_join(QPainter &p, Glyph glyph, const QColor &ink) {
  pen(p, ink, 1.4);
  arrow(p, {3, 13}, {13, 3}, 4);
  if (glyph == Glyph::join)
    return;
  p.setBrush(ink);
  p.drawEllipse(glyph == Glyph::start_join ? QPointF(3, 13) : QPointF(13, 3), 2, 2);
}

void draw_rest(QPainter &p, Glyph glyph, const QColor &ink) {
  pen(p, ink, 1.4);
  switch (glyph) {
  case Glyph::junction:
    p.setBrush(ink);
    p.drawEllipse(QPointF(8, 8), 3, 3);
    arrow(p, {8, 14.5}, {8, 11.6}, 0.1);
    p.drawLine(QPointF(6, 6), QPointF(2.5, 2));
    p.drawLine(QPointF(10, 6), QPointF(13.5, 2));
    break;
  case Glyph::hold:
    p.drawEllipse(QRectF(2, 3.5, 12, 9));
    p.drawLine(QPointF(6.3, 6), QPointF(6.3, 10));
    p.drawLine(QPointF(9.7, 6), QPointF(9.7, 10));
    p.drawLine(QPointF(6.3, 8), QPointF(9.7, 8));
    break;
  case Glyph::recursive:
    p.drawRect(QRectF(2, 7, 8, 6));
    p.drawArc(QRectF(6, 2.5, 8, 8), -60 * 16, 210 * 16);
    p.drawPolyline(QPolygonF{{{10.2, 10.6}, {12.6, 9.6}, {13.4, 12}}});
    break;
  case Glyph::import_list:
    for (const double y : {3.0, 7.0, 11.0})
      p.drawRect(QRectF(6, y, 8, 2.6));
    arrow(p, {1, 8.3}, {5, 8.3}, 2);
    break;
  case Glyph::lasso:
    p.drawEllipse(QRectF(2, 2, 12, 8));
    p.drawPolyline(QPolygonF{{{5, 9.6}, {4, 12}, {6.5, 14.5}}});
    break;
  case Glyph::zoom_whole:
    p.drawRect(QRectF(2, 3, 12, 10));
    arrow(p, {8, 8}, {4, 5}, 2);
    arrow(p, {8, 8}, {12, 11}, 2);
    break;
  case Glyph::evaluate:
    p.setBrush(kGreen);
    pen(p, kGreen, 1.4);
    p.drawPolygon(QPolygonF{{{4, 2.5}, {13.5, 8}, {4, 13.5}}});
    break;
  case Glyph::commit:
    pen(p, kGreen, 2.4);
    p.drawPolyline(QPolygonF{{{2.5, 8.5}, {6.5, 12.5}, {13.5, 3.5}}});
    break;
  case Glyph::next:
    p.drawRect(QRectF(2, 4, 7, 8));
    arrow(p, {9.5, 8}, {15, 8}, 3);
    break;
  case Glyph::query: {
    pen(p, kBlue, 2);
    p.drawPolyline(QPolygonF{{{3, 3}, {8, 8}, {3, 13}}});
    p.drawLine(QPointF(9, 13), QPointF(14, 13));
    break;
  }
  case Glyph::annotation:
    p.drawPolygon(
        QPolygonF{{{2, 2.5}, {14, 2.5}, {14, 10.5}, {8, 10.5}, {5, 14}, {5, 10.5}, {2, 10.5}}});
    break;
  default:
    break;
  }
}

// Draws at whatever size the icon is asked for; a disabled one is pale.
class GlyphEngine : public QIconEngine {
public:
  explicit GlyphEngine(Glyph glyph) : glyph_(glyph) {}
  void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override {
    guarded([&] {
      const QPalette palette = QApplication::palette();
      painter->save();
      painter->setRenderHint(QPainter::Antialiasing);
      painter->translate(rect.topLeft());
      painter->scale(rect.width() / 16.0, rect.height() / 16.0);
      if (mode == QIcon::Disabled)
        painter->setOpacity(0.35);
      draw_glyph(*painter, glyph_, palette.color(QPalette::WindowText));
      painter->restore();
    });
  }
  QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap map(size);
    map.fill(Qt::transparent);
    QPainter painter(&map);
    paint(&painter, {QPoint(0, 0), size}, mode, state);
    return map;
  }
  [[nodiscard]] QIconEngine *clone() const override { return new GlyphEngine(glyph_); }

private:
  Glyph glyph_;
};

} // namespace

void draw_glyph(QPainter &painter, Glyph glyph, const QColor &ink) {
  painter.save();
  painter.setBrush(Qt::NoBrush);
  pen(painter, ink, 1.4);
  if (glyph >= Glyph::program && glyph <= Glyph::graphics)
    draw_window(painter, glyph, ink);
  else if (glyph >= Glyph::box && glyph <= Glyph::double_hexagon)
    draw_shape(painter, glyph, ink);
  else if (glyph >= Glyph::join && glyph <= Glyph::end_join)
    draw_join(painter, glyph, ink);
  else if (glyph == Glyph::move)
    draw_move(painter, ink);
  else if (glyph >= Glyph::new_file && glyph <= Glyph::save_file)
    draw_file(painter, glyph, ink);
  else if (glyph == Glyph::undo || glyph == Glyph::redo)
    draw_turn(painter, glyph);
  else if (glyph == Glyph::zoom_in || glyph == Glyph::zoom_out || glyph == Glyph::find)
    draw_zoom(painter, glyph, ink);
  else if (glyph == Glyph::children || glyph == Glyph::parents)
    draw_network_step(painter, glyph, ink);
  else
    draw_rest(painter, glyph, ink);
  painter.restore();
}

QIcon glyph_icon(Glyph glyph) {
  return QIcon(new GlyphEngine(glyph));
}

} // namespace velora::qt
