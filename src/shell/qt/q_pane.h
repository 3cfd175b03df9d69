// The text control of text windows: text in and out as the program counts it, breaks that are for
// showing only, matching brackets, a font that can be made larger. The console and the language
// window add to it.
#pragma once

#include <QPlainTextEdit>

#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop.h"

namespace velora::qt {

class Completion;

// The colours of texts on the background at hand, dark or light.
struct Shades {
  QColor message; // a message that beeped
  QColor prompt;
  QColor keyword;
  QColor number;
  QColor text; // a text in quotes
  QColor variable;
  QColor comment;
  QColor builtin;
  QColor bracket; // the ground under a matching pair
  QColor lone;    // the ground under a bracket without another
  QColor line;    // the ground of the line with the caret
  QColor margin;  // line numbers
  QColor margin_ground;
};
Shades shades_for(const QPalette &palette);

class TextPane : public QPlainTextEdit {
public:
  explicit TextPane(WindowId id);
  [[nodiscard]] WindowId id() const { return id_; }

  // The whole text, without breaks for showing.
  [[nodiscard]] std::string text() const;
  virtual void set_text(std::string_view text);
  // Adds a text that may hold soft breaks behind the program's own text; the stretches in
  // `standing_out` are messages.
  virtual void append(std::string_view text, const std::vector<TextRange> &standing_out);
  [[nodiscard]] virtual std::string typed() const { return {}; }
  virtual void set_typed(std::string_view) {}
  // Takes lines away from the front so that `keep` characters or more are left; how many went.
  std::size_t drop_front(std::size_t keep);
  // Puts a text in front of everything.
  void prepend(std::string_view text);
  // How many letters of a line are in sight.
  [[nodiscard]] std::size_t columns() const;

  [[nodiscard]] virtual EditState state() const;
  virtual void edit(EditCommand command);
  [[nodiscard]] TextRange selection() const;
  void select(TextRange range);

  // Makes the font `steps` points larger; 0 gives the usual size back.
  void zoom(int steps);
  // The name at a place of the text, or at the caret; empty for none.
  [[nodiscard]] QString name_at(int position) const;
  [[nodiscard]] QString name_at_caret() const { return name_at(textCursor().position()); }

protected:
  // Completes the name before the caret, or shows the names that fit.
  void complete_name();
  // The text has changed while names are shown.
  void follow_names();
  // Leaves the keys that choose a name to the list of names while it is shown; true when it did.
  bool leave_to_names(QKeyEvent *event) const;
  // Where the program's text ends; what stands behind it was typed.
  [[nodiscard]] virtual int program_end() const;
  // Puts a text with soft breaks at a place; answers where it ends.
  int insert_shown(int at, std::string_view text, const QTextCharFormat &format);
  // The text between two places, without breaks for showing.
  [[nodiscard]] QString unbroken(int from, int to) const;
  // Further marks of a pane, shown with the matching brackets.
  [[nodiscard]] virtual QList<QTextEdit::ExtraSelection> marks() const { return {}; }
  void show_marks();
  // The place of a byte of what text() answers.
  [[nodiscard]] int position_of_byte(std::size_t byte) const;
  // Moves everything that a pane knows by its place when text goes from the front.
  virtual void front_dropped(int) {}

  QMimeData *createMimeDataFromSelection() const override;
  void wheelEvent(QWheelEvent *event) override;
  bool event(QEvent *event) override;
  void contextMenuEvent(QContextMenuEvent *event) override;
  void focusInEvent(QFocusEvent *event) override;
  void dragEnterEvent(QDragEnterEvent *event) override;

  // The user has changed the text.
  virtual void user_changed();

  bool own_change_ = false; // the program changes the text, not the user

private:
  void bracket_marks(QList<QTextEdit::ExtraSelection> &marks) const;

  WindowId id_;
  int usual_size_ = 0;
  bool change_told_ = false;
  Completion *completion_ = nullptr; // made when it is first asked for
};

// Tells the program's own changes from the user's while in scope.
class OwnChange {
public:
  explicit OwnChange(bool &flag) : flag_(flag), before_(flag) { flag_ = true; }
  ~OwnChange() { flag_ = before_; }
  OwnChange(const OwnChange &) = delete;
  OwnChange &operator=(const OwnChange &) = delete;

private:
  bool &flag_;
  bool before_;
};

// Where the bracket stands that belongs to the one at `at` in `text`; -1 when there is none. Texts
// in quotes hold no brackets.
int matching_bracket(const QString &text, int at);

} // namespace velora::qt
