// Keys and mouse of the console. Whatever inserts text goes behind the mark wherever the caret
// stands; Enter closes the line; Up and Down bring earlier queries back; Escape empties the line.
#include <QApplication>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

#include "shell/desk_events.h"
#include "shell/qt/q_console.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

// A longer line of old text is an answer rather than a query.
constexpr qsizetype kLongestReused = 7'000;

bool completes_name(const QKeyEvent *event) {
  const bool control = (event->modifiers() & Qt::ControlModifier) != 0;
  return (event->key() == Qt::Key_Tab && !control) || (event->key() == Qt::Key_Space && control);
}

} // namespace

void ConsolePane::complete_typed() {
  leave_old_text();
  complete_name();
}

void ConsolePane::keyPressEvent(QKeyEvent *event) {
  guarded([&] { key_pressed(event); });
}

void ConsolePane::key_pressed(QKeyEvent *event) {
  if (leave_to_names(event))
    return;
  if (control_key(event) || moving_key(event) || deleting_key(event)) {
    event->accept();
    return;
  }
  const bool command = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0;
  if (!event->text().isEmpty() && event->text().front().isPrint() && !command)
    leave_old_text();
  TextPane::keyPressEvent(event);
  follow_names();
}

// The keys of the clipboard, of taking back, and of ending a line. True when it was one.
bool ConsolePane::control_key(QKeyEvent *event) {
  if (event->matches(QKeySequence::Undo))
    undo_typed();
  else if (event->matches(QKeySequence::Cut))
    edit(EditCommand::cut);
  else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    enter_key();
  else if (event->key() == Qt::Key_Escape)
    clear_typed();
  else if (completes_name(event))
    complete_typed();
  else
    return false;
  return true;
}

// Enter in older text, with nothing typed, takes that line to the prompt.
void ConsolePane::enter_key() {
  const QTextCursor cursor = textCursor();
  if (cursor.selectionStart() < mark_ && mark_ == document()->characterCount() - 1) {
    const QString line = whole_line(cursor.selectionStart());
    if (line.size() <= kLongestReused && reuse_line(narrow(line)))
      return;
  }
  caret_to_end();
  textCursor().insertText(QStringLiteral("\n"));
  ensureCursorVisible();
}

// Up and Down recall queries while the caret stands in what is typed; Home goes to its beginning.
bool ConsolePane::moving_key(QKeyEvent *event) {
  QTextCursor cursor = textCursor();
  const bool typing = cursor.selectionStart() >= mark_;
  const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
  if ((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0 || !typing)
    return false;
  switch (event->key()) {
  case Qt::Key_Up:
    return !shift && (recall_key(-1), true);
  case Qt::Key_Down:
    return !shift && (recall_key(1), true);
  case Qt::Key_Left:
    return !shift && !cursor.hasSelection() && cursor.position() == mark_;
  case Qt::Key_Home:
    cursor.setPosition(mark_, shift ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
    setTextCursor(cursor);
    return true;
  default:
    return false;
  }
}

bool ConsolePane::deleting_key(QKeyEvent *event) {
  const bool backwards = event->key() == Qt::Key_Backspace;
  if (!backwards && event->key() != Qt::Key_Delete)
    return false;
  if (keep_old_text(backwards)) {
    QApplication::beep();
    return true;
  }
  // A word that begins in older text is not deleted whole: the typed part of it goes.
  QTextCursor cursor = textCursor();
  if (backwards && !cursor.hasSelection() && (event->modifiers() & Qt::ControlModifier) != 0) {
    cursor.movePosition(QTextCursor::PreviousWord, QTextCursor::KeepAnchor);
    if (cursor.position() < mark_)
      cursor.setPosition(mark_, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    return true;
  }
  return false;
}

void ConsolePane::inputMethodEvent(QInputMethodEvent *event) {
  guarded([&] {
    leave_old_text();
    TextPane::inputMethodEvent(event);
  });
}

// Old text is never dragged away: a click into what is selected there begins a new selection.
void ConsolePane::mousePressEvent(QMouseEvent *event) {
  guarded([&] {
    QTextCursor cursor = textCursor();
    if (event->button() == Qt::LeftButton && cursor.hasSelection() &&
        cursor.selectionStart() < mark_ && (event->modifiers() & Qt::ShiftModifier) == 0) {
      cursor.clearSelection();
      setTextCursor(cursor);
    }
    TextPane::mousePressEvent(event);
  });
}

void ConsolePane::dropEvent(QDropEvent *event) {
  guarded([&] {
    if (!event->mimeData()->hasText())
      return;
    caret_to_end();
    insertFromMimeData(event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->accept();
  });
}

// --- messages that lead to their place -----------------------------------------------------------

// The message that was clicked at, with the notes behind it: empty for other text.
std::vector<std::string> ConsolePane::message_at(const QPoint &at) const {
  constexpr int kMostNotes = 3;
  const QTextCursor cursor = cursorForPosition(at);
  std::vector<std::string> lines;
  QTextBlock block = cursor.block();
  const QString first = whole_line(block.position());
  const bool message = cursor.charFormat().boolProperty(QTextFormat::UserProperty);
  if ((!message && !first.startsWith(QLatin1String("note: "))) || block.position() >= mark_)
    return {};
  for (int i = 0; i < kMostNotes && block.isValid(); ++i, block = block.next())
    lines.push_back(narrow(whole_line(block.position())));
  return lines;
}

void ConsolePane::mouseMoveEvent(QMouseEvent *event) {
  guarded([&] {
    TextPane::mouseMoveEvent(event);
    const bool leads = event->buttons() == Qt::NoButton && message_leads(message_at(event->pos()));
    viewport()->setCursor(leads ? Qt::PointingHandCursor : Qt::IBeamCursor);
  });
}

void ConsolePane::mouseReleaseEvent(QMouseEvent *event) {
  guarded([&] {
    TextPane::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && !textCursor().hasSelection())
      message_clicked(message_at(event->pos()));
  });
}

} // namespace velora::qt
