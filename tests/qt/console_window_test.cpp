// The CONTROL window as a person uses it: the prompt, the text before it, and stopping what runs.
#include "qt/window_kit.h"

#include <QClipboard>
#include <QTimer>

#include "platform/response.h"
#include "shell/console_lines.h"
#include "shell/desk_events.h"
#include "shell/kept_queries.h"
#include "shell/qt/q_text.h"
#include "shell/vel_wins.h"

namespace velora {

using kit::WindowTest;
class ConsoleWindow : public WindowTest {};

TEST_F(ConsoleWindow, AnswersWhatIsTyped) {
  query("+ #2 #3;");
  EXPECT_EQ(news(), "+ #2 #3;\n#5\nQUERY> ");
}

TEST_F(ConsoleWindow, OldTextCannotBeChanged) {
  query("#1;");
  news();
  const std::string before = console().text();
  const int length = static_cast<int>(before.size());
  // From the prompt backwards, and from the middle of old text in each way.
  key(&console(), Qt::Key_Backspace);
  EXPECT_EQ(console().text(), before);
  QTextCursor caret = console().textCursor();
  caret.setPosition(length / 2);
  console().setTextCursor(caret);
  key(&console(), Qt::Key_Delete);
  key(&console(), Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(console().text(), before);
  type(&console(), "x");
  EXPECT_EQ(console().text(), before + "x") << "what is typed goes behind the prompt";
  console().selectAll();
  key(&console(), Qt::Key_Delete);
  EXPECT_EQ(console().text(), before) << "of a selection the typed part goes";
  console().selectAll();
  key(&console(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(console().text(), before);
  EXPECT_EQ(qt::narrow(QApplication::clipboard()->text()), before);
}

TEST_F(ConsoleWindow, UpAndDownBringQueriesBackAndEscapeEmptiesTheLine) {
  query("#11;");
  query("#12;");
  type(&console(), "unfinished");
  key(&console(), Qt::Key_Up);
  EXPECT_EQ(console().typed(), "#12;");
  key(&console(), Qt::Key_Up);
  EXPECT_EQ(console().typed(), "#11;");
  key(&console(), Qt::Key_Down);
  key(&console(), Qt::Key_Down);
  EXPECT_EQ(console().typed(), "unfinished");
  key(&console(), Qt::Key_Escape);
  EXPECT_EQ(console().typed(), "");
}

TEST_F(ConsoleWindow, QueriesOfEarlierRunsAreBroughtBack) {
  kit::write_file("history", "#21;\n\n#22;\n");
  keep_history_in("history");
  query("#23;");
  keep_history_in("");
  for (const char *wanted : {"#23;", "#22;", "#21;"}) {
    key(&console(), Qt::Key_Up);
    EXPECT_EQ(console().typed(), wanted);
  }
  key(&console(), Qt::Key_Escape);
  EXPECT_EQ(kept_queries("history", 2), (std::vector<std::string>{"#22;", "#23;"}));
}

TEST_F(ConsoleWindow, TypingIsTakenBackStepByStep) {
  type(&console(), "ab");
  key(&console(), Qt::Key_Backspace);
  EXPECT_EQ(console().typed(), "a");
  EXPECT_TRUE(enabled(201) || (menu_opened(), enabled(201)));
  key(&console(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(console().typed(), "ab");
  key(&console(), Qt::Key_Z, Qt::ControlModifier);
  key(&console(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(console().typed(), "");
  query("#7;");
  key(&console(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(console().typed(), "") << "what the program wrote is never taken back";
}

TEST_F(ConsoleWindow, SeveralPastedLinesAreSeveralQueries) {
  QApplication::clipboard()->setText(QStringLiteral("+ #1\n #1;\n#40;\nrest"));
  key(&console(), Qt::Key_V, Qt::ControlModifier);
  settle();
  const std::string text = news();
  EXPECT_NE(text.find("#40;\n#40\n"), std::string::npos) << text;
  EXPECT_EQ(console().typed(), "rest");
}

// A line that is broken for showing is copied and run whole.
TEST_F(ConsoleWindow, LongLinesAreBrokenForShowingOnly) {
  const std::string word(3'000, 'w');
  QApplication::clipboard()->setText(qt::wide("length \"" + word + "\";"));
  key(&console(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_GT(console().blockCount(), 3);
  EXPECT_EQ(console().typed(), "length \"" + word + "\";");
  console().selectAll();
  console().copy();
  EXPECT_NE(QApplication::clipboard()->text().indexOf(qt::wide(word)), -1);
  key(&console(), Qt::Key_Escape);
}

TEST_F(ConsoleWindow, EscapeStopsWhatRunsAndTypingWaits) {
  kit::write_file("ever.ddb", "fdec\n ever ::= int -> int ;\n;\nfdef\n ever ?0 ::= ever ?0 ;\n;\n");
  open_database("ever.ddb");
  settle();
  QTimer::singleShot(100, &console(), [] { type(&console(), "#77;"); });
  QTimer::singleShot(250, &console(), [] { key(&console(), Qt::Key_Escape); });
  query("ever #1;");
  ASSERT_TRUE(wait_for([] { return !command_runs(); }));
  EXPECT_NE(news().find("Query interrupted\n"), std::string::npos);
  EXPECT_EQ(console().typed(), "#77;");
}

TEST_F(ConsoleWindow, CannotBeClosed) {
  window("CONTROL").sub->close();
  settle();
  EXPECT_NE(news().find("You're not allowed to close CONTROL window\n"), std::string::npos);
  EXPECT_EQ(windows_titled("CONTROL"), 1);
}

// A megabyte of answer is shown within a second and does not stay in memory whole.
TEST_F(ConsoleWindow, MuchTextIsShownAtOnceAndBounded) {
  std::string text;
  while (text.size() < 1'000'000)
    text += "a line of some length that the program wrote, number " + std::to_string(text.size()) +
            "\n";
  QElapsedTimer clock;
  clock.start();
  run_entry([&text] {
    for (std::size_t at = 0; at < text.size(); at += 1'000)
      gConsole->write(std::string_view(text).substr(at, 1'000));
    return 1;
  });
  console().repaint();
  RecordProperty("milliseconds", static_cast<int>(clock.elapsed()));
  std::printf("1 MB shown in %lld ms\n", static_cast<long long>(clock.elapsed()));
  EXPECT_LT(clock.elapsed(), 5'000) << "with the sanitizers; a release build takes a fraction";
  EXPECT_LT(console().document()->characterCount(), 600'000);
}

} // namespace velora
