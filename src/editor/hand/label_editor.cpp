// Editing one line: caret, selection, the keys that every text field knows.
#include "editor/hand/label_editor.h"

#include <algorithm>

#include "platform/desktop.h"
#include "platform/utf8.h"

namespace velora {

void LabelEditor::begin(std::string_view text) {
  text_ = text;
  anchor_ = 0;
  caret_ = text_.size();
}

void LabelEditor::continue_with(std::string_view text) {
  text_ = text;
  anchor_ = caret_ = text_.size();
}

std::string LabelEditor::selected() const {
  const std::size_t start = selection_start();
  return start == selection_end() ? text_ : text_.substr(start, selection_end() - start);
}

void LabelEditor::set_caret(std::size_t place, bool extend) {
  caret_ = std::min(place, text_.size());
  while (caret_ > 0 && caret_ < text_.size() && continues_character(text_[caret_]))
    --caret_;
  if (!extend)
    anchor_ = caret_;
}

void LabelEditor::erase_selection() {
  const std::size_t start = selection_start();
  text_.erase(start, selection_end() - start);
  caret_ = anchor_ = start;
}

// A line holds no control characters, whatever was pasted.
void LabelEditor::insert(std::string_view typed) {
  erase_selection();
  std::string plain(typed);
  for (char &c : plain)
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F)
      c = ' ';
  text_.insert(caret_, plain);
  caret_ = anchor_ = caret_ + plain.size();
}

std::size_t LabelEditor::before(std::size_t place) const {
  if (place == 0)
    return 0;
  do
    --place;
  while (place > 0 && continues_character(text_[place]));
  return place;
}

std::size_t LabelEditor::behind(std::size_t place) const {
  return place >= text_.size() ? text_.size()
                               : place + first_character(std::string_view(text_).substr(place));
}

bool LabelEditor::take(const KeyEvent &event) {
  const bool extend = event.held.shift;
  const bool selected_any = caret_ != anchor_;
  switch (event.key) {
  case Key::text:
    if (event.held.control || event.text.empty())
      return false;
    insert(event.text);
    return true;
  case Key::space:
    insert(" ");
    return true;
  case Key::left:
    set_caret(selected_any && !extend ? selection_start() : before(caret_), extend);
    return true;
  case Key::right:
    set_caret(selected_any && !extend ? selection_end() : behind(caret_), extend);
    return true;
  case Key::home:
    set_caret(0, extend);
    return true;
  case Key::end:
    set_caret(text_.size(), extend);
    return true;
  case Key::backspace:
    if (!selected_any)
      anchor_ = before(caret_);
    erase_selection();
    return true;
  case Key::del:
    if (!selected_any)
      anchor_ = behind(caret_);
    erase_selection();
    return true;
  case Key::letter:
    if (!event.held.control || event.held.alt)
      return false;
    if (event.text == "A")
      begin(std::string(text_));
    else if (event.text == "C" || event.text == "X")
      gDesktop->set_clipboard_text(selected());
    else if (event.text == "V")
      insert(gDesktop->clipboard_text());
    else
      return false;
    if (event.text == "X") {
      if (!selected_any)
        begin(std::string(text_));
      erase_selection();
    }
    return true;
  default:
    return false;
  }
}

} // namespace velora
