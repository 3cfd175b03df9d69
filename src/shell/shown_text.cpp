// Collecting of text for a window. Places are bytes; limits are characters, since that is what a
// window counts.
#include "shell/shown_text.h"

#include <algorithm>

#include "platform/utf8.h"

namespace velora {

namespace {

// The place where the last `characters` characters of `text` begin, moved on to a line's start
// when one is near.
std::size_t tail_start(std::string_view text, std::size_t characters) {
  std::size_t at = text.size();
  while (at > 0 && characters > 0)
    if (!continues_character(text[--at]))
      --characters;
  const std::size_t line = text.substr(at, 10'000).find('\n');
  return at == 0 || line == std::string_view::npos ? at : at + line + 1;
}

} // namespace

void ShownText::append(std::string_view text, bool stands_out) {
  if (text.empty())
    return;
  if (stands_out && ends_standing_out_ && !standing_out_.empty())
    standing_out_.back().end += text.size();
  else if (stands_out)
    standing_out_.push_back({waiting_.size(), waiting_.size() + text.size()});
  waiting_ += text;
  line_start_ = text.back() == '\n';
  ends_standing_out_ = stands_out;
}

void ShownText::flush(WindowId win) {
  if (waiting_.empty())
    return;
  const std::size_t from = make_way(win);
  const Piece piece = for_window(win, from);
  waiting_.clear();
  standing_out_.clear();
  shown_ += count_characters(piece.text);
  gDesktop->append_text(win, piece.text, piece.standing_out);
  if (shown_ <= most_)
    return;
  const std::size_t dropped = gDesktop->drop_front(win, kept_);
  shown_ -= std::min(shown_, dropped);
  if (dropped == 0)
    return;
  gDesktop->prepend_text(win, cut_);
  shown_ += count_characters(cut_);
}

// A piece that is more than the window shall hold takes the place of all that stood there. Answers
// where the part of it begins that is shown.
std::size_t ShownText::make_way(WindowId win) {
  if (waiting_.size() <= most_ || count_characters(waiting_) <= most_)
    return 0;
  gDesktop->set_text(win, cut_);
  shown_ = count_characters(cut_);
  column_ = 0;
  return tail_start(waiting_, kept_);
}

void ShownText::clear(WindowId win) {
  forget();
  gDesktop->set_text(win, "");
}

void ShownText::forget() {
  waiting_.clear();
  standing_out_.clear();
  shown_ = column_ = 0;
  line_start_ = true;
  ends_standing_out_ = false;
}

ShownText::Piece ShownText::for_window(WindowId win, std::size_t from) {
  const std::string_view text = waiting_;
  const std::size_t limit = longest_shown_line(text.size() - from, gDesktop->columns(win));
  Piece piece;
  piece.text.reserve((text.size() - from) * (limit + 2) / limit);
  std::size_t at = from;
  for (const TextRange &range : standing_out_) {
    if (range.end <= from)
      continue;
    const std::size_t start = std::max(range.start, from);
    add_broken(piece.text, text.substr(at, start - at), limit);
    const std::size_t shown_start = piece.text.size();
    add_broken(piece.text, text.substr(start, range.end - start), limit);
    piece.standing_out.push_back({shown_start, piece.text.size()});
    at = range.end;
  }
  add_broken(piece.text, text.substr(at), limit);
  return piece;
}

// Breaks lines that are longer than a text control bears. A carriage return of the text itself is
// not shown, since it would be taken for such a break.
void ShownText::add_broken(std::string &shown, std::string_view text, std::size_t limit) {
  LineBreaker line{limit, column_};
  for (const char c : text) {
    if (c == kSoftBreak)
      continue;
    if (line.breaks_before(c, !continues_character(c)))
      shown += kSoftBreak;
    shown += c;
    if (line.breaks_behind(c))
      shown += kSoftBreak;
  }
  column_ = line.column;
}

} // namespace velora
