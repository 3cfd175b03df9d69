// Drawing calls turned into calls of a painter. The font is set so that each character fills its
// cell exactly, however wide the letters of the font at hand are.
#include "shell/qt/q_canvas.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>
#include <QStaticText>

#include <cmath>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>

#include "platform/text_measures.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr double kAround = 8;          // what lines and arrow heads reach beyond their ends
constexpr double kLeastReadable = 3.5; // smaller letters are drawn as a bar

constexpr double kLeastRound = 3; // a smaller circle is a dot

QColor colour_of(Colour c) {
  return {c.red, c.green, c.blue};
}

struct ScaledFont {
  QFont font;
  double top; // from the top of the line down to the top of the letters
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
  return {font, (height - metrics.height()) / 2};
}

const ScaledFont &font_for(const Font &wanted) {
  static std::map<std::tuple<int, bool, bool>, ScaledFont> fonts;
  const std::tuple key{wanted.size, wanted.italic, wanted.bold};
  auto found = fonts.find(key);
  if (found == fonts.end())
    found = fonts.emplace(key, make_font(wanted)).first;
  return found->second;
}

// Shaping a text costs more than drawing it, so texts are kept as they were shaped.
const QStaticText &shaped(std::string_view text, const Font &font) {
  constexpr std::size_t kMostKept = 5'000;
  static std::unordered_map<std::string, QStaticText> kept;
  std::string key = std::to_string(font.size * 4 + (font.italic ? 2 : 0) + (font.bold ? 1 : 0));
  key += ' ';
  key += text;
  const auto found = kept.find(key);
  if (found != kept.end())
    return found->second;
  if (kept.size() >= kMostKept)
    kept.clear();
  QStaticText made(wide(text));
  made.setTextFormat(Qt::PlainText);
  return kept.emplace(std::move(key), std::move(made)).first->second;
}

} // namespace

PainterCanvas::PainterCanvas(QPainter &painter)
    : painter_(painter),
      scale_(std::hypot(painter.combinedTransform().m11(), painter.combinedTransform().m12())) {
  // The surface is counted in its own units, which may be several dots each.
  bool can = false;
  const QTransform back = painter_.worldTransform().inverted(&can);
  const QRectF all = painter_.viewport();
  if (can)
    seen_ = back.mapRect(all).adjusted(-kAround, -kAround, kAround, kAround);
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
    // However small a picture is shown, a line is a dot wide; drawing that is also the fastest.
    if (pen.width * scale_ < 1) {
      made.setWidth(1);
      made.setCosmetic(true);
    }
    if (pen.style == PenStyle::dotted) {
      made.setCapStyle(Qt::FlatCap);
      made.setDashPattern({2.0 / pen.width, 2.0 / pen.width});
    } else if (pen.style == PenStyle::dashed) {
      made.setCapStyle(Qt::FlatCap);
      made.setDashPattern({6.0 / pen.width, 3.0 / pen.width});
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

bool PainterCanvas::out_of_sight(const Rect &box) const {
  return !seen_.isNull() && (box.right < seen_.left() || box.left > seen_.right() ||
                             box.bottom < seen_.top() || box.top > seen_.bottom());
}

void PainterCanvas::line(Point from, Point to, const Pen &pen) {
  if (out_of_sight(Rect{from.x, from.y, to.x, to.y}.normalised()))
    return;
  use(pen, {{}, false});
  painter_.drawLine(middle(from), middle(to));
}

void PainterCanvas::polygon(std::span<const Point> corners, const Pen &pen, const Brush &brush) {
  QPolygonF shape;
  shape.reserve(static_cast<qsizetype>(corners.size()));
  for (const Point p : corners)
    shape << middle(p);
  const QRect around = shape.boundingRect().toAlignedRect();
  if (out_of_sight({around.left(), around.top(), around.right(), around.bottom()}))
    return;
  // Seen from afar a filled shape is no smaller for its missing outline.
  const bool filled_alone = scale_ < 0.7 && brush.filled && brush.colour == pen.colour;
  use(filled_alone ? Pen{pen.colour, 1, PenStyle::none} : pen, brush);
  painter_.drawPolygon(shape);
}

void PainterCanvas::rectangle(const Rect &box, const Pen &pen, const Brush &brush) {
  if (out_of_sight(box.normalised()))
    return;
  use(pen, brush);
  // Upright lines are sharpest, and fastest, without smoothing.
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.drawRect(middle(box));
  painter_.setRenderHint(QPainter::Antialiasing);
}

void PainterCanvas::ellipse(const Rect &box, const Pen &pen, const Brush &brush) {
  if (out_of_sight(box.normalised()))
    return;
  if (box.width() * scale_ < kLeastRound) {
    painter_.fillRect(middle(box), colour_of(pen.colour));
    return;
  }
  use(pen, brush);
  painter_.drawEllipse(middle(box));
}

void PainterCanvas::text(Point at, std::string_view text, const Font &font, Colour colour) {
  const int height = measured_height(font);
  const int width = measured_width(text, font);
  if (out_of_sight({at.x, at.y, at.x + width, at.y + height}))
    return;
  if (font.size * scale_ < kLeastReadable) {
    QColor faint = colour_of(colour);
    faint.setAlphaF(0.5F);
    painter_.fillRect(QRectF(at.x, at.y + height * 0.35, width, height * 0.4), faint);
    return;
  }
  const ScaledFont &scaled = font_for(font);
  painter_.setFont(scaled.font);
  painter_.setPen(colour_of(colour));
  painter_.drawStaticText(QPointF(at.x, at.y + scaled.top), shaped(text, font));
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
