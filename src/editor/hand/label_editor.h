// A line of text being edited in a picture: what was typed, the caret and what is selected. Knows
// nothing of pictures; positions are bytes at the borders of characters.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/input.h"

namespace velora {

class LabelEditor {
public:
  // Begins with a text that is wholly selected, so that typing replaces it.
  void begin(std::string_view text);
  // Begins with a text behind which the caret stands.
  void continue_with(std::string_view text);

  // Takes a key that edits or moves; false for any other.
  bool take(const KeyEvent &event);
  void insert(std::string_view typed);

  [[nodiscard]] const std::string &text() const { return text_; }
  [[nodiscard]] std::size_t caret() const { return caret_; }
  [[nodiscard]] std::size_t selection_start() const { return std::min(caret_, anchor_); }
  [[nodiscard]] std::size_t selection_end() const { return std::max(caret_, anchor_); }
  // The selected text; all of it when nothing is selected.
  [[nodiscard]] std::string selected() const;
  void set_caret(std::size_t place, bool extend);

private:
  void erase_selection();
  [[nodiscard]] std::size_t before(std::size_t place) const;
  [[nodiscard]] std::size_t behind(std::size_t place) const;

  std::string text_;
  std::size_t caret_ = 0;
  std::size_t anchor_ = 0; // the other end of the selection
};

} // namespace velora
