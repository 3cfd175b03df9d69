// The pane of the CONTROL window. Its text has two parts: before the mark stands what the program
// wrote, which no key, paste or deletion changes; behind it what the user typed, which stays when
// the program writes.
#pragma once

#include <vector>

#include "shell/qt/q_pane.h"

namespace velora::qt {

class ConsolePane : public TextPane {
public:
  explicit ConsolePane(WindowId id);

  void set_text(std::string_view text) override;
  void append(std::string_view text, const std::vector<TextRange> &standing_out) override;
  [[nodiscard]] std::string typed() const override;
  void set_typed(std::string_view text) override;
  [[nodiscard]] EditState state() const override;
  void edit(EditCommand command) override;

protected:
  [[nodiscard]] int program_end() const override { return mark_; }
  void front_dropped(int dropped) override { mark_ -= dropped; }
  void user_changed() override;
  void keyPressEvent(QKeyEvent *event) override;
  void inputMethodEvent(QInputMethodEvent *event) override;
  void mousePressEvent(QMouseEvent *event) override;
  void mouseMoveEvent(QMouseEvent *event) override;
  void mouseReleaseEvent(QMouseEvent *event) override;
  void insertFromMimeData(const QMimeData *source) override;
  void dropEvent(QDropEvent *event) override;

private:
  // What was typed and where the caret stood in it, for taking changes back.
  struct Typed {
    std::string text;
    int caret = 0;
  };

  void key_pressed(QKeyEvent *event);
  bool control_key(QKeyEvent *event);
  bool moving_key(QKeyEvent *event);
  bool deleting_key(QKeyEvent *event);
  void enter_key();
  void complete_typed();
  void caret_to_end();
  void leave_old_text();
  bool keep_old_text(bool before_caret);
  [[nodiscard]] QString whole_line(int position) const;
  [[nodiscard]] int caret_in_typed() const { return textCursor().position() - mark_; }
  void remember_typed();
  void undo_typed();
  void show_typed(const Typed &typed);
  [[nodiscard]] std::vector<std::string> message_at(const QPoint &at) const;

  int mark_ = 0;
  std::vector<Typed> undo_;
  Typed shown_; // as it was after the last change
  bool restoring_ = false;
};

} // namespace velora::qt
