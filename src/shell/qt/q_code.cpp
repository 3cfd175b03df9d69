// Language text with its margin. The margin is a widget of its own beside the viewport; the find
// bar stands below it.
#include "shell/qt/q_code.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>

#include "shell/qt/q_find.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr int kMarginPad = 6;
constexpr int kFaultDot = 3; // its radius

class Margin : public QWidget {
public:
  explicit Margin(CodePane *pane) : QWidget(pane), pane_(pane) {
    setObjectName(QStringLiteral("margin"));
    setAccessibleName(QStringLiteral("Line numbers"));
    setCursor(Qt::ArrowCursor);
  }
  [[nodiscard]] QSize sizeHint() const override { return {pane_->margin_width(), 0}; }

protected:
  void paintEvent(QPaintEvent *event) override {
    guarded([&] { pane_->paint_margin(event); });
  }
  void mousePressEvent(QMouseEvent *event) override {
    guarded([&] { pane_->select_line_at(event->pos().y()); });
  }
  bool event(QEvent *event) override {
    if (event->type() == QEvent::ToolTip)
      guarded([&] {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QTextCursor line = pane_->cursorForPosition({0, help->pos().y()});
        for (int at = line.block().position(); at < line.block().position() + line.block().length();
             ++at)
          if (const QString message = pane_->fault_at(at); !message.isEmpty()) {
            QToolTip::showText(help->globalPos(), message, this);
            return;
          }
      });
    return QWidget::event(event);
  }

private:
  CodePane *pane_;
};

} // namespace

CodePane::CodePane(WindowId id) : TextPane(id), margin_(new Margin(this)) {
  setLineWrapMode(QPlainTextEdit::NoWrap);
  colour_words(this);
  const auto relay = [this] { guarded([this] { lay_out(); }); };
  connect(this, &QPlainTextEdit::blockCountChanged, this, relay);
  connect(this, &QPlainTextEdit::updateRequest, this,
          [this] { guarded([this] { margin_->update(); }); });
  lay_out();
}

CodePane::~CodePane() {
  disconnect(this, nullptr, this, nullptr);
}

// What the program puts here is the ground that taking back ends at.
void CodePane::set_text(std::string_view text) {
  faults_.clear();
  if (text != this->text())
    TextPane::set_text(text);
}

// --- the margin ----------------------------------------------------------------------------------

int CodePane::margin_width() const {
  int digits = 2;
  for (int lines = blockCount(); lines >= 100; lines /= 10)
    ++digits;
  return 3 * kMarginPad + fontMetrics().horizontalAdvance(QLatin1Char('9')) * digits;
}

void CodePane::lay_out() {
  const int width = margin_width();
  const int below =
      find_bar_ != nullptr && find_bar_->isVisible() ? find_bar_->sizeHint().height() : 0;
  setViewportMargins(width, 0, 0, below);
  const QRect inside = contentsRect();
  margin_->setGeometry(inside.left(), inside.top(), width, inside.height() - below);
  if (find_bar_ != nullptr)
    find_bar_->setGeometry(inside.left(), inside.bottom() + 1 - below, inside.width(), below);
}

QRect CodePane::line_rect(const QTextBlock &block) const {
  return blockBoundingGeometry(block).translated(contentOffset()).toRect();
}

bool CodePane::has_fault(const QTextBlock &block) const {
  return std::any_of(faults_.begin(), faults_.end(), [&](const Fault &fault) {
    return block.contains(fault.place.selectionStart());
  });
}

void CodePane::paint_margin(QPaintEvent *event) {
  QPainter painter(margin_);
  const Shades shades = shades_for(palette());
  painter.fillRect(event->rect(), shades.margin_ground);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(font());
  const int here = textCursor().blockNumber();
  for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
    const QRect line = line_rect(block);
    if (line.top() > event->rect().bottom())
      break;
    painter.setPen(block.blockNumber() == here ? palette().color(QPalette::Text) : shades.margin);
    painter.drawText(QRect(0, line.top(), margin_->width() - kMarginPad, fontMetrics().height()),
                     Qt::AlignRight, QString::number(block.blockNumber() + 1));
    if (!has_fault(block))
      continue;
    painter.setPen(Qt::NoPen);
    painter.setBrush(shades.message);
    painter.drawEllipse(QPoint(kMarginPad, line.top() + fontMetrics().height() / 2), kFaultDot,
                        kFaultDot);
  }
}

void CodePane::select_line_at(int y) {
  QTextCursor cursor = cursorForPosition({0, y});
  cursor.movePosition(QTextCursor::StartOfBlock);
  if (!cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor))
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  setTextCursor(cursor);
}

void CodePane::resizeEvent(QResizeEvent *event) {
  TextPane::resizeEvent(event);
  guarded([this] { lay_out(); });
}

// --- faults --------------------------------------------------------------------------------------

void CodePane::mark_faults(const std::vector<TextMark> &marks) {
  faults_.clear();
  for (const TextMark &mark : marks) {
    QTextCursor place(document());
    place.setPosition(position_of_byte(mark.range.start));
    place.setPosition(position_of_byte(mark.range.end), QTextCursor::KeepAnchor);
    if (!place.hasSelection() &&
        !place.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor))
      place.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
    faults_.push_back({place, wide(mark.message).trimmed()});
  }
  show_marks();
  margin_->update();
}

QString CodePane::fault_at(int position) const {
  for (const Fault &fault : faults_)
    if (fault.place.selectionStart() <= position && position <= fault.place.selectionEnd())
      return fault.message;
  return {};
}

// The line with the caret, and the faults.
QList<QTextEdit::ExtraSelection> CodePane::marks() const {
  QList<QTextEdit::ExtraSelection> marks;
  const Shades shades = shades_for(palette());
  QTextEdit::ExtraSelection line;
  line.cursor = textCursor();
  line.cursor.clearSelection();
  line.format.setBackground(shades.line);
  line.format.setProperty(QTextFormat::FullWidthSelection, true);
  marks.append(line);
  for (const Fault &fault : faults_) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = fault.place;
    mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    mark.format.setUnderlineColor(shades.message);
    marks.append(mark);
  }
  return marks;
}

bool CodePane::event(QEvent *event) {
  if (event->type() != QEvent::ToolTip)
    return TextPane::event(event);
  guarded([&] {
    const auto *help = static_cast<QHelpEvent *>(event);
    const QPoint at = viewport()->mapFromGlobal(help->globalPos());
    const QString message = fault_at(cursorForPosition(at).position());
    if (message.isEmpty())
      QToolTip::hideText();
    else
      QToolTip::showText(help->globalPos(), message, viewport());
  });
  return true;
}

// --- finding -------------------------------------------------------------------------------------

void CodePane::open_find() {
  if (find_bar_ == nullptr)
    find_bar_ = new FindBar(this);
  const QString selected = textCursor().selectedText();
  if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
    find_bar_->find_this(selected);
  find_bar_->show();
  find_bar_->take_focus();
  lay_out();
}

void CodePane::close_find() {
  if (find_bar_ == nullptr)
    return;
  find_bar_->hide();
  lay_out();
  setFocus();
}

namespace {

QTextDocument::FindFlags find_flags(bool backwards, bool same_case) {
  QTextDocument::FindFlags flags;
  flags.setFlag(QTextDocument::FindBackward, backwards);
  flags.setFlag(QTextDocument::FindCaseSensitively, same_case);
  return flags;
}

} // namespace

bool CodePane::find_text(const QString &text, bool backwards, bool same_case) {
  if (text.isEmpty())
    return false;
  if (find(text, find_flags(backwards, same_case)))
    return true;
  const QTextCursor before = textCursor();
  moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
  if (find(text, find_flags(backwards, same_case)))
    return true;
  setTextCursor(before);
  return false;
}

void CodePane::replace_found(const QString &text, const QString &by, bool same_case) {
  QTextCursor cursor = textCursor();
  const auto sense = same_case ? Qt::CaseSensitive : Qt::CaseInsensitive;
  if (cursor.hasSelection() && cursor.selectedText().compare(text, sense) == 0)
    cursor.insertText(by);
  find_text(text, false, same_case);
}

int CodePane::replace_all(const QString &text, const QString &by, bool same_case) {
  if (text.isEmpty())
    return 0;
  int count = 0;
  QTextCursor whole(document());
  whole.beginEditBlock();
  QTextCursor at(document());
  while (!(at = document()->find(text, at, find_flags(false, same_case))).isNull()) {
    at.insertText(by);
    ++count;
  }
  whole.endEditBlock();
  return count;
}

// A new line begins where the one before it begins.
void CodePane::keyPressEvent(QKeyEvent *event) {
  guarded([&] {
    if (leave_to_names(event))
      return;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool control = (event->modifiers() & Qt::ControlModifier) != 0;
    if (event->key() == Qt::Key_Escape) {
      close_find();
    } else if (event->key() == Qt::Key_Space && control) {
      complete_name();
    } else if (enter && event->modifiers() == Qt::NoModifier) {
      const QString line = textCursor().block().text();
      qsizetype indent = 0;
      while (indent < line.size() && line[indent].isSpace())
        ++indent;
      indent = std::min<qsizetype>(indent, textCursor().positionInBlock());
      textCursor().insertText(QLatin1Char('\n') + line.left(indent));
      ensureCursorVisible();
    } else {
      TextPane::keyPressEvent(event);
      follow_names();
    }
  });
}

} // namespace velora::qt
