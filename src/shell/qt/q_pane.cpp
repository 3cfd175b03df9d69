// Text panes. A break for showing is a line end whose next line carries kSoftLine; text that goes
// out leaves it out, so what is copied is what was written.
#include "shell/qt/q_pane.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QFontDatabase>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>
#include <QTimer>

#include <algorithm>
#include <memory>

#include "platform/utf8.h"
#include "shell/desk_events.h"
#include "shell/qt/q_complete.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr int kSoftLine = 1; // the state of a line that begins behind a soft break
constexpr int kLeastPoints = 6;
constexpr int kMostPoints = 48;
// Brackets are looked for so far from the caret.
constexpr int kBracketReach = 20'000;

bool is_soft(const QTextBlock &block) {
  return block.userState() == kSoftLine;
}

} // namespace

Shades shades_for(const QPalette &palette) {
  if (palette.color(QPalette::Base).lightness() < 128)
    return {QColor(0xff8a80), QColor(0x8ab4f8), QColor(0x8ab4f8), QColor(0xf0b060),
            QColor(0x9ccc65), QColor(0xce93d8), QColor(0x9e9e9e), QColor(0x4dd0c0),
            QColor(0x3d5a80), QColor(0x803030), QColor(0x303338), QColor(0x9aa0a6),
            QColor(0x26282c)};
  return {QColor(0xb00020), QColor(0x0b4f9e), QColor(0x0b4f9e), QColor(0x8a4b00), QColor(0x2e6b12),
          QColor(0x7b1fa2), QColor(0x5f6368), QColor(0x00655a), QColor(0xcfe3ff), QColor(0xffcdd2),
          QColor(0xf3f6fb), QColor(0x5f6368), QColor(0xf1f3f4)};
}

TextPane::TextPane(WindowId id) : id_(id) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setStyleHint(QFont::Monospace);
  if (font.pointSize() < 10)
    font.setPointSize(10);
  usual_size_ = font.pointSize();
  setFont(font);
  setTabStopDistance(fontMetrics().horizontalAdvance(QLatin1Char(' ')) * 4);
  setFrameShape(QFrame::NoFrame);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  connect(this, &QPlainTextEdit::cursorPositionChanged, this,
          [this] { guarded([this] { show_marks(); }); });
  connect(document(), &QTextDocument::contentsChange, this, [this](int, int removed, int added) {
    if (!own_change_ && removed + added > 0)
      guarded([this] { user_changed(); });
  });
}

// Telling the program waits until the control has finished with the key.
void TextPane::user_changed() {
  if (change_told_)
    return;
  change_told_ = true;
  QTimer::singleShot(0, this, [this] {
    guarded([this] {
      change_told_ = false;
      text_changed(id());
    });
  });
}

int TextPane::program_end() const {
  return document()->characterCount() - 1;
}

QString TextPane::unbroken(int from, int to) const {
  QString out;
  out.reserve(std::max(to - from, 0));
  for (QTextBlock block = document()->findBlock(from); block.isValid() && block.position() <= to;
       block = block.next()) {
    if (block.position() > from && !is_soft(block))
      out += QLatin1Char('\n');
    const int start = std::max(from - block.position(), 0);
    const int end = std::min(to - block.position(), block.length() - 1);
    if (end > start)
      out += QStringView(block.text()).mid(start, end - start);
  }
  return out;
}

std::string TextPane::text() const {
  return narrow(unbroken(0, document()->characterCount() - 1));
}

void TextPane::set_text(std::string_view text) {
  const OwnChange own(own_change_);
  setPlainText(wide(text));
}

int TextPane::insert_shown(int at, std::string_view text, const QTextCharFormat &format) {
  // Which of the line ends are soft, in order.
  std::vector<bool> soft;
  std::string plain(text);
  for (char &c : plain)
    if (c == '\n' || c == kSoftBreak) {
      soft.push_back(c == kSoftBreak);
      c = '\n';
    }
  QTextCursor cursor(document());
  cursor.setPosition(at);
  cursor.insertText(wide(plain), format);
  QTextBlock block = document()->findBlock(at);
  for (const bool here : soft) {
    block = block.next();
    if (here)
      block.setUserState(kSoftLine);
  }
  return cursor.position();
}

void TextPane::append(std::string_view text, const std::vector<TextRange> &standing_out) {
  const OwnChange own(own_change_);
  QTextCursor whole(document());
  whole.beginEditBlock();
  QTextCharFormat message;
  message.setForeground(shades_for(palette()).message);
  message.setProperty(QTextFormat::UserProperty, true);
  int at = program_end();
  std::size_t done = 0;
  for (const TextRange &range : standing_out) {
    at = insert_shown(at, text.substr(done, range.start - done), {});
    at = insert_shown(at, text.substr(range.start, range.end - range.start), message);
    done = range.end;
  }
  insert_shown(at, text.substr(done), {});
  whole.endEditBlock();
  document()->clearUndoRedoStacks(); // the user takes back what the user typed, nothing else
}

// Soft breaks do not count as characters to keep, but as characters that went.
std::size_t TextPane::drop_front(std::size_t keep) {
  QTextBlock block = document()->findBlock(program_end());
  std::size_t kept = static_cast<std::size_t>(std::max(0, program_end() - block.position()));
  while (block.isValid() && kept < keep) {
    kept += is_soft(block) ? 0U : 1U;
    block = block.previous();
    kept += block.isValid() ? static_cast<std::size_t>(block.length() - 1) : 0;
  }
  if (!block.isValid() || block.position() == 0)
    return 0;
  const OwnChange own(own_change_);
  const int dropped = block.position();
  QTextCursor front(document());
  front.setPosition(dropped, QTextCursor::KeepAnchor);
  const std::size_t characters = count_characters(narrow(front.selectedText()));
  front.removeSelectedText();
  front_dropped(dropped);
  return characters;
}

void TextPane::prepend(std::string_view text) {
  const OwnChange own(own_change_);
  const int before = document()->characterCount();
  insert_shown(0, text, {});
  front_dropped(before - document()->characterCount());
}

std::size_t TextPane::columns() const {
  const int letter = std::max(1, fontMetrics().horizontalAdvance(QLatin1Char('0')));
  return static_cast<std::size_t>(std::max(0, viewport()->width() / letter));
}

EditState TextPane::state() const {
  EditState state;
  state.can_undo = document()->isUndoAvailable();
  state.can_paste = !isReadOnly() && canPaste();
  state.selected = textCursor().hasSelection();
  return state;
}

void TextPane::edit(EditCommand command) {
  switch (command) {
  case EditCommand::undo:
    undo();
    break;
  case EditCommand::cut:
    cut();
    break;
  case EditCommand::copy:
    copy();
    break;
  case EditCommand::paste:
    paste();
    break;
  case EditCommand::clear:
    textCursor().removeSelectedText();
    break;
  }
}

TextRange TextPane::selection() const {
  const QTextCursor cursor = textCursor();
  const std::size_t start = narrow(unbroken(0, cursor.selectionStart())).size();
  const std::size_t length =
      narrow(unbroken(cursor.selectionStart(), cursor.selectionEnd())).size();
  return {start, start + length};
}

int TextPane::position_of_byte(std::size_t byte) const {
  std::size_t passed = 0;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    if (block.position() > 0 && !is_soft(block))
      ++passed;
    const QByteArray line = block.text().toUtf8();
    const auto length = static_cast<std::size_t>(line.size());
    if (passed + length >= byte) {
      const auto within = static_cast<qsizetype>(byte > passed ? byte - passed : 0);
      return block.position() + static_cast<int>(QString::fromUtf8(line.left(within)).size());
    }
    passed += length;
  }
  return document()->characterCount() - 1;
}

void TextPane::select(TextRange range) {
  QTextCursor cursor = textCursor();
  cursor.setPosition(position_of_byte(range.start));
  cursor.setPosition(position_of_byte(range.end), QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  ensureCursorVisible();
}

void TextPane::zoom(int steps) {
  QFont now = font();
  now.setPointSize(steps == 0 ? usual_size_
                              : std::clamp(now.pointSize() + steps, kLeastPoints, kMostPoints));
  setFont(now);
  setTabStopDistance(fontMetrics().horizontalAdvance(QLatin1Char(' ')) * 4);
}

QString TextPane::name_at(int position) const {
  const QTextBlock block = document()->findBlock(position);
  const QString line = block.text();
  const auto ends_name = [](QChar c) {
    return c.isSpace() || QStringLiteral("()[];,\"").contains(c);
  };
  qsizetype start = std::clamp<qsizetype>(position - block.position(), 0, line.size());
  qsizetype end = start;
  while (start > 0 && !ends_name(line[start - 1]))
    --start;
  while (end < line.size() && !ends_name(line[end]))
    ++end;
  return line.mid(start, end - start);
}

void TextPane::complete_name() {
  if (completion_ == nullptr)
    completion_ = new Completion(this);
  if (!completion_->offer())
    QApplication::beep();
}

void TextPane::follow_names() {
  if (completion_ != nullptr)
    completion_->follow();
}

bool TextPane::leave_to_names(QKeyEvent *event) const {
  if (completion_ == nullptr || !completion_->popup()->isVisible())
    return false;
  switch (event->key()) {
  case Qt::Key_Return:
  case Qt::Key_Enter:
  case Qt::Key_Tab:
  case Qt::Key_Escape:
    event->ignore();
    return true;
  default:
    return false;
  }
}

// --- brackets ----------------------------------------------------------------------------------

int matching_bracket(const QString &text, int at) {
  const QString pairs = QStringLiteral("()[]");
  const auto kind = pairs.indexOf(text[at]);
  if (kind < 0)
    return -1;
  const QChar same = text[at];
  const QChar other = pairs[kind ^ 1];
  const int step = kind % 2 == 0 ? 1 : -1;
  // A quote mark closes at the latest at the end of its line, in either direction.
  bool quoted = false;
  int depth = 0;
  for (int i = at; i >= 0 && i < text.size(); i += step) {
    const QChar c = text[i];
    if (c == QLatin1Char('"'))
      quoted = !quoted;
    else if (c == QLatin1Char('\n'))
      quoted = false;
    else if (!quoted && c == same)
      ++depth;
    else if (!quoted && c == other && --depth == 0)
      return i;
  }
  return -1;
}

void TextPane::bracket_marks(QList<QTextEdit::ExtraSelection> &marks) const {
  const QTextCursor caret = textCursor();
  if (caret.hasSelection())
    return;
  const int from = std::max(0, caret.position() - kBracketReach);
  QTextCursor near(document());
  near.setPosition(from);
  near.setPosition(std::min(caret.position() + kBracketReach, document()->characterCount() - 1),
                   QTextCursor::KeepAnchor);
  const QString text = near.selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  for (const int at : {caret.position() - from - 1, caret.position() - from}) {
    if (at < 0 || at >= text.size() || !QStringLiteral("()[]").contains(text[at]))
      continue;
    const int other = matching_bracket(text, at);
    const Shades shades = shades_for(palette());
    for (const int place : {at, other}) {
      if (place < 0)
        continue;
      QTextEdit::ExtraSelection mark;
      mark.cursor = QTextCursor(document());
      mark.cursor.setPosition(from + place);
      mark.cursor.setPosition(from + place + 1, QTextCursor::KeepAnchor);
      mark.format.setBackground(other < 0 ? shades.lone : shades.bracket);
      marks.append(mark);
    }
    return;
  }
}

void TextPane::show_marks() {
  if (own_change_)
    return;
  QList<QTextEdit::ExtraSelection> shown = marks();
  bracket_marks(shown);
  setExtraSelections(shown);
}

// --- events ------------------------------------------------------------------------------------

QMimeData *TextPane::createMimeDataFromSelection() const {
  auto copied = std::make_unique<QMimeData>();
  const QTextCursor cursor = textCursor();
  copied->setText(unbroken(cursor.selectionStart(), cursor.selectionEnd()));
  return copied.release();
}

void TextPane::wheelEvent(QWheelEvent *event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) {
    QPlainTextEdit::wheelEvent(event);
    return;
  }
  if (event->angleDelta().y() != 0)
    zoom(event->angleDelta().y() > 0 ? 1 : -1);
  event->accept();
}

namespace {

// The keys that edit text stay with the pane; all others that the menus know go there, also those
// that a control has of its own, such as Ctrl+K.
bool belongs_to_pane(const QKeyEvent *key) {
  for (const QKeySequence::StandardKey own :
       {QKeySequence::Undo, QKeySequence::Cut, QKeySequence::Copy, QKeySequence::Paste,
        QKeySequence::SelectAll})
    if (key->matches(own))
      return true;
  if (key->matches(QKeySequence::Redo) && key->key() != Qt::Key_Y) // which asks for a query
    return true;
  const bool plain = (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
  return plain && key->key() != Qt::Key_F1 && key->key() != Qt::Key_F3;
}

} // namespace

bool TextPane::event(QEvent *event) {
  if (event->type() == QEvent::ShortcutOverride) {
    event->setAccepted(belongs_to_pane(static_cast<QKeyEvent *>(event)));
    return event->isAccepted() ? true : QWidget::event(event);
  }
  return QPlainTextEdit::event(event);
}

void TextPane::contextMenuEvent(QContextMenuEvent *event) {
  guarded([&] {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu(event->pos()));
    menu->exec(event->globalPos());
  });
}

void TextPane::focusInEvent(QFocusEvent *event) {
  QPlainTextEdit::focusInEvent(event);
  guarded([] { menu_opened(); });
}

// Files that are dropped go to the frame.
void TextPane::dragEnterEvent(QDragEnterEvent *event) {
  if (event->mimeData()->hasUrls())
    event->ignore();
  else
    QPlainTextEdit::dragEnterEvent(event);
}

} // namespace velora::qt
