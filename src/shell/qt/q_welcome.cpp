// The welcome page, a sub-window of the frame that is none of the program's windows.
#include "shell/qt/q_welcome.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

#include "shell/command_numbers.h"
#include "shell/desk_events.h"
#include "shell/library_folder.h"
#include "shell/qt/q_art.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_help.h"
#include "shell/qt/q_menus.h"
#include "shell/qt/q_recent.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr int kMostExamples = 12;
const QString kName = QStringLiteral("welcome");

// Runs what a button stands for when its handlers have come to their end: the page may be gone
// then.
template <class Act> void later(Act act) {
  QTimer::singleShot(0, &frame(), [act] { guarded(act); });
}

QLabel *heading(const QString &text) {
  auto *label = new QLabel(text);
  QFont font = label->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * 1.15);
  label->setFont(font);
  return label;
}

template <class Act>
void add_link(QBoxLayout *column, const QString &label, const QString &tip, Glyph glyph, Act act) {
  auto *link = new QToolButton;
  link->setText(QString(label).replace(QLatin1Char('&'), QStringLiteral("&&")));
  link->setIcon(glyph_icon(glyph));
  link->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  link->setAutoRaise(true);
  link->setToolTip(tip);
  link->setObjectName(QStringLiteral("link ") + label);
  link->setAccessibleDescription(tip);
  link->setCursor(Qt::PointingHandCursor);
  QObject::connect(link, &QToolButton::clicked, link, [act] { later(act); });
  column->addWidget(link);
}

void add_database(QBoxLayout *column, const QString &file) {
  const QFileInfo info(file);
  add_link(column, info.completeBaseName(), info.absoluteFilePath(), Glyph::open_file, [file] {
    close_welcome();
    open_database(narrow(file));
  });
}

QStringList examples() {
  const std::string folder = find_shared("examples");
  QStringList files;
  if (folder.empty())
    return files;
  QDirIterator each(wide(folder), {QStringLiteral("*.ddb")}, QDir::Files,
                    QDirIterator::Subdirectories);
  while (each.hasNext())
    files << each.next();
  std::sort(files.begin(), files.end());
  return files.mid(0, kMostExamples);
}

QBoxLayout *start_column() {
  auto *column = new QVBoxLayout;
  column->setSpacing(3);
  column->addWidget(heading(QStringLiteral("Start")));
  add_link(column, QStringLiteral("New DataBase..."), QStringLiteral("Makes an empty database"),
           Glyph::new_file, [] { choose_command(kCmdNewDataBase); });
  add_link(column, QStringLiteral("Open..."), QStringLiteral("Opens a database that you have"),
           Glyph::open_file, [] { choose_command(kCmdOpenDataBase); });
  add_link(column, QStringLiteral("First steps"), QStringLiteral("Shows how the program is used"),
           Glyph::text, [] { show_guide(); });
  add_link(column, QStringLiteral("Keys"), QStringLiteral("Lists the keys"), Glyph::console,
           [] { show_keys(); });
  column->addStretch();
  return column;
}

QBoxLayout *database_column(const QString &title, const QStringList &files, const QString &none) {
  auto *column = new QVBoxLayout;
  column->setSpacing(3);
  column->addWidget(heading(title));
  for (const QString &file : files)
    add_database(column, file);
  if (files.isEmpty())
    column->addWidget(new QLabel(none));
  column->addStretch();
  return column;
}

QWidget *make_page() {
  auto *page = new QWidget;
  page->setAutoFillBackground(true);
  page->setBackgroundRole(QPalette::Base);
  auto *rows = new QVBoxLayout(page);
  rows->setContentsMargins(20, 14, 20, 14);
  auto *title = new QLabel(QLatin1String(kFrameTitle));
  QFont font = title->font();
  font.setPointSizeF(font.pointSizeF() * 1.7);
  font.setBold(true);
  title->setFont(font);
  rows->addWidget(title);
  auto *line =
      new QLabel(QStringLiteral("A place to program in Orvek, with text and with pictures. "
                                "Type a query such as  + #40 #2;  in CONTROL."));
  line->setWordWrap(true);
  rows->addWidget(line);
  rows->addSpacing(8);
  auto *columns = new QHBoxLayout;
  columns->setSpacing(24);
  columns->addLayout(start_column());
  columns->addLayout(
      database_column(QStringLiteral("Recent"), recent_databases(), QStringLiteral("None yet")));
  columns->addLayout(database_column(QStringLiteral("Examples"), examples(),
                                     QStringLiteral("None are installed")));
  columns->addStretch();
  rows->addLayout(columns);
  rows->addStretch();
  return page;
}

QMdiSubWindow *shown_page() {
  return frame().area()->findChild<QMdiSubWindow *>(kName);
}

} // namespace

// It stands above CONTROL, which is in the lower half of the screen, and leaves it the keyboard.
void show_welcome() {
  close_welcome();
  auto *scroll = new QScrollArea;
  scroll->setWidget(make_page());
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  auto *sub = new QMdiSubWindow;
  sub->setObjectName(kName);
  sub->setWindowTitle(QStringLiteral("Welcome"));
  sub->setAccessibleName(QStringLiteral("Welcome"));
  sub->setWidget(scroll);
  sub->setWindowIcon(glyph_icon(Glyph::program));
  sub->setAttribute(Qt::WA_DeleteOnClose);
  frame().area()->addSubWindow(sub);
  const QSize area = frame().area()->viewport()->size();
  const int height = std::clamp(frame().screen()->size().height() / 2 - 20, 180, 420);
  sub->setGeometry(30, 10, std::min(area.width() - 60, 760), height);
  sub->show();
}

void close_welcome() {
  QMdiSubWindow *sub = shown_page();
  if (sub == nullptr)
    return;
  sub->setObjectName(QString());
  sub->close();
}

} // namespace velora::qt
