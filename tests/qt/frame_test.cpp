// The frame: which window commands act on, menus, titles, questions before something is lost.
#include "qt/window_kit.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMdiArea>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>

#include "db/f_dbops.h"
#include "shell/command_numbers.h"
#include "shell/desk_events.h"
#include "shell/qt/q_text.h"
#include "shell/vel_wins.h"

namespace velora {

using kit::WindowTest;
class FrameWindow : public WindowTest {};

TEST_F(FrameWindow, MenuBarFollowsTheActiveWindow) {
  const auto first_menus = [] {
    std::string labels;
    for (const QAction *menu : frame().menuBar()->actions())
      labels += qt::narrow(menu->text()) + " ";
    return labels;
  };
  EXPECT_TRUE(first_menus().starts_with("&File &Edit &Query &Windows ")) << first_menus();
  choose(505);
  EXPECT_TRUE(first_menus().starts_with("&File &Edit Fea&tures F&ind Fi&lters Colo&ur "))
      << first_menus();
  EXPECT_EQ(previous, window("Function Network").id);
  gDesktop->focus_window(hControl);
  settle();
  EXPECT_EQ(previous, hControl);
  EXPECT_TRUE(first_menus().starts_with("&File &Edit &Query ")) << first_menus();
}

TEST_F(FrameWindow, WindowsHaveTheirTitlesAndPlaces) {
  const QSize screen = frame().screen()->size();
  EXPECT_EQ(window("CONTROL").sub->pos(), QPoint(30, screen.height() / 2));
  choose(504);
  const qt::Window &picture = window("Functions");
  EXPECT_EQ(picture.sub->size(), QSize(450, 360));
  choose(509);
  choose(509);
  EXPECT_EQ(windows_titled("Orvek [1 of 2]"), 1);
  EXPECT_EQ(windows_titled("Orvek [2 of 2]"), 1);
  EXPECT_EQ(window("Orvek [1 of 2]").sub->geometry(), QRect(10, 50, 350, 400));
}

TEST_F(FrameWindow, KeyOfACommandReachesIt) {
  key(&console(), Qt::Key_Y, Qt::ControlModifier);
  settle();
  EXPECT_EQ(news(), "\nQUERY> ");
  choose(504);
  std::string message;
  type_in_dialog("nosuch", &message);
  key(window("Functions").view, Qt::Key_G, Qt::ControlModifier);
  settle();
  EXPECT_EQ(message, "Function Name?");
  EXPECT_NE(news().find("Sorry! There is no picture of nosuch\n"), std::string::npos);
}

TEST_F(FrameWindow, UnsavedTextIsAskedForAndKeptByCancel) {
  choose(509);
  type(window("Orvek [1 of 1]").pane, "fdec");
  std::string message;
  press_in_dialog("Cancel", &message);
  window("Orvek [1 of 1]").sub->close();
  settle();
  EXPECT_EQ(message, "Save Changes to: Orvek Code?");
  EXPECT_EQ(window("Orvek [1 of 1]").pane->text(), "fdec");
  press_in_dialog("Discard");
  window("Orvek [1 of 1]").sub->close();
  settle();
  EXPECT_EQ(windows_titled("Orvek"), 0);
}

TEST_F(FrameWindow, MinimisedWindowGivesTheKeyboardAway) {
  choose(509);
  window("Orvek [1 of 1]").sub->showMinimized();
  settle();
  EXPECT_EQ(previous, hControl);
}

TEST_F(FrameWindow, MinimisedWindowStaysAnIconWhenAnotherCloses) {
  choose(kCmdNewOrvek);
  choose(kCmdNewFunction);
  const qt::Window &text = window("Orvek [1 of 1]");
  gDesktop->focus_window(text.id);
  settle();
  text.sub->showMinimized();
  settle();
  EXPECT_EQ(previous, window("Functions").id);
  choose(kCmdCloseWindow);
  EXPECT_TRUE(text.sub->isMinimized());
  EXPECT_EQ(previous, hControl);
}

// A picture that a built-in shows does not take the keyboard from the console.
TEST_F(FrameWindow, ShownWindowLeavesTheFocus) {
  const Rect place{60, 40, 300, 240};
  const WindowId win = gDesktop->create_window(kAnnotationWindow, "shown", place);
  gDesktop->show_window(win);
  settle();
  EXPECT_EQ(previous, hControl);
  EXPECT_TRUE(window("shown").sub->isVisible());
  EXPECT_EQ(frame().area()->activeSubWindow(), window("CONTROL").sub);
  type(frame().focusWidget(), "typed");
  EXPECT_EQ(console().typed(), "typed");
}

TEST_F(FrameWindow, DatabaseIsOpenedSavedAndNamedInTheTitle) {
  kit::write_file("own.ddb",
                  "fdec\n twice ::= int -> int ;\n;\nfdef\n twice ?0 ::= * ?0 #2 ;\n;\n");
  open_database("own.ddb");
  settle();
  query("twice #21;");
  EXPECT_NE(news().find("#42\n"), std::string::npos);
  EXPECT_EQ(qt::narrow(frame().windowTitle()), "Velora 4.7.4 - own");
}

// A database that is dragged here from a window of files.
TEST_F(FrameWindow, DroppedDatabaseIsOpened) {
  kit::write_file("dropped.ddb", "fdec\n thrice ::= int -> int ;\n;\n");
  QMimeData data;
  const QString file = QFileInfo(QStringLiteral("dropped.ddb")).absoluteFilePath();
  data.setUrls({QUrl::fromLocalFile(file)});
  QDragEnterEvent enters({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&frame(), &enters);
  EXPECT_TRUE(enters.isAccepted());
  QDropEvent falls({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&frame(), &falls);
  settle();
  EXPECT_TRUE(gDDB_basename.ends_with("dropped")) << gDDB_basename;
  data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/picture.png"))});
  QDragEnterEvent other({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  other.ignore();
  QApplication::sendEvent(&frame(), &other);
  EXPECT_FALSE(other.isAccepted());
}

// The tool that a click would use is marked, on the bar of the picture in use, and the status line
// says what it waits for.
TEST_F(FrameWindow, ToolInUseIsMarked) {
  choose(kCmdNewFunction);
  auto *bars = &frame();
  QAction *tool = nullptr;
  for (QToolBar *bar : bars->findChildren<QToolBar *>())
    if (bar->isVisible())
      for (QAction *action : bar->actions())
        if (action->objectName() == QStringLiteral("tool%1").arg(kCmdAddFunctions))
          tool = action;
  ASSERT_NE(tool, nullptr);
  tool->trigger();
  settle();
  EXPECT_TRUE(tool->isChecked());
  EXPECT_FALSE(frame().statusBar()->currentMessage().isEmpty());
  key(window("Functions").view, Qt::Key_Escape);
  EXPECT_FALSE(tool->isChecked());
  EXPECT_EQ(frame().statusBar()->currentMessage(), QString());
}

TEST_F(FrameWindow, WindowInUseIsClosedByItsCommand) {
  choose(kCmdNewFunction);
  choose(kCmdCloseWindow);
  EXPECT_EQ(windows_titled("Functions"), 0);
}

} // namespace velora
