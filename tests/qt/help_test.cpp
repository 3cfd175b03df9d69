// Completion, help on names, recent databases, tiles and tabs, and files of pictures.
#include "qt/window_kit.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTextBrowser>
#include <QTimer>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "shell/command_numbers.h"
#include "shell/desk_events.h"
#include "shell/qt/q_code.h"
#include "shell/qt/q_print.h"
#include "shell/qt/q_recent.h"
#include "shell/qt/q_text.h"
#include "shell/vel_wins.h"

namespace velora {

using kit::WindowTest;

class Helping : public WindowTest {
protected:
  static QAbstractItemView *names() {
    return qobject_cast<QAbstractItemView *>(QApplication::activePopupWidget());
  }
  static std::string file_text(const std::string &name) {
    std::ostringstream text;
    text << std::ifstream(name, std::ios::binary).rdbuf();
    return text.str();
  }
};

TEST_F(Helping, TabCompletesWhatIsCertainAndShowsTheRestWithTypes) {
  type(&console(), "foldr_nosuch");
  key(&console(), Qt::Key_Tab);
  EXPECT_EQ(console().typed(), "foldr_nosuch") << "nothing fits";
  key(&console(), Qt::Key_Escape);
  type(&console(), "map (list_of_i");
  key(&console(), Qt::Key_Tab);
  EXPECT_EQ(console().typed(), "map (list_of_int");
  key(&console(), Qt::Key_Escape);
  type(&console(), "fold");
  key(&console(), Qt::Key_Tab);
  ASSERT_NE(names(), nullptr);
  const std::string first = qt::narrow(names()->currentIndex().data().toString());
  EXPECT_NE(first.find("->"), std::string::npos) << first;
  key(names(), Qt::Key_Down);
  const std::string second = qt::narrow(names()->currentIndex().data(Qt::UserRole).toString());
  key(names(), Qt::Key_Return);
  EXPECT_EQ(console().typed(), second);
}

TEST_F(Helping, HelpIsShownOnTheNameAtTheCaret) {
  type(&console(), "append nil nil");
  key(&console(), Qt::Key_Home);
  key(&console(), Qt::Key_F1);
  settle();
  auto *page = frame().area()->findChild<QMdiSubWindow *>(QStringLiteral("help"));
  ASSERT_NE(page, nullptr);
  const auto *text = page->findChild<QTextBrowser *>();
  EXPECT_NE(text->toPlainText().indexOf(QStringLiteral("append")), -1);
  auto *line = page->findChild<QLineEdit *>();
  line->clear();
  type(line, "nosuchname");
  key(line, Qt::Key_Return);
  settle();
  EXPECT_EQ(text->toPlainText(), QStringLiteral("There is no name nosuchname."));
  page->close();
  settle();
  key(&console(), Qt::Key_Escape);
}

TEST_F(Helping, OpenedDatabasesAreOfferedAgain) {
  const std::string text = "fdec\n f ::= int -> int ;\n;\n";
  const auto latest = [] { return qt::recent_databases().value(0); };
  kit::write_file("lately.ddb", text);
  open_database("lately.ddb");
  EXPECT_TRUE(latest().endsWith(QStringLiteral("/lately.ddb")));
  std::filesystem::create_directory("other");
  kit::write_file("other/lately.ddb", text);
  open_database("other/lately.ddb");
  EXPECT_TRUE(latest().endsWith(QStringLiteral("/other/lately.ddb"))) << "one of the same name";
  QMenu menu;
  qt::fill_recent(&menu);
  EXPECT_TRUE(menu.actions().front()->text().endsWith(QStringLiteral("lately.ddb")));
  std::filesystem::remove("lately.ddb");
  std::filesystem::remove("other/lately.ddb");
  for (const QString &file : qt::recent_databases())
    EXPECT_FALSE(file.endsWith(QStringLiteral("/lately.ddb"))) << "it is gone";
}

TEST_F(Helping, TabsAndTilesKeepEveryWindow) {
  choose(kCmdNewOrvek);
  choose(kCmdTabs);
  EXPECT_EQ(frame().area()->viewMode(), QMdiArea::TabbedView);
  gDesktop->focus_window(hControl);
  settle();
  EXPECT_EQ(previous, hControl);
  choose(kCmdTile);
  EXPECT_EQ(frame().area()->viewMode(), QMdiArea::SubWindowView);
  EXPECT_TRUE(window("Orvek").sub->isVisible());
  const QRect both = window("Orvek").sub->geometry() & window("CONTROL").sub->geometry();
  EXPECT_TRUE(both.isEmpty()) << "side by side";
  choose(kCmdStack);
}

TEST_F(Helping, PicturesAreSavedInEveryKindOfFile) {
  choose(kCmdNewFunction);
  const std::pair<int, std::string> kKinds[] = {{kCmdSavePdf, ".pdf"},
                                                {kCmdSavePng, ".png"},
                                                {kCmdSaveSvg, ".svg"},
                                                {kCmdSaveWindow, ".bmp"}};
  for (const auto &[command, ending] : kKinds) {
    name_file(std::filesystem::absolute("a" + ending).string());
    choose(command);
    EXPECT_NE(news().find("Window saved in file "), std::string::npos) << ending;
  }
  EXPECT_TRUE(file_text("a.pdf").starts_with("%PDF"));
  EXPECT_EQ(file_text("a.png").substr(1, 3), "PNG");
  EXPECT_TRUE(file_text("a.bmp").starts_with("BM"));
  EXPECT_NE(file_text("a.svg").find("</svg>"), std::string::npos);
  for (const char *ending : {".pdf", ".png", ".bmp"})
    EXPECT_FALSE(qt::save_window(window("Functions"), std::string("/no/such/folder/a") + ending));
  EXPECT_TRUE(qt::save_window(window("CONTROL"), "c.pdf"));
  EXPECT_TRUE(qt::save_window(window("Functions"), "UPPER.PNG"));
  EXPECT_EQ(file_text("UPPER.PNG").substr(1, 3), "PNG");
}

// The program adds the ending of the kind, so that file is what the question is about.
TEST_F(Helping, FileThatGetsItsEndingIsNotReplacedUnasked) {
  kit::write_file("kept.v2.png", "kept");
  choose(kCmdNewFunction);
  name_file(std::filesystem::absolute("kept.v2").string());
  bool asked = false;
  QTimer answers;
  QObject::connect(&answers, &QTimer::timeout, &answers, [&asked] {
    QWidget *dialog = QApplication::activeModalWidget();
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
      asked = true;
      box->button(QMessageBox::No)->click();
    } else if (asked && dialog != nullptr) {
      dialog->close(); // the name is asked for once more
    }
  });
  answers.start(5);
  choose(kCmdSavePng);
  EXPECT_TRUE(asked);
  EXPECT_EQ(file_text("kept.v2.png"), "kept");
}

TEST_F(Helping, FileOfAnyKindKeepsItsName) {
  for (const char *name : {"net.dot", "net"}) {
    const std::string file = std::filesystem::absolute(name).string();
    name_file(file);
    EXPECT_EQ(gDesktop->choose_file(true, "Write", "*.*"), file);
  }
}

TEST_F(Helping, FaultsOfACommitAreMarkedAndMessagesLeadThere) {
  choose(kCmdNewOrvek);
  auto &pane = dynamic_cast<qt::CodePane &>(*window("Orvek [1 of 1]").pane);
  pane.insertPlainText(QStringLiteral("fdec\n good ::= int -> int ;\n bad := int ;\n;\n"));
  choose(kCmdCommit);
  const auto third = static_cast<int>(pane.toPlainText().indexOf(QStringLiteral("bad")));
  EXPECT_NE(pane.fault_at(third), QString());
  EXPECT_EQ(pane.fault_at(2), QString());
  const QString shown = console().toPlainText();
  QTextCursor at(console().document());
  at.setPosition(static_cast<int>(shown.lastIndexOf(QStringLiteral("note: Orvek [1 of 1]"))) + 8);
  gDesktop->focus_window(hControl);
  console().setTextCursor(at);
  console().ensureCursorVisible();
  QTest::mouseClick(console().viewport(), Qt::LeftButton, {}, console().cursorRect(at).center());
  settle();
  EXPECT_EQ(previous, pane.id());
  EXPECT_EQ(pane.textCursor().selectedText(), QStringLiteral("bad := int ;"));
}

} // namespace velora
