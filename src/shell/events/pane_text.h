// A text pane without a screen: text with a selection, typing, the commands of the Edit menu and
// undo without end. The console's pane has a part that the program wrote, which cannot be changed
// by typing, and behind it what the user typed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/desk_texts.h"
#include "platform/input.h"

namespace velora {

class PaneText {
public:
  // `kept`: what the program writes stands fast, and typing goes behind it.
  explicit PaneText(bool kept = false) : kept_(kept) {}

  [[nodiscard]] const std::string &all() const { return text_; }
  [[nodiscard]] std::string typed() const { return text_.substr(mark_); }
  [[nodiscard]] TextRange selection() const { return selection_; }
  [[nodiscard]] EditState state() const;

  // What the program does. Writing leaves what was typed standing behind.
  void write(std::string_view text);
  void append(std::string_view text);
  void set_typed(std::string_view text);
  std::size_t drop_front(std::size_t keep);
  void prepend(std::string_view text);
  void select(TextRange range);

  // What the user does; true when the text changed.
  bool type(std::string_view text);
  bool key(const KeyEvent &event);
  bool edit(EditCommand command);

private:
  struct Step {
    std::string text;
    TextRange selection;
  };
  void remember() { steps_.push_back({text_, selection_}); }
  bool replace(TextRange range, std::string_view text);
  bool undo();
  void move_to(std::size_t place, bool extend);
  [[nodiscard]] std::size_t before(std::size_t place) const;
  [[nodiscard]] std::size_t after(std::size_t place) const;
  [[nodiscard]] std::size_t line_start(std::size_t place) const;
  [[nodiscard]] std::size_t line_end(std::size_t place) const;

  bool kept_;
  std::string text_;
  std::size_t mark_ = 0;
  TextRange selection_;
  std::vector<Step> steps_;
};

// The text that all panes cut, copy and paste.
extern std::string gPaneClipboard;

} // namespace velora
