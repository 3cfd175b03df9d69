// Pages of help in a window beside the others. A page of a name has a line to ask for another one.
#include "shell/qt/q_help.h"

#include <QCompleter>
#include <QFile>
#include <QFontDatabase>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QStringListModel>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

#include "shell/keys_page.h"
#include "shell/library_folder.h"
#include "shell/name_help.h"
#include "shell/qt/q_art.h"
#include "shell/qt/q_commands.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr std::size_t kAllNames = 100'000;
constexpr int kWidth = 560;
constexpr int kHeight = 420;

// The window of that name, made when there is none; `fill` puts what it needs inside.
QMdiSubWindow *help_window(const QString &name, const QString &title,
                           const std::function<void(QVBoxLayout *)> &fill) {
  QMdiArea *area = frame().area();
  auto *sub = area->findChild<QMdiSubWindow *>(name);
  if (sub == nullptr) {
    sub = new QMdiSubWindow;
    sub->setObjectName(name);
    auto *page = new QWidget;
    auto *rows = new QVBoxLayout(page);
    rows->setContentsMargins(4, 4, 4, 4);
    fill(rows);
    sub->setWidget(page);
    sub->setWindowTitle(title);
    sub->setAccessibleName(title);
    sub->setWindowIcon(glyph_icon(Glyph::text));
    sub->setAttribute(Qt::WA_DeleteOnClose);
    area->addSubWindow(sub);
    const QSize room = area->viewport()->size();
    const int width = std::min(kWidth, room.width() - 40);
    sub->setGeometry(std::max(20, room.width() - width - 20), 20, width,
                     std::min(kHeight, room.height() - 40));
  }
  sub->show();
  area->setActiveSubWindow(sub);
  return sub;
}

QTextBrowser *make_text(QVBoxLayout *rows, const QString &name) {
  auto *text = new QTextBrowser;
  text->setObjectName(QStringLiteral("text"));
  text->setAccessibleName(name);
  text->setOpenExternalLinks(true);
  rows->addWidget(text);
  return text;
}

void show_page_of(QMdiSubWindow *sub, const QString &name) {
  const std::string page = help_on_name(narrow(name));
  sub->findChild<QLineEdit *>()->setText(name);
  QString text = wide(page);
  if (name.isEmpty())
    text = QStringLiteral("Type a name, or put the caret on one and press F1.");
  else if (page.empty())
    text = QStringLiteral("There is no name %1.").arg(name);
  sub->findChild<QTextBrowser *>()->setPlainText(text);
}

} // namespace

void show_help_on(const QString &name) {
  QMdiSubWindow *sub =
      help_window(QStringLiteral("help"), QStringLiteral("Help"), [](QVBoxLayout *rows) {
        auto *line = new QLineEdit;
        line->setObjectName(QStringLiteral("name"));
        line->setAccessibleName(QStringLiteral("Name to look up"));
        line->setPlaceholderText(QStringLiteral("Name"));
        QStringList names;
        for (const DeclaredName &known : names_beginning("", kAllNames))
          names << wide(known.name);
        auto *completer = new QCompleter(names, line);
        completer->setCaseSensitivity(Qt::CaseInsensitive);
        line->setCompleter(completer);
        rows->addWidget(line);
        QTextBrowser *text = make_text(rows, QStringLiteral("Help page"));
        text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        const auto look_up = [line] { guarded([line] { show_help_on(line->text().trimmed()); }); };
        QObject::connect(line, &QLineEdit::returnPressed, line, look_up);
        QObject::connect(completer, qOverload<const QString &>(&QCompleter::activated), line,
                         look_up, Qt::QueuedConnection);
      });
  show_page_of(sub, name);
  sub->findChild<QLineEdit *>()->setFocus();
  sub->findChild<QLineEdit *>()->selectAll();
}

namespace {

// From the tables of commands and of the hand, and what the windows do by themselves.
QString keys_of_windows() {
  QString page = wide(keys_page().substr(keys_page().find("\n## ") + 1)) +
                 QStringLiteral("\n## Windows\n\n| key | does |\n|---|---|\n");
  const auto add = [&page](const char *key, const char *what) {
    page += QStringLiteral("| %1 | %2 |\n").arg(QString::fromUtf8(key), QString::fromUtf8(what));
  };
  for (const OwnCommand &row : own_commands())
    if (*row.accelerator != '\0')
      add(row.accelerator, row.hint);
  static constexpr const char *kRows[][2] = {
      {"Ctrl+Tab, Ctrl+Shift+Tab", "go from window to window"},
      {"Ctrl+wheel", "makes a text larger or smaller"},
      {"Enter in CONTROL", "runs the query; in older text takes that line to the prompt"},
      {"Esc in CONTROL", "stops what runs; empties the line"},
      {"Up, Down in CONTROL", "bring earlier queries back"},
      {"Tab in CONTROL, Ctrl+Space in any text", "completes the name before the caret"},
      {"Home in CONTROL", "goes to the beginning of the query"}};
  for (const auto &[key, what] : kRows)
    add(key, what);
  return page;
}

} // namespace

void show_keys() {
  QMdiSubWindow *sub =
      help_window(QStringLiteral("keys"), QStringLiteral("Keys"),
                  [](QVBoxLayout *rows) { make_text(rows, QStringLiteral("Keys")); });
  sub->findChild<QTextBrowser *>()->setMarkdown(keys_of_windows());
}

void show_guide() {
  QMdiSubWindow *sub =
      help_window(QStringLiteral("guide"), QStringLiteral("Guide"),
                  [](QVBoxLayout *rows) { make_text(rows, QStringLiteral("Guide")); });
  QFile file(wide(find_shared("docs/desktop.md")));
  const bool there = file.open(QIODevice::ReadOnly);
  auto *text = sub->findChild<QTextBrowser *>();
  if (there)
    text->setMarkdown(QString::fromUtf8(file.readAll()));
  else
    text->setPlainText(QStringLiteral("The guide is not installed."));
}

void show_about() {
  QMessageBox box(&frame());
  box.setObjectName(QStringLiteral("about"));
  box.setWindowTitle(QStringLiteral("About Velora"));
  box.setText(QStringLiteral("<b>%1</b>").arg(QLatin1String(kFrameTitle)));
  box.setInformativeText(
      QStringLiteral(
          "A place to program in Orvek, with text and with pictures.\n\nCopyright (c) "
          "2026 The Velora developers. Free software under the MIT licence.\nMade with Qt %1.")
          .arg(QLatin1String(qVersion())));
  box.setIconPixmap(glyph_icon(Glyph::program).pixmap(48, 48));
  box.exec();
}

} // namespace velora::qt
