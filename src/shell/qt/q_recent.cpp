// Recent databases. They stand in the settings of the user.
#include "shell/qt/q_recent.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

#include "shell/command_numbers.h"
#include "shell/desk_events.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

const QString kKey = QStringLiteral("recent");

} // namespace

QStringList recent_databases() {
  QStringList files = QSettings().value(kKey).toStringList();
  files.removeIf([](const QString &file) { return !QFileInfo::exists(file); });
  return files;
}

void note_database(const QString &file) {
  QStringList files = recent_databases();
  if (!files.isEmpty() && files.front() == file)
    return;
  files.removeAll(file);
  files.prepend(file);
  while (files.size() > kMostRecent)
    files.removeLast();
  QSettings().setValue(kKey, files);
}

void fill_recent(QMenu *menu) {
  menu->clear();
  int number = kCmdRecentFirst;
  for (const QString &file : recent_databases()) {
    QString label = QDir::toNativeSeparators(file);
    label.replace(QLatin1Char('&'), QStringLiteral("&&"));
    QAction *item = menu->addAction(
        QStringLiteral("&%1 %2").arg((number - kCmdRecentFirst + 1) % 10).arg(label));
    item->setObjectName(QStringLiteral("item%1").arg(number++));
    QObject::connect(item, &QAction::triggered, item,
                     [file] { guarded([&] { open_database(narrow(file)); }); });
  }
  if (menu->isEmpty())
    menu->addAction(QStringLiteral("None yet"))->setEnabled(false);
}

} // namespace velora::qt
