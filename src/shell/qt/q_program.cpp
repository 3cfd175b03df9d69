// Putting the program together.
#include "shell/qt/q_program.h"

#include <QApplication>
#include <QKeyEvent>

#include "eval/registry.h"
#include "platform/null_desktop.h"
#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/library_folder.h"
#include "shell/qt/q_cursors.h"
#include "shell/qt/q_dialogs.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_menus.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_welcome.h"
#include "shell/vel_wins.h"

namespace velora::qt {

bool InterruptKey::eventFilter(QObject *, QEvent *event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
    return false;
  const bool stops =
      static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && command_runs() && !dialog_open();
  if (stops)
    guarded(interrupt_asked);
  return stops;
}

Program::~Program() {
  QApplication::instance()->removeEventFilter(&interrupt_key_);
  // Windows still speak while they go, when the desktop over them has gone.
  static NullDesktop nothing;
  gDesktop = &nothing;
}

Program::Program(const std::string &lib_dir) {
  gDesktop = &desktop_;
  gConsole = &gDesktopConsole;
  gLibDir = lib_dir.empty() ? find_library_folder() : lib_dir;
  gAppDirectory = narrow(QApplication::applicationDirPath()) + "/";
  make_menus();
  frame_.setWindowIcon(program_icon());
  QApplication::instance()->installEventFilter(&interrupt_key_);
}

int Program::start(const std::string &database) {
  const int started = start_desktop(database);
  if (started != 0 && database.empty())
    guarded([] {
      show_welcome();
      gDesktop->focus_window(hControl);
    });
  return started;
}

} // namespace velora::qt
