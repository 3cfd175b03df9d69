// Reading of event scripts. Every function takes what it understands and says so; nothing is acted
// on here.
#include "shell/events/event_line.h"

#include <cctype>
#include <charconv>
#include <utility>

namespace velora {

namespace {

bool is_blank(char c) {
  return c == ' ' || c == '\t';
}

// The whole of `text` as a number, with a sign or without.
std::optional<int> whole_number(std::string_view text) {
  if (text.starts_with('+'))
    text.remove_prefix(1);
  int number = 0;
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || text.empty())
    return std::nullopt;
  return number;
}

bool take_prefix(std::string_view &text, std::string_view prefix) {
  if (!text.starts_with(prefix))
    return false;
  text.remove_prefix(prefix.size());
  return true;
}

// "+12-3" or nothing.
bool read_offset(std::string_view text, Point &offset) {
  if (text.empty())
    return true;
  const std::size_t second = text.find_first_of("+-", 1);
  if ((text.front() != '+' && text.front() != '-') || second == std::string_view::npos)
    return false;
  const auto x = whole_number(text.substr(0, second));
  const auto y = whole_number(text.substr(second));
  if (!x || !y)
    return false;
  offset = {*x, *y};
  return true;
}

bool read_part(std::string_view &text, EventPoint::Part &part) {
  using Part = EventPoint::Part;
  constexpr std::pair<std::string_view, Part> kParts[] = {
      {".top", Part::top},     {".bottom", Part::bottom}, {".left", Part::left},
      {".right", Part::right}, {".start", Part::start},   {".end", Part::end}};
  for (const auto &[name, meant] : kParts)
    if (take_prefix(text, name))
      return part = meant, true;
  return !text.starts_with('.');
}

// "@3.top+1-2" or "\"LABEL\".top+1-2".
std::optional<EventPoint> segment_point(std::string_view text) {
  EventPoint point;
  point.by_place = false;
  if (take_prefix(text, "@")) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    point.slot = whole_number(text.substr(0, end)).value_or(0);
    text.remove_prefix(end);
    if (point.slot <= 0)
      return std::nullopt;
  } else {
    const std::size_t close = text.rfind('"');
    if (close == 0 || close == std::string_view::npos)
      return std::nullopt;
    point.label = text.substr(1, close - 1);
    text.remove_prefix(close + 1);
  }
  if (!read_part(text, point.part) || !read_offset(text, point.at))
    return std::nullopt;
  return point;
}

std::string lower_case(std::string_view text) {
  std::string lower(text);
  for (char &c : lower)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

std::optional<Key> named_key(const std::string &name) {
  constexpr std::pair<std::string_view, Key> kNames[] = {
      {"enter", Key::enter},    {"esc", Key::escape},        {"tab", Key::tab},
      {"space", Key::space},    {"delete", Key::del},        {"backspace", Key::backspace},
      {"left", Key::left},      {"right", Key::right},       {"up", Key::up},
      {"down", Key::down},      {"home", Key::home},         {"end", Key::end},
      {"pageup", Key::page_up}, {"pagedown", Key::page_down}};
  for (const auto &[known, key] : kNames)
    if (known == name)
      return key;
  return std::nullopt;
}

// What a letter or digit types, or which one is held with Ctrl or Alt.
void set_letter(KeyEvent &event, char c) {
  const auto letter = static_cast<unsigned char>(c);
  const bool typed = !event.held.control && !event.held.alt;
  event.key = typed ? Key::text : Key::letter;
  const bool upper = !typed || event.held.shift;
  event.text = static_cast<char>(upper ? std::toupper(letter) : std::tolower(letter));
}

} // namespace

std::optional<EventLine> read_event_line(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  if (first == std::string_view::npos || line[first] == '#')
    return std::nullopt;
  line.remove_prefix(first);
  const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
  EventLine read{std::string(line.substr(0, end)), {}};
  if (end < line.size())
    read.rest = line.substr(end + 1);
  return read;
}

std::vector<std::string> event_words(std::string_view text) {
  std::vector<std::string> words;
  for (std::size_t at = 0; at < text.size();) {
    if (is_blank(text[at])) {
      ++at;
      continue;
    }
    const std::size_t start = at;
    bool quoted = false;
    for (; at < text.size() && (quoted || !is_blank(text[at])); ++at)
      quoted = quoted != (text[at] == '"');
    words.emplace_back(text.substr(start, at - start));
  }
  return words;
}

std::optional<int> take_number(std::vector<std::string> &words) {
  if (words.empty())
    return std::nullopt;
  const auto number = whole_number(words.front());
  if (number)
    words.erase(words.begin());
  return number;
}

std::optional<EventPoint> take_point(std::vector<std::string> &words) {
  if (words.empty())
    return std::nullopt;
  if (words.front().starts_with('@') || words.front().starts_with('"')) {
    const auto point = segment_point(words.front());
    words.erase(words.begin());
    return point;
  }
  EventPoint point;
  const auto x = take_number(words);
  const auto y = x ? take_number(words) : std::nullopt;
  if (!y)
    return std::nullopt;
  point.at = {*x, *y};
  return point;
}

bool read_hold(const std::vector<std::string> &words, EventHold &hold) {
  for (const std::string &word : words) {
    if (word == "shift")
      hold.held.shift = true;
    else if (word == "ctrl")
      hold.held.control = true;
    else if (word == "alt")
      hold.held.alt = true;
    else if (word == "right")
      hold.button = MouseButton::right;
    else if (word == "middle")
      hold.button = MouseButton::middle;
    else if (word == "double")
      hold.twice = true;
    else
      return false;
  }
  return true;
}

std::optional<KeyEvent> read_key(std::string_view name) {
  KeyEvent event;
  std::string rest = lower_case(name);
  std::string_view left = rest;
  for (bool more = true; more;) {
    const bool control = take_prefix(left, "ctrl+");
    const bool shift = take_prefix(left, "shift+");
    const bool alt = take_prefix(left, "alt+");
    event.held.control |= control;
    event.held.shift |= shift;
    event.held.alt |= alt;
    more = control || shift || alt;
  }
  if (const auto key = named_key(std::string(left))) {
    event.key = *key;
    return event;
  }
  if (left.size() > 1 && left.front() == 'f') {
    const auto number = whole_number(left.substr(1));
    if (!number || *number < 1 || *number > 12)
      return std::nullopt;
    event.key = Key::function;
    event.number = *number;
    return event;
  }
  if (left.size() != 1 || std::isalnum(static_cast<unsigned char>(left.front())) == 0)
    return std::nullopt;
  set_letter(event, left.front());
  return event;
}

} // namespace velora
