// Completion. Names are looked up anew each time, since declarations come and go.
#include "shell/qt/q_complete.h"

#include <QAbstractItemView>
#include <QTextBlock>

#include <algorithm>

#include "shell/name_help.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_pane.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr std::size_t kMostOffered = 300;
constexpr int kMostRows = 12;

// How far all names agree.
std::string common_start(const std::vector<DeclaredName> &names) {
  std::string common = names.front().name;
  for (const DeclaredName &known : names) {
    std::size_t same = 0;
    while (same < common.size() && same < known.name.size() && common[same] == known.name[same])
      ++same;
    common.resize(same);
  }
  while (!common.empty() && (static_cast<unsigned char>(common.back()) & 0xC0) == 0x80)
    common.pop_back(); // never half a letter
  return common;
}

} // namespace

Completion::Completion(TextPane *pane) : QCompleter(pane), pane_(pane) {
  setWidget(pane);
  setModel(&names_);
  setCompletionRole(Qt::UserRole);
  setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  setMaxVisibleItems(kMostRows);
  popup()->setObjectName(QStringLiteral("names"));
  popup()->setAccessibleName(QStringLiteral("Names that fit"));
  connect(this, qOverload<const QString &>(&QCompleter::activated), this,
          [this](const QString &name) { guarded([&] { insert(name); }); });
}

QString Completion::word_before_caret() const {
  const int at = pane_->textCursor().position();
  QString word = pane_->name_at(at);
  const QTextCursor caret = pane_->textCursor();
  const QString line = caret.block().text().left(caret.positionInBlock());
  while (!word.isEmpty() && !line.endsWith(word))
    word.chop(1); // what stands behind the caret
  return word;
}

void Completion::insert(const QString &name) {
  QTextCursor caret = pane_->textCursor();
  caret.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor,
                     static_cast<int>(word_before_caret().size()));
  caret.insertText(name);
  pane_->setTextCursor(caret);
}

bool Completion::show_names(const QString &start) {
  const std::vector<DeclaredName> found = names_beginning(narrow(start), kMostOffered);
  names_.clear();
  for (const DeclaredName &known : found) {
    auto *row = new QStandardItem(wide(known.declaration));
    row->setData(wide(known.name), Qt::UserRole);
    row->setFont(pane_->font());
    names_.appendRow(row);
  }
  if (found.empty())
    return false;
  QRect place = pane_->cursorRect();
  place.translate(pane_->viewport()->pos());
  place.setWidth(std::min(popup()->sizeHintForColumn(0) + 30, std::max(pane_->width(), 500)));
  complete(place);
  popup()->setCurrentIndex(popup()->model()->index(0, 0));
  return true;
}

bool Completion::offer() {
  const QString start = word_before_caret();
  const std::vector<DeclaredName> found = names_beginning(narrow(start), kMostOffered);
  if (found.empty())
    return false;
  const QString certain = wide(common_start(found));
  if (certain.size() > start.size())
    insert(certain);
  return found.size() == 1 || show_names(certain);
}

void Completion::follow() {
  if (!popup()->isVisible())
    return;
  const QString start = word_before_caret();
  if (start.isEmpty() || !show_names(start))
    popup()->hide();
}

} // namespace velora::qt
