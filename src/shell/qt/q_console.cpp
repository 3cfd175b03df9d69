// The console's text on both sides of the mark, and taking back what was typed.
#include "shell/qt/q_console.h"

#include <QMimeData>
#include <QTextBlock>
#include <QTimer>

#include <algorithm>

#include "platform/utf8.h"
#include "shell/desk_events.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_text.h"
#include "shell/shown_text.h"

namespace velora::qt {

namespace {

constexpr std::size_t kMostUndone = 500;

// A text as it stands in the pane: long lines have breaks for showing.
std::string with_breaks(std::string_view text) {
  LineBreaker line{longest_shown_line(text.size())};
  std::string out;
  out.reserve(text.size() + text.size() / 50);
  for (const char c : text) {
    if (line.breaks_before(c, !continues_character(c)))
      out += kSoftBreak;
    out += c;
    if (line.breaks_behind(c))
      out += kSoftBreak;
  }
  return out;
}

} // namespace

ConsolePane::ConsolePane(WindowId id) : TextPane(id) {
  setUndoRedoEnabled(false); // of what was typed changes are taken back here
  setCursorWidth(2);
  viewport()->setMouseTracking(true);
}

void ConsolePane::set_text(std::string_view text) {
  const OwnChange own(own_change_);
  QTextCursor old(document());
  old.setPosition(mark_, QTextCursor::KeepAnchor);
  old.removeSelectedText();
  mark_ = insert_shown(0, text, {});
  caret_to_end();
}

void ConsolePane::append(std::string_view text, const std::vector<TextRange> &standing_out) {
  const QTextCursor before = textCursor();
  const bool follows = before.selectionStart() >= mark_ || !before.hasSelection();
  const int behind = document()->characterCount() - mark_;
  const bool old_text = before.position() < mark_;
  TextPane::append(text, standing_out);
  mark_ = document()->characterCount() - behind;
  if (!follows)
    return;
  if (old_text)
    caret_to_end();
  ensureCursorVisible();
}

std::string ConsolePane::typed() const {
  return narrow(unbroken(mark_, document()->characterCount() - 1));
}

void ConsolePane::set_typed(std::string_view text) {
  const OwnChange own(own_change_);
  QTextCursor cursor(document());
  cursor.setPosition(mark_);
  cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
  insert_shown(mark_, with_breaks(text), {});
  caret_to_end();
  if (!restoring_)
    undo_.clear();
  shown_ = {std::string(text), caret_in_typed()};
}

EditState ConsolePane::state() const {
  EditState state = TextPane::state();
  state.can_undo = !undo_.empty();
  return state;
}

void ConsolePane::edit(EditCommand command) {
  switch (command) {
  case EditCommand::undo:
    undo_typed();
    return;
  case EditCommand::cut:
    copy();
    [[fallthrough]];
  case EditCommand::clear:
    if (textCursor().hasSelection() && !keep_old_text(false))
      textCursor().removeSelectedText();
    return;
  default:
    TextPane::edit(command);
  }
}

void ConsolePane::caret_to_end() {
  moveCursor(QTextCursor::End);
  ensureCursorVisible();
}

// Before something inserts text: older text is left alone.
void ConsolePane::leave_old_text() {
  if (textCursor().selectionStart() < mark_)
    caret_to_end();
}

// Before something deletes the selection, or without one the character before or behind the caret:
// true when that is older text. Of a selection that begins there only the typed part is deleted.
bool ConsolePane::keep_old_text(bool before_caret) {
  QTextCursor cursor = textCursor();
  if (cursor.selectionStart() < mark_ && cursor.selectionEnd() > mark_) {
    const int end = cursor.selectionEnd();
    cursor.setPosition(mark_);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    return false;
  }
  return cursor.selectionStart() < mark_ ||
         (before_caret && !cursor.hasSelection() && cursor.position() == mark_);
}

// The line that a place stands in, whatever breaks it has for showing.
QString ConsolePane::whole_line(int position) const {
  QTextBlock first = document()->findBlock(position);
  while (first.userState() == 1 && first.previous().isValid())
    first = first.previous();
  QTextBlock last = document()->findBlock(position);
  while (last.next().isValid() && last.next().userState() == 1)
    last = last.next();
  return unbroken(first.position(), last.position() + last.length() - 1);
}

// --- changes of the user -------------------------------------------------------------------------

void ConsolePane::user_changed() {
  remember_typed();
  TextPane::user_changed();
}

void ConsolePane::remember_typed() {
  const Typed now{typed(), caret_in_typed()};
  if (now.text == shown_.text)
    return;
  undo_.push_back(shown_);
  if (undo_.size() > kMostUndone)
    undo_.erase(undo_.begin());
  shown_ = now;
}

void ConsolePane::undo_typed() {
  if (undo_.empty())
    return;
  const Typed back = undo_.back();
  undo_.pop_back();
  show_typed(back);
}

void ConsolePane::show_typed(const Typed &typed) {
  restoring_ = true;
  set_typed(typed.text);
  restoring_ = false;
  QTextCursor cursor = textCursor();
  cursor.setPosition(std::clamp(mark_ + typed.caret, mark_, document()->characterCount() - 1));
  setTextCursor(cursor);
}

// Pasted text has its long lines broken for showing too, since the control is slow on them.
void ConsolePane::insertFromMimeData(const QMimeData *source) {
  guarded([&] {
    leave_old_text();
    QString text = source->text();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (text.isEmpty())
      return;
    {
      const OwnChange own(own_change_);
      textCursor().removeSelectedText();
      QTextCursor caret = textCursor();
      caret.setPosition(insert_shown(caret.position(), with_breaks(narrow(text)), {}));
      setTextCursor(caret);
    }
    ensureCursorVisible();
    user_changed();
  });
}

} // namespace velora::qt
