// The window of language text: taking back, finding and replacing, marks at faults.
#include "qt/window_kit.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QTextBlock>
#include <QToolButton>

#include "platform/desktop.h"
#include "shell/command_numbers.h"
#include "shell/qt/q_code.h"
#include "shell/qt/q_text.h"

namespace velora {

using kit::WindowTest;

class CodeWindow : public WindowTest {
protected:
  qt::CodePane &open(const std::string &text) {
    choose(kCmdNewOrvek);
    auto &pane = dynamic_cast<qt::CodePane &>(*window("Orvek [1 of 1]").pane);
    for (const char c : text)
      if (c == '\n')
        key(&pane, Qt::Key_Return);
      else
        type(&pane, std::string(1, c));
    return pane;
  }
};

TEST_F(CodeWindow, EveryStepIsTakenBackAfterACommit) {
  qt::CodePane &pane = open("fdec\n f ::= int -> int ;\n;");
  const std::string text = pane.text();
  choose(kCmdCommit);
  type(&pane, "xyz");
  EXPECT_EQ(pane.text(), text + "xyz");
  for (int i = 0; i < 100 && pane.document()->isUndoAvailable(); ++i)
    key(&pane, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(pane.text(), "");
  for (int i = 0; i < 100 && pane.document()->isRedoAvailable(); ++i)
    key(&pane, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(pane.text(), text + "xyz");
}

TEST_F(CodeWindow, NewLinesKeepTheIndent) {
  EXPECT_EQ(open("  a\nb").text(), "  a\n  b");
}

TEST_F(CodeWindow, FindsAndReplacesInOneStepOfUndoing) {
  qt::CodePane &pane = open("one two One two one");
  choose(kCmdReplace);
  auto *find = pane.findChild<QLineEdit *>(QStringLiteral("find_text"));
  auto *by = pane.findChild<QLineEdit *>(QStringLiteral("replace_text"));
  ASSERT_NE(find, nullptr);
  ASSERT_TRUE(find->isVisible());
  type(find, "two");
  key(find, Qt::Key_Return);
  EXPECT_EQ(pane.selection(), (TextRange{4, 7}));
  key(find, Qt::Key_Return);
  EXPECT_EQ(pane.selection(), (TextRange{12, 15}));
  key(find, Qt::Key_Return);
  EXPECT_EQ(pane.selection(), (TextRange{4, 7})) << "round again";
  find->setText(QStringLiteral("one"));
  type(by, "1");
  QTest::mouseClick(pane.findChild<QToolButton *>(QStringLiteral("Replace All")), Qt::LeftButton);
  EXPECT_EQ(pane.text(), "1 two 1 two 1");
  key(&pane, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(pane.text(), "one two One two one");
  key(find, Qt::Key_Escape);
  EXPECT_FALSE(find->isVisible());
}

TEST_F(CodeWindow, FaultsAreMarkedWithTheirMessages) {
  qt::CodePane &pane = open("");
  pane.insertPlainText(QStringLiteral("good\nb\u00e4d line\n"));
  gDesktop->mark_faults(pane.id(), {{{5, 9}, "name is bad\n"}});
  EXPECT_EQ(pane.fault_at(5), QStringLiteral("name is bad"));
  EXPECT_EQ(pane.fault_at(8), QStringLiteral("name is bad")) << "bytes are not characters";
  EXPECT_EQ(pane.fault_at(10), QString());
  QTextCursor start(pane.document());
  start.insertText(QStringLiteral("new line\n"));
  EXPECT_EQ(pane.fault_at(14), QStringLiteral("name is bad")) << "the mark goes with its text";
  gDesktop->mark_faults(pane.id(), {});
  EXPECT_EQ(pane.fault_at(14), QString());
}

TEST_F(CodeWindow, BracketsOfAPairAreFoundAcrossTexts) {
  const QString text = QStringLiteral("(a \")\" [b (c)])");
  EXPECT_EQ(qt::matching_bracket(text, 0), 14);
  EXPECT_EQ(qt::matching_bracket(text, 14), 0);
  EXPECT_EQ(qt::matching_bracket(text, 7), 13);
  EXPECT_EQ(qt::matching_bracket(text, 12), 10);
  EXPECT_EQ(qt::matching_bracket(QStringLiteral("(a"), 0), -1);
}

TEST_F(CodeWindow, FontGrowsWithTheWheelAndComesBack) {
  qt::CodePane &pane = open("x");
  const int usual = pane.font().pointSize();
  choose(kCmdLargerFont);
  choose(kCmdLargerFont);
  EXPECT_EQ(pane.font().pointSize(), usual + 2);
  const int margin = pane.margin_width();
  choose(kCmdUsualFont);
  EXPECT_EQ(pane.font().pointSize(), usual);
  EXPECT_LT(pane.margin_width(), margin);
}

} // namespace velora
