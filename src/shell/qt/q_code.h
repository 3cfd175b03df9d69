// The pane of an ORVEK window: line numbers, colours, marks at faults with their messages as tips,
// find and replace.
#pragma once

#include "shell/qt/q_pane.h"

class QSyntaxHighlighter;

namespace velora::qt {

class FindBar;

class CodePane : public TextPane {
public:
  explicit CodePane(WindowId id);
  ~CodePane() override;

  void set_text(std::string_view text) override;
  // Marks faults in place of those marked before.
  void mark_faults(const std::vector<TextMark> &marks);
  // The message of the fault at a place of the text; empty for none.
  [[nodiscard]] QString fault_at(int position) const;
  // Opens the line in which texts are found and replaced, with what is selected to be found.
  void open_find();
  void close_find();
  // Finds the next place of `text`, or the one before; round again at the ends. True when there is
  // one.
  bool find_text(const QString &text, bool backwards, bool same_case);
  // Replaces what is selected when it is `text`, and goes to the next one.
  void replace_found(const QString &text, const QString &by, bool same_case);
  // Replaces all in one step of undoing; how many.
  int replace_all(const QString &text, const QString &by, bool same_case);

  [[nodiscard]] int margin_width() const;
  void paint_margin(QPaintEvent *event);
  void select_line_at(int y);

protected:
  [[nodiscard]] QList<QTextEdit::ExtraSelection> marks() const override;
  bool event(QEvent *event) override;
  void resizeEvent(QResizeEvent *event) override;
  void keyPressEvent(QKeyEvent *event) override;

private:
  struct Fault {
    QTextCursor place;
    QString message;
  };
  void lay_out();
  [[nodiscard]] QRect line_rect(const QTextBlock &block) const;
  [[nodiscard]] bool has_fault(const QTextBlock &block) const;

  QWidget *margin_;
  FindBar *find_bar_ = nullptr;
  std::vector<Fault> faults_;
};

// Colours the words of Orvek in a document that `owner` shows.
QSyntaxHighlighter *colour_words(TextPane *owner);

} // namespace velora::qt
