// Editing of a text pane without a screen. Places are bytes and always stand between characters.
#include "shell/events/pane_text.h"

#include <algorithm>

#include "platform/utf8.h"

namespace velora {

std::string gPaneClipboard;

EditState PaneText::state() const {
  return {!steps_.empty(), !gPaneClipboard.empty(), selection_.start != selection_.end};
}

// What was undone in a text that the program has put there since would bring the old one back.
void PaneText::write(std::string_view text) {
  const std::string rest = kept_ ? typed() : std::string();
  text_ = text;
  mark_ = kept_ ? text_.size() : 0;
  text_ += rest;
  selection_ = {text_.size(), text_.size()};
  steps_.clear();
}

void PaneText::append(std::string_view text) {
  const std::size_t at = kept_ ? mark_ : text_.size();
  text_.insert(at, text);
  if (kept_)
    mark_ += text.size();
  selection_ = {text_.size(), text_.size()};
  steps_.clear();
}

void PaneText::set_typed(std::string_view text) {
  text_.replace(mark_, std::string::npos, text);
  selection_ = {text_.size(), text_.size()};
}

std::size_t PaneText::drop_front(std::size_t keep) {
  const std::size_t size = kept_ ? mark_ : text_.size();
  std::size_t at = size;
  for (std::size_t left = keep; at > 0 && left > 0;)
    if (!continues_character(text_[--at]))
      --left;
  const std::size_t line = at == 0 ? std::string::npos : text_.rfind('\n', at - 1);
  const std::size_t dropped = line == std::string::npos ? 0 : line + 1;
  const std::size_t characters = count_characters(std::string_view(text_).substr(0, dropped));
  text_.erase(0, dropped);
  mark_ -= std::min(mark_, dropped);
  selection_ = {text_.size(), text_.size()};
  steps_.clear();
  return characters;
}

void PaneText::prepend(std::string_view text) {
  text_.insert(0, text);
  mark_ += text.size();
  selection_ = {text_.size(), text_.size()};
  steps_.clear();
}

void PaneText::select(TextRange range) {
  selection_ = {std::min(range.start, text_.size()), std::min(range.end, text_.size())};
}

bool PaneText::replace(TextRange range, std::string_view text) {
  if (range.start < mark_ || (range.start == range.end && text.empty()))
    return false;
  remember();
  text_.replace(range.start, range.end - range.start, text);
  selection_ = {range.start + text.size(), range.start + text.size()};
  return true;
}

// Typing where nothing can be typed goes to the end, as in a console.
bool PaneText::type(std::string_view text) {
  if (selection_.start < mark_)
    selection_ = {text_.size(), text_.size()};
  return replace(selection_, text);
}

bool PaneText::undo() {
  if (steps_.empty())
    return false;
  text_ = steps_.back().text;
  selection_ = steps_.back().selection;
  steps_.pop_back();
  return true;
}

bool PaneText::edit(EditCommand command) {
  const std::string chosen = text_.substr(selection_.start, selection_.end - selection_.start);
  switch (command) {
  case EditCommand::undo:
    return undo();
  case EditCommand::copy:
  case EditCommand::cut:
    if (!chosen.empty())
      gPaneClipboard = chosen;
    return command == EditCommand::cut && replace(selection_, "");
  case EditCommand::paste:
    return type(gPaneClipboard);
  case EditCommand::clear:
    return replace(selection_, "");
  }
  return false;
}

std::size_t PaneText::before(std::size_t place) const {
  while (place > 0 && continues_character(text_[--place])) {
  }
  return place;
}

std::size_t PaneText::after(std::size_t place) const {
  if (place < text_.size())
    ++place;
  while (place < text_.size() && continues_character(text_[place]))
    ++place;
  return place;
}

std::size_t PaneText::line_start(std::size_t place) const {
  const std::size_t found = place == 0 ? std::string::npos : text_.rfind('\n', place - 1);
  return found == std::string::npos ? 0 : found + 1;
}

std::size_t PaneText::line_end(std::size_t place) const {
  return std::min(text_.find('\n', place), text_.size());
}

void PaneText::move_to(std::size_t place, bool extend) {
  selection_ =
      extend ? TextRange{std::min(place, selection_.start), place} : TextRange{place, place};
  if (selection_.end < selection_.start)
    std::swap(selection_.start, selection_.end);
}

bool PaneText::key(const KeyEvent &event) {
  const bool empty = selection_.start == selection_.end;
  const std::size_t at = selection_.end;
  switch (event.key) {
  case Key::text:
    return type(event.text);
  case Key::space:
    return type(" ");
  case Key::tab:
    return type("\t");
  case Key::enter:
    return type("\n");
  case Key::backspace:
    return replace(empty ? TextRange{before(at), at} : selection_, "");
  case Key::del:
    return replace(empty ? TextRange{at, after(at)} : selection_, "");
  case Key::left:
    return move_to(before(at), event.held.shift), false;
  case Key::right:
    return move_to(after(at), event.held.shift), false;
  case Key::home:
    return move_to(event.held.control ? 0 : line_start(at), event.held.shift), false;
  case Key::end:
    return move_to(event.held.control ? text_.size() : line_end(at), event.held.shift), false;
  default:
    return false;
  }
}

} // namespace velora
