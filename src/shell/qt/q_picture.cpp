// Views of pictures. The scroll bars count dots of the extent at the present zoom.
#include "shell/qt/q_picture.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "shell/desk_events.h"
#include "shell/qt/q_canvas.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_input.h"
#include "shell/qt/q_menus.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr double kLeastZoom = 0.1;
constexpr double kMostZoom = 8;
constexpr double kWheelZoom = 1.15; // a notch
constexpr int kNotch = 120;
constexpr int kLineUnits = 20;

} // namespace

PictureArea::PictureArea(WindowId id, WindowKind kind) : id_(id), kind_(kind) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_InputMethodEnabled);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

// --- places --------------------------------------------------------------------------------------

Point PictureArea::unit_at(QPointF dot) const {
  return {static_cast<int>(std::floor((dot.x() + horizontalScrollBar()->value()) / zoom_)),
          static_cast<int>(std::floor((dot.y() + verticalScrollBar()->value()) / zoom_))};
}

QPointF PictureArea::dot_at(Point unit) const {
  return {unit.x * zoom_ - horizontalScrollBar()->value(),
          unit.y * zoom_ - verticalScrollBar()->value()};
}

Rect PictureArea::seen() const {
  const Point first = unit_at({0, 0});
  const Point last = unit_at({viewport()->width() - 1.0, viewport()->height() - 1.0});
  return {first.x, first.y, last.x, last.y};
}

void PictureArea::set_extent(const Rect &extent) {
  if (extent == extent_)
    return;
  extent_ = extent;
  update_bars();
}

// What begins in the corner stays there; what lies left of it or above can be scrolled to.
void PictureArea::update_bars() {
  const auto set = [this](QScrollBar *bar, int from, int to, int page) {
    const int first = static_cast<int>(std::floor(std::min(from, 0) * zoom_));
    const int last = static_cast<int>(std::ceil(to * zoom_)) - page;
    bar->setPageStep(page);
    bar->setSingleStep(kLineUnits);
    bar->setRange(first, std::max(last, first));
  };
  set(horizontalScrollBar(), extent_.left, extent_.right, viewport()->width());
  set(verticalScrollBar(), extent_.top, extent_.bottom, viewport()->height());
}

void PictureArea::set_zoom(double factor, QPoint fixed) {
  const double x = (fixed.x() + horizontalScrollBar()->value()) / zoom_;
  const double y = (fixed.y() + verticalScrollBar()->value()) / zoom_;
  zoom_ = std::clamp(factor, kLeastZoom, kMostZoom);
  update_bars();
  horizontalScrollBar()->setValue(static_cast<int>(std::lround(x * zoom_ - fixed.x())));
  verticalScrollBar()->setValue(static_cast<int>(std::lround(y * zoom_ - fixed.y())));
  viewport()->update();
  show_zoom(zoom_);
}

void PictureArea::show_from(Point corner, double factor) {
  zoom_ = std::clamp(factor, kLeastZoom, kMostZoom);
  update_bars();
  horizontalScrollBar()->setValue(static_cast<int>(std::lround(corner.x * zoom_)));
  verticalScrollBar()->setValue(static_cast<int>(std::lround(corner.y * zoom_)));
  viewport()->update();
  show_zoom(zoom_);
}

// --- painting ------------------------------------------------------------------------------------

void PictureArea::draw(QPainter &painter) {
  PainterCanvas canvas(painter);
  paint_window(id_, canvas);
}

void PictureArea::paintEvent(QPaintEvent *event) {
  guarded([&] {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), Qt::white);
    painter.translate(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
    painter.scale(zoom_, zoom_);
    draw(painter);
  });
}

void PictureArea::resizeEvent(QResizeEvent *) {
  guarded([this] { update_bars(); });
}

void PictureArea::scrollContentsBy(int, int) {
  viewport()->update();
}

// --- events --------------------------------------------------------------------------------------

void PictureArea::wheelEvent(QWheelEvent *event) {
  guarded([&] {
    if (pass_wheel(event)) {
      event->accept();
      return;
    }
    if ((event->modifiers() & Qt::ControlModifier) == 0) {
      QAbstractScrollArea::wheelEvent(event);
      return;
    }
    const double notches = static_cast<double>(event->angleDelta().y()) / kNotch;
    set_zoom(zoom_ * std::pow(kWheelZoom, notches), event->position().toPoint());
    event->accept();
  });
}

// A whole notch, or the sum of smaller turns, is one event. Towards the user is positive.
bool PictureArea::pass_wheel(QWheelEvent *event) {
  wheel_rest_ -= event->angleDelta().y();
  MouseEvent made;
  made.kind = MouseKind::wheel;
  made.held = held_keys(event->modifiers());
  made.at = unit_at(event->position());
  made.notches = wheel_rest_ / kNotch;
  wheel_rest_ %= kNotch;
  return made.notches != 0 && mouse_event(id_, made);
}

bool PictureArea::pass_mouse(QMouseEvent *event, MouseKind kind) {
  if (kind == MouseKind::down || kind == MouseKind::double_click)
    mouse_held_ = true;
  else if (kind == MouseKind::up)
    mouse_held_ = event->buttons() != Qt::NoButton;
  return mouse_event(id_, mouse_of(*event, kind, unit_at(event->position())));
}

void PictureArea::mousePressEvent(QMouseEvent *event) {
  guarded([&] { pass_mouse(event, MouseKind::down); });
}

void PictureArea::mouseMoveEvent(QMouseEvent *event) {
  guarded([&] { pass_mouse(event, MouseKind::move); });
}

void PictureArea::mouseReleaseEvent(QMouseEvent *event) {
  guarded([&] { pass_mouse(event, MouseKind::up); });
}

void PictureArea::mouseDoubleClickEvent(QMouseEvent *event) {
  guarded([&] { pass_mouse(event, MouseKind::double_click); });
}

// It comes behind the press of the button, by which what lies there was chosen; the key for it
// leaves what is chosen.
void PictureArea::contextMenuEvent(QContextMenuEvent *event) {
  guarded([&] {
    if (shows_picture(kind_) && !command_runs())
      show_picture_menu(event->globalPos());
    event->accept();
  });
}

// Something else took the mouse in the middle of a drag.
void PictureArea::focusOutEvent(QFocusEvent *event) {
  guarded([&] {
    if (mouse_held_ && event->reason() != Qt::PopupFocusReason) {
      mouse_held_ = false;
      MouseEvent made;
      made.kind = MouseKind::lost;
      mouse_event(id_, made);
    }
    QAbstractScrollArea::focusOutEvent(event);
  });
}

// What is composed of several keys arrives as text.
void PictureArea::inputMethodEvent(QInputMethodEvent *event) {
  guarded([&] {
    if (event->commitString().isEmpty())
      return;
    KeyEvent made;
    made.text = narrow(event->commitString());
    key_event(id_, made);
    event->accept();
  });
}

// Two fingers that move apart on a touch pad.
bool PictureArea::viewportEvent(QEvent *event) {
  bool taken = false;
  guarded([&] {
    if (event->type() != QEvent::NativeGesture)
      return;
    const auto *gesture = static_cast<QNativeGestureEvent *>(event);
    if (gesture->gestureType() != Qt::ZoomNativeGesture)
      return;
    set_zoom(zoom_ * (1 + gesture->value()), gesture->position().toPoint());
    taken = true;
  });
  return taken || QAbstractScrollArea::viewportEvent(event);
}

// The keys that scroll. With Ctrl they go to the ends.
bool PictureArea::scroll_key(const QKeyEvent *event) {
  struct ScrollKey {
    int key;
    bool across;
    QAbstractSlider::SliderAction plain;
    QAbstractSlider::SliderAction with_ctrl;
  };
  using Bar = QAbstractSlider;
  static constexpr ScrollKey kKeys[] = {
      {Qt::Key_Up, false, Bar::SliderSingleStepSub, Bar::SliderPageStepSub},
      {Qt::Key_Down, false, Bar::SliderSingleStepAdd, Bar::SliderPageStepAdd},
      {Qt::Key_Left, true, Bar::SliderSingleStepSub, Bar::SliderPageStepSub},
      {Qt::Key_Right, true, Bar::SliderSingleStepAdd, Bar::SliderPageStepAdd},
      {Qt::Key_PageUp, false, Bar::SliderPageStepSub, Bar::SliderToMinimum},
      {Qt::Key_PageDown, false, Bar::SliderPageStepAdd, Bar::SliderToMaximum},
      {Qt::Key_Home, true, Bar::SliderToMinimum, Bar::SliderToMinimum},
      {Qt::Key_End, true, Bar::SliderToMaximum, Bar::SliderToMaximum},
  };
  const bool ctrl = (event->modifiers() & Qt::ControlModifier) != 0;
  for (const ScrollKey &row : kKeys) {
    if (row.key != event->key())
      continue;
    (row.across ? horizontalScrollBar() : verticalScrollBar())
        ->triggerAction(ctrl ? row.with_ctrl : row.plain);
    if (ctrl && (row.key == Qt::Key_Home || row.key == Qt::Key_End))
      verticalScrollBar()->triggerAction(row.with_ctrl);
    return true;
  }
  return false;
}

void PictureArea::keyPressEvent(QKeyEvent *event) {
  guarded([&] {
    KeyEvent made;
    const bool taken = (key_of(*event, made) && key_event(id_, made)) || scroll_key(event);
    event->setAccepted(taken);
  });
}

} // namespace velora::qt
