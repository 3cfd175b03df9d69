// The find bar. It asks its pane for everything.
#include "shell/qt/q_find.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include "shell/qt/q_code.h"
#include "shell/qt/q_guard.h"

namespace velora::qt {

FindBar::FindBar(CodePane *pane)
    : QWidget(pane), pane_(pane), wanted_(new QLineEdit), instead_(new QLineEdit),
      same_case_(new QCheckBox(QStringLiteral("Same case"))), told_(new QLabel) {
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
    grid->addWidget(line, row, 0);
  };
  const auto button = [&](const char *label, int row, int column, auto act) {
    auto *made = new QToolButton;
    made->setText(QLatin1String(label));
    made->setObjectName(QLatin1String(label));
    connect(made, &QToolButton::clicked, this, [act] { guarded(act); });
    grid->addWidget(made, row, column);
  };
  field(wanted_, "find_text", "Find", 0);
  field(instead_, "replace_text", "Replace by", 1);
  button("Next", 0, 1, [this] { find_next(false); });
  button("Previous", 0, 2, [this] { find_next(true); });
  button("Replace", 1, 1, [this] { replace_one(); });
  button("Replace All", 1, 2, [this] { replace_every(); });
  grid->addWidget(same_case_, 0, 3);
  grid->addWidget(told_, 1, 3);
  button("Close", 0, 4, [this] { pane_->close_find(); });
  grid->setColumnStretch(0, 1);
  told_->setObjectName(QStringLiteral("find_told"));
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
  told_->setText(found ? QString() : QStringLiteral("Not found"));
}

void FindBar::replace_one() {
  pane_->replace_found(wanted_->text(), instead_->text(), same_case_->isChecked());
  told_->clear();
}

void FindBar::replace_every() {
  const int count = pane_->replace_all(wanted_->text(), instead_->text(), same_case_->isChecked());
  told_->setText(QStringLiteral("%1 replaced").arg(count));
}

// Keys that a field leaves over go no further: the pane would take them for its text.
void FindBar::keyPressEvent(QKeyEvent *event) {
  event->accept();
  if (event->key() == Qt::Key_Escape)
    guarded([this] { pane_->close_find(); });
}

} // namespace velora::qt
