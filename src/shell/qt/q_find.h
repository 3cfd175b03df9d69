// The line below a language text in which texts are found and replaced.
#pragma once

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace velora::qt {

class CodePane;

class FindBar : public QWidget {
public:
  explicit FindBar(CodePane *pane);
  void find_this(const QString &text);
  void take_focus();

protected:
  void keyPressEvent(QKeyEvent *event) override;

private:
  void find_next(bool backwards);
  void replace_one();
  void replace_every();

  CodePane *pane_;
  QLineEdit *wanted_;
  QLineEdit *instead_;
  QToolButton *same_case_;
};

} // namespace velora::qt
