// The windows of the program behind their numbers: what each is made of. A window is a sub-window
// of the frame that holds a text pane or a view of a picture.
#pragma once

#include <QMdiSubWindow>

#include "platform/desktop.h"

namespace velora::qt {

class TextPane;
class PictureArea;

// A sub-window. The user's wish to close it is passed on; it closes when the program says so.
class SubWindow : public QMdiSubWindow {
public:
  explicit SubWindow(WindowId id) : id_(id) {}
  [[nodiscard]] WindowId id() const { return id_; }

protected:
  void closeEvent(QCloseEvent *event) override;
  void changeEvent(QEvent *event) override;

private:
  WindowId id_;
};

// Exactly one of `pane` and `view` is set. The sub-window owns them, the frame owns the sub-window.
struct Window {
  WindowId id = 0;
  WindowKind kind = kControlWindow;
  SubWindow *sub = nullptr;
  TextPane *pane = nullptr;
  PictureArea *view = nullptr;
};
// The one that is set.
QWidget *inside_of(const Window &window);

// A new entry; its address holds until it is removed.
Window *add_window(WindowKind kind);
// The window of that number, or null.
Window *find_window(WindowId id);
void remove_window(WindowId id);
// All of them, oldest first.
std::vector<Window *> all_windows();

} // namespace velora::qt
