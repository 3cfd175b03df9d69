// Drawing calls turned into calls of a painter. The font is set so that each character fills its
// cell exactly, however wide the letters of the font at hand are.
#include "shell/qt/q_canvas.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>

#include <map>
#include <tuple>

#include "platform/text_measures.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

QColor colour_of(Colour c) {
  return {c.red, c.green, c.blue};
}

struct ScaledFont {
  QFont font;
  double base; // from the top of the line down to the base line
};

// A font of fixed pitch whose characters are as wide as a cell. Sizes below a dot matter, so the
// size is given in real points of a surface with 72 dots an inch and the rest is spacing.
ScaledFont make_font(const Font &wanted) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setFamilies({"DejaVu Sans Mono", "Liberation Mono", "Courier New", font.family()});
  font.setStyleHint(QFont::Monospace);
  font.setItalic(wanted.italic);
  font.setBold(wanted.bold);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setPixelSize(wanted.size * 10 / 9);
  const double cell = wanted.size * 2 / 3.0;
  const double advance = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
  font.setLetterSpacing(QFont::AbsoluteSpacing, cell - advance);
  const QFontMetricsF metrics(font);
  const double height = measured_height(wanted);
  return {font, (height - metrics.height()) / 2 + metrics.ascent()};
}

const ScaledFont &font_for(const Font &wanted) {
  static std::map<std::tuple<int, bool, bool>, ScaledFont> fonts;
  const std::tuple key{wanted.size, wanted.italic, wanted.bold};
  auto found = fonts.find(key);
  if (found == fonts.end())
    found = fonts.emplace(key, make_font(wanted)).first;
  return found->second;
}

} // namespace

PainterCanvas::PainterCanvas(QPainter &painter) : painter_(painter) {
  painter_.save();
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setRenderHint(QPainter::TextAntialiasing);
  painter_.save();
}

PainterCanvas::~PainterCanvas() {
  painter_.restore();
  painter_.restore();
}

// The ends of a line are round, so that joined lines leave no gap.
void PainterCanvas::use(const Pen &pen, const Brush &brush) {
  if (pen.style == PenStyle::none) {
    painter_.setPen(Qt::NoPen);
  } else {
    QPen made(colour_of(pen.colour), pen.width, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin);
    if (pen.style == PenStyle::dotted) {
      made.setCapStyle(Qt::FlatCap);
      made.setDashPattern({2.0 / pen.width, 2.0 / pen.width});
    }
    painter_.setPen(made);
  }
  painter_.setBrush(brush.filled ? QBrush(colour_of(brush.colour)) : QBrush(Qt::NoBrush));
}

namespace {

// Points name dots, whose middle is half a unit further.
QPointF middle(Point p) {
  return {p.x + 0.5, p.y + 0.5};
}

QRectF middle(const Rect &box) {
  const Rect r = box.normalised();
  return {middle(Point{r.left, r.top}), middle(Point{r.right, r.bottom})};
}

} // namespace

void PainterCanvas::line(Point from, Point to, const Pen &pen) {
  use(pen, {{}, false});
  painter_.drawLine(middle(from), middle(to));
}

void PainterCanvas::polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) {
  use(pen, brush);
  QPolygonF shape;
  shape.reserve(static_cast<qsizetype>(corners.size()));
  for (const Point p : corners)
    shape << middle(p);
  painter_.drawPolygon(shape);
}

void PainterCanvas::rectangle(const Rect &box, const Pen &pen, const Brush &brush) {
  use(pen, brush);
  painter_.drawRect(middle(box));
}

void PainterCanvas::ellipse(const Rect &box, const Pen &pen, const Brush &brush) {
  use(pen, brush);
  painter_.drawEllipse(middle(box));
}

void PainterCanvas::text(Point at, std::string_view text, const Font &font, Colour colour) {
  const ScaledFont &scaled = font_for(font);
  painter_.setFont(scaled.font);
  painter_.setPen(colour_of(colour));
  painter_.drawText(QPointF(at.x, at.y + scaled.base), wide(text));
}

int PainterCanvas::text_width(std::string_view text, const Font &font) {
  return measured_width(text, font);
}

int PainterCanvas::text_height(const Font &font) {
  return measured_height(font);
}

void PainterCanvas::set_clip(const Rect &box) {
  clear_clip();
  painter_.setClipRect(QRect(box.left, box.top, box.width() + 1, box.height() + 1),
                       Qt::IntersectClip);
}

void PainterCanvas::clear_clip() {
  painter_.restore();
  painter_.save();
}

} // namespace velora::qt
