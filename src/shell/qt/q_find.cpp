// The find bar. It asks its pane for everything.
#include "shell/qt/q_find.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

#include "shell/qt/q_code.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_guard.h"

namespace velora::qt {

FindBar::FindBar(CodePane *pane)
    : QWidget(pane), pane_(pane), wanted_(new QLineEdit), instead_(new QLineEdit),
      same_case_(new QToolButton) {
  setObjectName(QStringLiteral("find_bar"));
  setAutoFillBackground(true);
  auto *grid = new QGridLayout(this);
  grid->setContentsMargins(6, 4, 6, 4);
  grid->setSpacing(4);
  const auto field = [&](QLineEdit *line, const char *name, const char *label, int row) {
    line->setObjectName(QLatin1String(name));
    line->setPlaceholderText(QLatin1String(label));
    line->setAccessibleName(QLatin1String(label));
    line->setClearButtonEnabled(true);
    line->setMinimumWidth(90);
    grid->addWidget(line, row, 0);
  };
  const auto button = [&](QToolButton *made, const char *name, const char *shown) {
    made->setText(QLatin1String(shown));
    made->setObjectName(QLatin1String(name));
    made->setAccessibleName(QLatin1String(name));
    made->setToolTip(QLatin1String(name));
    return made;
  };
  const auto acting = [&](const char *name, const char *shown, auto act) {
    auto *made = button(new QToolButton, name, shown);
    connect(made, &QToolButton::clicked, this, [act] { guarded(act); });
    return made;
  };
  field(wanted_, "find_text", "Find", 0);
  field(instead_, "replace_text", "Replace by", 1);
  QToolButton *next = acting("Next", "", [this] { find_next(false); });
  next->setArrowType(Qt::DownArrow);
  QToolButton *before = acting("Previous", "", [this] { find_next(true); });
  before->setArrowType(Qt::UpArrow);
  button(same_case_, "Same case", "Aa")->setCheckable(true);
  grid->addWidget(next, 0, 1);
  grid->addWidget(before, 0, 2);
  grid->addWidget(same_case_, 0, 3);
  grid->addWidget(acting("Close", "x", [this] { pane_->close_find(); }), 0, 4);
  grid->addWidget(acting("Replace", "Replace", [this] { replace_one(); }), 1, 1, 1, 2);
  grid->addWidget(acting("Replace All", "All", [this] { replace_every(); }), 1, 3, 1, 2);
  grid->setColumnStretch(0, 1);
  connect(wanted_, &QLineEdit::returnPressed, this,
          [this] { guarded([this] { find_next(false); }); });
  connect(instead_, &QLineEdit::returnPressed, this,
          [this] { guarded([this] { replace_one(); }); });
}

void FindBar::find_this(const QString &text) {
  wanted_->setText(text);
}

void FindBar::take_focus() {
  wanted_->setFocus();
  wanted_->selectAll();
}

void FindBar::find_next(bool backwards) {
  const bool found = pane_->find_text(wanted_->text(), backwards, same_case_->isChecked());
  frame().show_hint(found ? QString() : QStringLiteral("Not found"));
}

void FindBar::replace_one() {
  pane_->replace_found(wanted_->text(), instead_->text(), same_case_->isChecked());
}

void FindBar::replace_every() {
  const int count = pane_->replace_all(wanted_->text(), instead_->text(), same_case_->isChecked());
  frame().show_hint(QStringLiteral("%1 replaced").arg(count));
}

// Keys that a field leaves over go no further: the pane would take them for its text.
void FindBar::keyPressEvent(QKeyEvent *event) {
  event->accept();
  if (event->key() == Qt::Key_Escape)
    guarded([this] { pane_->close_find(); });
}

} // namespace velora::qt
