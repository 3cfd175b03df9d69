// The inside of picture and graphics windows: painting, scrolling over the extent of what is shown,
// zooming, and the events of mouse and keys in units of the picture.
#pragma once

#include <QAbstractScrollArea>

#include "platform/desktop.h"
#include "platform/input.h"

class QPainter;

namespace velora::qt {

class PictureArea : public QAbstractScrollArea {
public:
  PictureArea(WindowId id, WindowKind kind);
  [[nodiscard]] WindowId id() const { return id_; }

  // What the view scrolls over, in picture units.
  void set_extent(const Rect &extent);
  [[nodiscard]] Rect extent() const { return extent_; }
  // The part that is in sight: its corner, and how large a unit is drawn.
  void show_from(Point corner, double factor);
  // How large a unit is drawn; the picture stays where it is under `fixed`, a dot of the view.
  void set_zoom(double factor, QPoint fixed);
  [[nodiscard]] double zoom() const { return zoom_; }
  // A dot of the view in units of the picture, and back.
  [[nodiscard]] Point unit_at(QPointF dot) const;
  [[nodiscard]] QPointF dot_at(Point unit) const;
  // The part of the picture that is in sight.
  [[nodiscard]] Rect seen() const;
  // Draws everything onto a surface whose transformation is set.
  void draw(QPainter &painter);

protected:
  void paintEvent(QPaintEvent *event) override;
  void resizeEvent(QResizeEvent *event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent *event) override;
  void mousePressEvent(QMouseEvent *event) override;
  void mouseMoveEvent(QMouseEvent *event) override;
  void mouseReleaseEvent(QMouseEvent *event) override;
  void mouseDoubleClickEvent(QMouseEvent *event) override;
  void contextMenuEvent(QContextMenuEvent *event) override;
  void focusOutEvent(QFocusEvent *event) override;
  void keyPressEvent(QKeyEvent *event) override;
  void inputMethodEvent(QInputMethodEvent *event) override;
  bool focusNextPrevChild(bool) override { return false; } // Tab is the picture's
  bool viewportEvent(QEvent *event) override;

private:
  void update_bars();
  bool scroll_key(const QKeyEvent *event);
  bool pass_mouse(QMouseEvent *event, MouseKind kind);
  bool pass_wheel(QWheelEvent *event);

  WindowId id_;
  WindowKind kind_;
  Rect extent_;
  double zoom_ = 1;
  int wheel_rest_ = 0;      // turned by less than a notch
  bool mouse_held_ = false; // a button went down here and has not come up
};

} // namespace velora::qt
