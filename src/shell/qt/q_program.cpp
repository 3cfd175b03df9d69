// Putting the program together.
#include "shell/qt/q_program.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "editor/model/wininfo.h"
#include "eval/registry.h"
#include "platform/null_desktop.h"
#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/library_folder.h"
#include "shell/qt/q_cursors.h"
#include "shell/qt/q_dialogs.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_menus.h"
#include "shell/qt/q_recent.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_welcome.h"
#include "shell/vel_wins.h"

namespace velora::qt {

namespace {

constexpr int kTitleEvery = 200; // milliseconds

// The title tells what the program holds; it is looked at now and then, whoever changed it.
void show_title() {
  static QString known;
  const QString base = QFileInfo(wide(gDDB_basename)).fileName();
  const QFileInfo file(wide(gDDB_basename) + QStringLiteral(".ddb"));
  if (!base.isEmpty() && base != known && file.exists())
    note_database(file.absoluteFilePath());
  known = base;
  frame().show_database(base, gSymbolTableChanged != 0 || gSegsChanged != 0);
}

} // namespace

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
  QObject::connect(&title_, &QTimer::timeout, &frame_, [] { guarded(show_title); });
  title_.start(kTitleEvery);
  QApplication::instance()->installEventFilter(&interrupt_key_);
}

int Program::start(const std::string &database) {
  const int started = start_desktop(database);
  guarded(show_title);
  if (started != 0 && database.empty())
    guarded([] {
      show_welcome();
      gDesktop->focus_window(hControl);
    });
  return started;
}

} // namespace velora::qt
