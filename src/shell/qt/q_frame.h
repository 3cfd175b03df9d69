// The frame: one main window with the sub-windows inside it, the menu bar of the active one, and a
// status line. Asks the program's entries for everything; decides nothing.
#pragma once

#include <QMainWindow>

#include "platform/desktop.h"

class QLabel;
class QMdiArea;
class QMdiSubWindow;

namespace velora::qt {

inline constexpr char kFrameTitle[] = "Velora 4.7.4";

class Frame : public QMainWindow {
public:
  Frame();
  ~Frame() override;
  [[nodiscard]] QMdiArea *area() const { return area_; }

  // The title with the name of the database and the mark of what is not saved.
  void show_database(const QString &base, bool changed);
  // What the status line tells: that something runs, a hint, the zoom of the view in use.
  void show_running(bool on);
  void show_hint(const QString &hint);
  void show_zoom(double factor);
  // Lets the frame close without asking: the program has ended.
  void let_close() { may_close_ = true; }

protected:
  void closeEvent(QCloseEvent *event) override;
  void dragEnterEvent(QDragEnterEvent *event) override;
  void dropEvent(QDropEvent *event) override;
  QMenu *createPopupMenu() override { return nullptr; }

private:
  void activated(QMdiSubWindow *sub);

  QMdiArea *area_;
  QLabel *running_;
  QLabel *zoom_;
  bool may_close_ = false;
};

// The frame of the program; made before everything else.
Frame &frame();
// Shows the zoom of a view in the status line.
void show_zoom(double factor);

} // namespace velora::qt
