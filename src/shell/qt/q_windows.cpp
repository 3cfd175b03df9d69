// The table of windows, and what sub-windows pass on.
#include "shell/qt/q_windows.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QTimer>

#include <map>

#include "shell/desk_events.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_pane.h"
#include "shell/qt/q_picture.h"

namespace velora::qt {

namespace {

std::map<WindowId, Window> windows;
WindowId last = 0;

} // namespace

// The wish is dealt with when the handlers of the click have come to their end, since dialogs may
// come of it and the window may be gone afterwards.
void SubWindow::closeEvent(QCloseEvent *event) {
  event->ignore();
  QTimer::singleShot(0, qApp, [win = id_] {
    guarded([win] {
      if (find_window(win) != nullptr)
        close_asked(win);
    });
  });
}

void SubWindow::changeEvent(QEvent *event) {
  QMdiSubWindow::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange && isMinimized())
    QTimer::singleShot(0, qApp, [win = id_] {
      guarded([win] {
        const Window *window = find_window(win);
        if (window != nullptr && window->sub->isMinimized())
          window_put_away(win);
      });
    });
}

QWidget *inside_of(const Window &window) {
  return window.pane != nullptr ? static_cast<QWidget *>(window.pane) : window.view;
}

Window *add_window(WindowKind kind) {
  Window &made = windows[++last];
  made.id = last;
  made.kind = kind;
  return &made;
}

Window *find_window(WindowId id) {
  const auto found = windows.find(id);
  return found == windows.end() ? nullptr : &found->second;
}

void remove_window(WindowId id) {
  windows.erase(id);
}

std::vector<Window *> all_windows() {
  std::vector<Window *> all;
  for (auto &[id, window] : windows)
    all.push_back(&window);
  return all;
}

} // namespace velora::qt
