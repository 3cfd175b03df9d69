// Error reporting and recovery of the parsers: the messages, the notes that show where an error
// stands and the ones that say what may have been meant.
#include "front/putils.h"

#include <algorithm>
#include <cctype>

#include "core/events.h"
#include "core/symbols.h"
#include "front/cint.h"
#include "front/notes.h"
#include "front/parse.h"
#include "front/source.h"
#include "platform/char_width.h"
#include "platform/response.h"
#include "platform/trust.h"
#include "platform/utf8.h"

namespace velora {

int gParseErrors = 0;

namespace {

// The longest piece of a source line that a note quotes.
constexpr std::size_t kExcerpt = 72;
constexpr std::string_view kMargin = "    | ";

// The place that the last note showed, so that two reports about one token show it once.
struct Place {
  std::string source;
  long line = -1;
  std::size_t column = 0;
  bool operator==(const Place &) const = default;
};
Place noted;

// Characters of the current line before byte `at`; goes on from where the last place of the line
// was.
std::size_t characters_before(std::size_t at) {
  static Place counted;
  static std::size_t count = 0;
  Place now{pp_source_name(), pp_line_number(), at};
  const bool goes_on = now.source == counted.source && now.line == counted.line &&
                       counted.column <= at && at <= pp_line_length();
  const std::size_t from = goes_on ? counted.column : 0;
  count = (goes_on ? count : 0) + count_characters(pp_line_part(from, at));
  counted = std::move(now);
  return count;
}

// Names the place of byte `at` of the current line, before which `before` characters stand, and
// marks it in `part`, which is the line from byte `from` on as far as it may be quoted.
void show_place(const std::string &part, std::size_t from, std::size_t at, std::size_t before) {
  if (pp_source_name().empty())
    show_note("note: here");
  else
    show_note("note: " + pp_place(pp_line_number(), before + 1));
  show_excerpt(part, at - from);
}

// The same for a line whose tokens are cut out of it. Of a long line only what may be quoted is
// looked at.
void show_place_of_token(std::size_t at) {
  const std::size_t from = at > 2 * kExcerpt ? at - 2 * kExcerpt : 0;
  std::string part = pp_line_part(from, at + 2 * kExcerpt);
  // The end that a typed statement is given is not the user's.
  if (pp_source_name().empty() && at + 2 * kExcerpt >= pp_line_length() && part.ends_with(";;"))
    part.pop_back();
  show_place(part, from, at, pp_source_name().empty() ? 0 : characters_before(at));
}

// Shows where the current token stands, once for each token.
void note_place() {
  if (gNotes == 0)
    return;
  std::size_t length = pp_line_length();
  if (pp_source_name().empty() &&
      pp_line_part(length - std::min<std::size_t>(length, 2), length) == ";;")
    --length; // the end that a typed statement is given
  const std::size_t at =
      std::min(static_cast<std::size_t>(pp_start - pp_line_buffer.data()), length);
  const Place place{pp_source_name(), pp_line_number(), at};
  if (place == noted)
    return;
  noted = place;
  show_place_of_token(at);
}

// A name as messages repeat it: no longer than a name may be.
std::string echoed(std::string name) {
  constexpr std::size_t kLongest = 255;
  if (name.size() <= kLongest)
    return name;
  std::size_t to = kLongest;
  while (to > 0 && continues_character(name[to]))
    --to;
  return name.substr(0, to) + "...";
}

// While one is in scope a faulty statement is skipped.
struct Skipping {
  Skipping() { gReading.skipping = 1; }
  ~Skipping() { gReading.skipping = 0; }
};

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// The literal that a bare number should have been, or "".
std::string number_as_literal(const std::string &text) {
  const std::size_t sign = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  std::size_t points = 0;
  std::size_t digits = 0;
  for (std::size_t i = sign; i < text.size(); ++i) {
    digits += is_digit(text[i]) ? 1 : 0;
    points += text[i] == '.' ? 1 : 0;
    if (!is_digit(text[i]) && text[i] != '.')
      return "";
  }
  if (digits == 0 || points > 1)
    return "";
  return (points == 0 ? "#" : "#r") + text;
}

// The name that follows the current token on its line, or "".
std::string following_name() {
  if (pp_last_char != ' ')
    return "";
  const char *p = pp_pos + 1;
  while (*p == ' ')
    ++p;
  const char *end = p;
  while (*end != '\0' && std::string_view(" \n()[];'\"").find(*end) == std::string_view::npos)
    ++end;
  return {p, end};
}

// True for the name of a function that is written with signs alone.
bool is_operator(const std::string &name) {
  if (name.empty() || name.size() > 3)
    return false;
  if (std::any_of(name.begin(), name.end(),
                  [](unsigned char c) { return c >= 128 || std::isalnum(c); }))
    return false;
  const symbol *s = find_symbol(name.c_str(), name.size());
  return s != nullptr && (s->stype & kFunctionBit) != 0;
}

} // namespace

const char *command_meant(const std::string &word) {
  if (word == "help" || word == "?")
    return ":help";
  return word == "quit" || word == "exit" || word == "bye" ? ":quit" : nullptr;
}

namespace {

// True when `found` answers true for one of the characters behind the current token, up to the
// semicolon or the end of the line. The first of them has given its place to the NUL that ends the
// token.
template <typename Found> bool follows(Found found) {
  for (const char *p = pp_pos; p == pp_pos || *p != '\0'; ++p) {
    const char c = p == pp_pos ? pp_last_char : *p;
    if (c == ';' || c == '\n' || c == '\0')
      return false;
    if (found(c))
      return true;
  }
  return false;
}

} // namespace

bool definition_follows() {
  int met = 0; // of the sign's three characters
  return pp_token == kTokDefine || follows([&met](char c) {
           met = c == ':' ? std::min(met + 1, 2) : met == 2 && c == '=' ? 3 : 0;
           return met == 3;
         });
}

bool variable_follows() {
  return follows([](char c) { return c == '?'; });
}

namespace {

void note_near_names(const std::string &name) {
  std::string list;
  for (const std::string &near : nearest_names(name, 3))
    list += (list.empty() ? "" : ", ") + near;
  if (!list.empty())
    show_note("note: near it: " + list);
}

} // namespace

void show_excerpt(const std::string &line, std::size_t at) {
  std::size_t from = 0;
  std::size_t to = line.size();
  if (line.size() > kExcerpt) {
    from = at > kExcerpt / 2 ? at - kExcerpt / 2 : 0;
    to = std::min(line.size(), from + kExcerpt);
    while (from > 0 && continues_character(line[from]))
      --from;
    while (to < line.size() && continues_character(line[to]))
      ++to;
  }
  std::string quoted = from > 0 ? "..." : "";
  std::string mark(quoted.size(), ' ');
  for (std::size_t i = from; i < to; ++i) {
    const bool control = static_cast<unsigned char>(line[i]) < ' ' && line[i] != '\t';
    quoted += control ? ' ' : line[i];
    if (i < at && line[i] == '\t')
      mark += '\t';
    else if (i < at && !continues_character(line[i]))
      mark.append(static_cast<std::size_t>(columns_of_character(
                      std::string_view(line).substr(i, first_character(line.substr(i, 4))))),
                  ' ');
  }
  if (to < line.size())
    quoted += "...";
  show_note(std::string(kMargin) + quoted);
  show_note(std::string(kMargin) + mark + "^");
}

int report_error(const char *fun, const char *token_required) {
  ++gParseErrors;
  BeepMsgef(1, "Error (%s):  %s found when { %s } expected\n", echoed(fun).c_str(),
            echoed(pp_start).c_str(), token_required);
  note_place();
  return 0;
}

int parse_error(const char *message) {
  ++gParseErrors;
  orvek_errorf("Error: %s", message);
  note_place();
  return 0;
}

int refuse(const std::string &message) {
  ++gParseErrors;
  orvek_error(message);
  note_place();
  return 0;
}

void report_undefined(bool infix) {
  ++gParseErrors;
  // Of a typed query the brackets are looked at first.
  if (const char *fault = query_fault(pp_recorded_statement()); fault != nullptr) {
    gRetypeQuery = 1;
    orvek_error(fault);
    return;
  }
  const std::string name = pp_start;
  BeepMsge("please define unrecognised symbol: " + echoed(name) + "\n", 1);
  if (gNotes == 0)
    return;
  note_place();
  if (const char *command = command_meant(name); command != nullptr)
    return advise(Note::bare_word, {command});
  const std::string literal = number_as_literal(name);
  if (!literal.empty())
    show_note("note: " + std::string(literal.starts_with("#r") ? "reals" : "integers") +
              " are written " + literal);
  if (infix || is_operator(following_name()))
    show_note("note: a function stands before its arguments, as in (+ #1 #2)");
  else if (literal.empty())
    note_near_names(name);
}

void note_open_text() {
  if (gNotes == 0)
    return;
  // The tokenizer has cut nothing out of the line at this moment.
  const std::string line(pp_line_buffer.begin(), pp_line_buffer.end() - 2);
  advise(Note::open_text);
  const auto at = static_cast<std::size_t>(pp_start - pp_line_buffer.data());
  show_place(line, 0, at, count_characters(std::string_view(line).substr(0, at)));
}

BracketPlace bracket_place() {
  if (pp_file == nullptr)
    return {};
  // The next line of the file begins behind the end of this one.
  return {pp_line_number(), static_cast<std::size_t>(pp_start - pp_line_buffer.data()),
          gReading.file_pos - 1};
}

void note_open_bracket(const BracketPlace &place, bool square) {
  if (gNotes == 0 || pp_file == nullptr || place.line == 0 || DatabaseReading::depth != 0)
    return;
  advise(Note::bracket_open, {square ? "[" : "(", square ? "]" : ")"});
  // The tokenizer is on a later line perhaps, so the line is taken from the file.
  const std::string &file = *pp_file;
  const std::size_t end = std::min(place.line_end, file.size());
  const std::size_t before = end == 0 ? std::string::npos : file.rfind('\n', end - 1);
  std::string line = file.substr(before + 1, end - before - 1);
  if (line.starts_with(kByteOrderMark) && place.line == 1)
    line.erase(0, kByteOrderMark.size());
  if (line.ends_with('\r'))
    line.pop_back();
  const std::size_t column = std::min(place.column, line.size());
  show_note("note: " +
            pp_place(place.line, count_characters(std::string_view(line).substr(0, column)) + 1));
  show_excerpt(line, column);
}

void fail_silently() {
  ++gParseErrors;
  show_note("note: this cannot stand here in an expression");
  note_place();
}

void note_unknown_name(const std::string &name) {
  show_note("note: no symbol is called " + name);
  note_near_names(name);
}

int process_error() {
  const Skipping skipping;
  while (pp_token != kTokEnd) {
    CheckForUserEvents(84);
    pp_get_token();
  }
  return 1;
}

void pprintf(const char *text) {
  if (reading_console())
    pp_set_prompt(*text == '\n' ? text + 1 : text);
  else if (pp_file == nullptr)
    orvek_print(text);
}

int p_end() {
  return pp_token == kTokEnd ? 1 : report_error("", "semicolon");
}

void forget_noted_place() {
  noted = Place{};
}

} // namespace velora
