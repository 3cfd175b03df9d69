// Starting the program for tests and using its windows.
#include "qt/window_kit.h"

#include <QAction>
#include <QDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

#include <filesystem>
#include <fstream>

#include "core/symbols.h"
#include "db/f_dbops.h"
#include "db/vel_dbop.h"
#include "editor/model/wininfo.h"
#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/picture_windows.h"
#include "shell/qt/q_program.h"
#include "shell/qt/q_text.h"
#include "shell/vel_wins.h"

namespace velora::kit {

namespace {

namespace fs = std::filesystem;
using qt::narrow;
using qt::wide;

constexpr int kPatience = 2'000; // milliseconds

fs::path start_folder;
fs::path test_folder;

qt::Program &program() {
  static auto *running = [] {
    auto *made = new qt::Program(VELORA_SOURCE_DIR "/lib");
    made->window().resize(1000, 740);
    made->window().show();
    // On a screen where no one manages windows none gets the keyboard unless it asks.
    made->window().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&made->window()));
    EXPECT_EQ(made->start(""), 1);
    return made;
  }();
  return *running;
}

// Runs `act` on the next dialog that opens.
void with_dialog(const std::function<void(QDialog &)> &act) {
  auto *timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (dialog == nullptr)
      return;
    timer->stop();
    timer->deleteLater();
    act(*dialog);
  });
  timer->start(5);
}

void tell_message(const QDialog &dialog, std::string *message) {
  const auto *label = dialog.findChild<QLabel *>(QStringLiteral("message"));
  if (message != nullptr && label != nullptr)
    *message = narrow(label->text());
}

} // namespace

void WindowTest::SetUp() {
  start_folder = fs::current_path();
  test_folder = fs::temp_directory_path() / ("velora-windows-" + std::to_string(getpid()));
  fs::create_directories(test_folder);
  fs::current_path(test_folder);
  program();
  key(&console(), Qt::Key_Escape);
  settle();
  news();
}

// Everything is given up without a question.
void WindowTest::TearDown() {
  settle();
  gSymbolTableChanged = gSegsChanged = 0;
  while (gWindows.size() > 1)
    for (const ShellWindow &w : gWindows)
      if (w.kind != kControlWindow) {
        if (PictureTypeWindow(w.id) != 0) {
          RemoveWinInfo(w.id);
          DoCloseWindow(w.id);
        } else if (w.kind == kOrvekWindow) {
          gDesktop->close_window(w.id);
        } else {
          CloseWindowProc(w.id);
        }
        break;
      }
  run_entry([] {
    ResetVelora();
    return 1;
  });
  gSymbolTableChanged = gSegsChanged = 0;
  settle();
  fs::current_path(start_folder);
  fs::remove_all(test_folder);
}

qt::Frame &WindowTest::frame() {
  return program().window();
}

qt::ConsolePane &WindowTest::console() {
  return dynamic_cast<qt::ConsolePane &>(*window("CONTROL").pane);
}

const qt::Window &WindowTest::window(const std::string &title) {
  static const qt::Window none;
  const qt::Window *found = nullptr;
  for (const qt::Window *w : qt::all_windows())
    if (narrow(w->sub->windowTitle()).starts_with(title))
      found = w;
  EXPECT_NE(found, nullptr) << "no window " << title;
  return found == nullptr ? none : *found;
}

int WindowTest::windows_titled(const std::string &title) {
  int count = 0;
  for (const qt::Window *w : qt::all_windows())
    count += narrow(w->sub->windowTitle()).starts_with(title) ? 1 : 0;
  return count;
}

bool WindowTest::wait_for(const std::function<bool()> &done) {
  QElapsedTimer clock;
  clock.start();
  while (!done() && clock.elapsed() < kPatience)
    QTest::qWait(2);
  return done();
}

void WindowTest::settle() {
  QApplication::processEvents();
  wait_for([] { return !command_runs(); });
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QApplication::processEvents();
}

void WindowTest::type(QWidget *into, const std::string &text) {
  QTest::keyClicks(into, wide(text));
}

void WindowTest::key(QWidget *into, Qt::Key key, Qt::KeyboardModifiers held) {
  QTest::keyClick(into, key, held);
}

void WindowTest::query(const std::string &text) {
  type(&console(), text);
  key(&console(), Qt::Key_Return);
  settle();
}

namespace {

QAction *shown_item(QWidget *menu, const QString &name) {
  for (QAction *action : menu->actions()) {
    if (action->objectName() == name)
      return action;
    if (action->menu() != nullptr)
      if (QAction *deeper = shown_item(action->menu(), name))
        return deeper;
  }
  return nullptr;
}

} // namespace

void WindowTest::choose(int number) {
  QAction *item = shown_item(frame().menuBar(), QStringLiteral("item%1").arg(number));
  ASSERT_NE(item, nullptr) << number << " stands in no menu that is shown";
  EXPECT_TRUE(item->isEnabled()) << number << " is grey";
  item->trigger();
  settle();
}

bool WindowTest::enabled(int number) {
  const QAction *item = shown_item(frame().menuBar(), QStringLiteral("item%1").arg(number));
  return item != nullptr && item->isEnabled();
}

std::string WindowTest::news() {
  const std::string all = console().text();
  const std::string text = all.substr(std::min(seen_, all.size()));
  seen_ = all.size();
  return text;
}

void WindowTest::press_in_dialog(const std::string &label, std::string *message) {
  with_dialog([label, message](QDialog &dialog) {
    tell_message(dialog, message);
    for (auto *button : dialog.findChildren<QPushButton *>())
      if (narrow(button->text()).find(label) != std::string::npos) {
        QTest::mouseClick(button, Qt::LeftButton);
        return;
      }
    ADD_FAILURE() << "no button " << label;
    dialog.reject();
  });
}

void WindowTest::type_in_dialog(const std::string &text, std::string *message) {
  with_dialog([text, message](QDialog &dialog) {
    tell_message(dialog, message);
    auto *line = dialog.findChild<QLineEdit *>(QStringLiteral("answer"));
    if (line == nullptr) {
      ADD_FAILURE() << "the dialog asks for no text";
      dialog.reject();
      return;
    }
    QTest::keyClicks(line, wide(text));
    QTest::keyClick(line, Qt::Key_Return);
  });
}

void WindowTest::name_file(const std::string &file) {
  with_dialog([file](QDialog &dialog) {
    auto *line = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (line == nullptr) {
      ADD_FAILURE() << "the dialog asks for no file";
      dialog.reject();
      return;
    }
    line->setText(wide(file));
    QTest::keyClick(line, Qt::Key_Return);
  });
}

void write_file(const std::string &name, const std::string &text) {
  std::ofstream(test_folder / name, std::ios::binary) << text;
}

} // namespace velora::kit
