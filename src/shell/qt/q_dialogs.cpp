// Dialogs made by hand, so that each fits its text and its buttons and has names for readers of the
// screen. A long message scrolls.
#include "shell/qt/q_dialogs.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

#include "platform/response.h"
#include "shell/qt/q_frame.h"
#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

constexpr int kMostWidth = 560;
constexpr int kMostHeight = 360;
constexpr int kMostAcross = 40; // characters of all labels that still stand side by side
constexpr char kHint[] = "Please type here";

QWidget *owner() {
  QWidget *active = QApplication::activeModalWidget();
  return active != nullptr ? active : &frame();
}

// The message as a text that can be selected, as wide as it needs up to a limit.
QWidget *message_widget(const std::string &message) {
  auto *label = new QLabel(wide(message));
  label->setObjectName(QStringLiteral("message"));
  label->setTextFormat(Qt::PlainText);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  const int wanted =
      label->fontMetrics().boundingRect(QRect(0, 0, 10'000, 10'000), 0, label->text()).width();
  label->setMinimumWidth(std::clamp(wanted + 8, 220, kMostWidth));
  if (label->heightForWidth(label->minimumWidth()) <= kMostHeight)
    return label;
  auto *scroll = new QScrollArea;
  scroll->setWidget(label);
  scroll->setWidgetResizable(true);
  scroll->setMinimumSize(kMostWidth + 30, kMostHeight);
  return scroll;
}

void prepare(QDialog &dialog, const char *name, const std::string &message) {
  dialog.setObjectName(QLatin1String(name));
  dialog.setWindowTitle(QStringLiteral("Velora"));
  dialog.setAccessibleName(wide(message));
  dialog.setModal(true);
  auto *layout = new QVBoxLayout(&dialog);
  layout->setSpacing(10);
  layout->setContentsMargins(18, 16, 18, 16);
  layout->addWidget(message_widget(message));
}

} // namespace

bool dialog_open() {
  return QApplication::activeModalWidget() != nullptr ||
         QApplication::activePopupWidget() != nullptr;
}

int ask_question(const std::string &message, const std::vector<std::string> &buttons) {
  QDialog dialog(owner());
  prepare(dialog, "question", message);
  std::size_t letters = 0;
  for (const std::string &label : buttons)
    letters += label.size();
  const bool across = letters <= kMostAcross && buttons.size() <= 3;
  auto *rows = across ? static_cast<QBoxLayout *>(new QHBoxLayout)
                      : static_cast<QBoxLayout *>(new QVBoxLayout);
  if (across)
    rows->addStretch();
  int number = 0;
  const auto add = [&](const QString &label, int answer, const QString &name) {
    QString shown = label;
    auto *button = new QPushButton(shown.replace(QLatin1Char('&'), QStringLiteral("&&")));
    button->setObjectName(name);
    button->setAutoDefault(true);
    button->setDefault(rows->count() == (across ? 1 : 0));
    QObject::connect(button, &QPushButton::clicked, &dialog,
                     [&dialog, answer] { dialog.done(answer); });
    rows->addWidget(button);
  };
  for (const std::string &label : buttons) {
    ++number;
    add(wide(label), number, QStringLiteral("choice%1").arg(number));
  }
  add(QStringLiteral("Cancel"), kCancelled, QStringLiteral("cancel"));
  static_cast<QVBoxLayout *>(dialog.layout())->addLayout(rows);
  const int answer = dialog.exec();
  return answer == QDialog::Rejected ? kCancelled : answer;
}

bool ask_line(const std::string &prompt, std::string &answer) {
  QDialog dialog(owner());
  prepare(dialog, "line", prompt);
  auto *line = new QLineEdit(answer == kHint ? QString() : wide(answer));
  line->setObjectName(QStringLiteral("answer"));
  line->setAccessibleName(wide(prompt));
  line->setPlaceholderText(QLatin1String(kHint));
  line->selectAll();
  auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  dialog.layout()->addWidget(line);
  dialog.layout()->addWidget(buttons);
  line->setFocus();
  if (dialog.exec() != QDialog::Accepted)
    return false;
  answer = narrow(line->text());
  return true;
}

void show_message(const std::string &title, const std::string &text) {
  QMessageBox box(QMessageBox::Warning, wide(title), wide(text), QMessageBox::Ok, owner());
  box.setObjectName(QStringLiteral("box"));
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

namespace {

QString kind_name(const QString &pattern) {
  static const std::pair<const char *, const char *> kNames[] = {
      {"*.ddb", "DataBases"}, {"*.bmp", "Bitmaps"}, {"*.txt", "Texts"},
      {"*.pdf", "Documents"}, {"*.png", "Images"},  {"*.svg", "Drawings"}};
  for (const auto &[known, name] : kNames)
    if (pattern == QLatin1String(known))
      return QString::fromUtf8(name);
  return QStringLiteral("Files");
}

bool may_replace(const QString &file) {
  const QString question =
      QStringLiteral("%1 already exists.\nDo you want to replace it?").arg(file);
  return QMessageBox::warning(owner(), QStringLiteral("Velora"), question,
                              QMessageBox::Yes | QMessageBox::No,
                              QMessageBox::No) == QMessageBox::Yes;
}

} // namespace

// The program adds the pattern's ending to names with another one, so that is done here already:
// what the user is asked about is the file that will be written. "*.*" has no ending to add.
std::optional<std::string> choose_file_name(bool for_saving, const std::string &title,
                                            const std::string &pattern) {
  const QString wanted = wide(pattern);
  const QString ending = pattern == "*.*" ? QString() : wanted.mid(1);
  QFileDialog dialog(owner(), wide(title));
  dialog.setObjectName(QStringLiteral("file"));
  dialog.setAcceptMode(for_saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(for_saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setNameFilters(
      {kind_name(wanted) + QStringLiteral(" (%1 %2)").arg(wanted, wanted.toUpper()),
       QStringLiteral("All files (*)")});
  if (for_saving)
    dialog.setDefaultSuffix(ending.mid(1)); // for names without one
  while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
    QString name = dialog.selectedFiles().constFirst();
    const bool added = for_saving && !name.endsWith(ending, Qt::CaseInsensitive);
    if (added)
      name += ending;
    if (!added || !QFile::exists(name) || may_replace(name))
      return QFile::encodeName(name).toStdString();
  }
  return std::nullopt;
}

} // namespace velora::qt
