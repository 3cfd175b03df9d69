// The tokenizer. It owns the state of the current token; lines come from source.cpp. Called by the
// parsers of this level and by the builder of pictures.
#include "front/parse.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>

#include "front/notes.h"
#include "front/putils.h"
#include "front/source.h"
#include "platform/response.h"

namespace velora {

Tokenizer gReading;

namespace {

enum CharClass : unsigned char { kEndsName = 1, kEndsInteger = 2, kEndsReal = 4 };

constexpr std::array<unsigned char, 256> make_classes() {
  std::array<unsigned char, 256> table{};
  constexpr std::string_view name = "-:; \n()[]'\"";
  constexpr std::string_view integer = "-)]:; \n";
  constexpr std::string_view real = ")]:; \n";
  for (const char c : name)
    table[static_cast<unsigned char>(c)] |= kEndsName;
  for (const char c : integer)
    table[static_cast<unsigned char>(c)] |= kEndsInteger;
  for (const char c : real)
    table[static_cast<unsigned char>(c)] |= kEndsReal;
  table[0] = kEndsName | kEndsInteger | kEndsReal;
  return table;
}
constexpr auto classes = make_classes();

char *skip_to(char *p, CharClass end) {
  while ((classes[static_cast<unsigned char>(*p)] & end) == 0)
    ++p;
  return p;
}

bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

struct Keyword {
  std::string_view word;
  Token token;
};
constexpr Keyword keywords[] = {
    {"int", kTokInt},       {"char", kTokChar},     {"real", kTokReal},   {"str", kTokStr},
    {"sym", kTokSym},       {"fdec", kTokFdec},     {"cdec", kTokCdec},   {"fdef", kTokFdef},
    {"tdec", kTokTdec},     {"enum", kTokEnum},     {"lload", kTokLload}, {"lambda", kTokLambda},
    {"typeop", kTokTypeop}, {"nonlex", kTokNonlex},
};

Token keyword_or_name(std::string_view text) {
  if (text.size() < 3 || text.size() > 6)
    return kTokName;
  for (const Keyword &k : keywords)
    if (k.word == text)
      return k.token;
  return kTokName;
}

// The first character is always taken, whatever it is. `counted_from` is where the recorded
// length starts.
void take_name(char *counted_from) {
  pp_pos = skip_to(pp_pos + 1, kEndsName);
  pp_len = static_cast<int>(pp_pos - counted_from);
  pp_str_val = pp_start;
  pp_str_len = pp_len;
  pp_token = keyword_or_name({pp_start, static_cast<std::size_t>(pp_len)});
}

// Reads a decimal integer with leading space and a sign and moves `p` behind it; false when there
// is none. A number beyond 32 bits becomes the nearest one that fits, with a note.
bool read_int(const char *&p, int &value) {
  while (is_space(*p))
    ++p;
  const bool negative = *p == '-';
  if (*p == '-' || *p == '+')
    ++p;
  if (!is_digit(*p))
    return false;
  constexpr long long most = std::numeric_limits<int>::max();
  long long sum = 0;
  for (; is_digit(*p); ++p)
    if (sum <= most)
      sum = sum * 10 + (*p - '0');
  const long long limit = negative ? most + 1 : most;
  if (sum > limit) {
    sum = limit;
    note_integer_bounds(format_text("%s%lld", negative ? "-" : "", sum));
  }
  value = static_cast<int>(negative ? -sum : sum);
  return true;
}

// Reads a decimal real with leading space and a sign and moves `p` behind it; false when there is
// none.
bool read_real(const char *&p, float &value) {
  while (is_space(*p))
    ++p;
  if (*p == '+' && p[1] != '-')
    ++p;
  const char *end = p;
  while (*end != '\0' && (is_digit(*end) || std::strchr("+-.eE", *end) != nullptr))
    ++end;
  const std::from_chars_result r = std::from_chars(p, end, value);
  if (r.ec == std::errc::result_out_of_range)
    value = std::strtof(std::string(p, r.ptr).c_str(), nullptr);
  p = r.ptr;
  return r.ec != std::errc::invalid_argument;
}

// What a person wrote, in a file or at the console; statements that the system itself feeds have
// nobody to be told.
bool written_by_a_person() {
  return gReading.skipping == 0 && (pp_file != nullptr || reading_console());
}

// Tells what a literal swallowed that is no part of its number: the number ends at `end`, the
// literal at pp_pos.
void note_swallowed(const char *end) {
  if (end >= pp_pos || !written_by_a_person())
    return;
  const std::string number(static_cast<const char *>(pp_start), end);
  const std::string swallowed(end, static_cast<const char *>(pp_pos));
  const std::string whole = number + swallowed;
  const std::size_t more = swallowed.find_first_not_of("0123456789", 1);
  if (swallowed.find('\t') != std::string::npos)
    advise(Note::tab_swallowed, {number + "<tab>...", number});
  else if (*pp_start == '#' && swallowed[0] == '.' && swallowed.size() > 1 &&
           more == std::string::npos)
    advise(Note::point_in_integer, {whole, number, whole.substr(1)});
  else
    advise(Note::swallowed, {whole, number});
}

// Finishes an integer literal or variable: two characters, then up to the end of the number, which
// itself ends at `end`.
void take_number(Token token, const char *end) {
  pp_pos = skip_to(pp_pos + 2, kEndsInteger);
  pp_len = static_cast<int>(pp_pos - pp_start);
  pp_token = token;
  note_swallowed(end);
}

void take_literal() {
  if (pp_pos[1] != 'r') {
    const char *end = pp_pos + 1;
    if (read_int(end, pp_int_val))
      take_number(kTokInteger, end);
    return;
  }
  const char *end = pp_pos + 2;
  if (read_real(end, pp_real_val)) {
    pp_pos = skip_to(pp_pos + 2, kEndsReal);
    pp_len = static_cast<int>(pp_pos - pp_start);
    pp_token = kTokRealLit;
    note_swallowed(end);
    return;
  }
  // Kept: the recorded length of such a name is one short of its text.
  ++pp_pos;
  take_name(pp_pos);
}

// Text between double quotes on one line. Kept: without the closing quote the last character goes.
void take_string() {
  char *end = pp_pos + 1;
  while (*end != '"' && *end != '\n' && *end != '\0')
    ++end;
  const bool closed = *end == '"';
  pp_pos = closed ? end + 1 : end;
  pp_len = static_cast<int>(pp_pos - pp_start);
  pp_str_val = pp_start + 1;
  pp_str_len = pp_len > 2 ? pp_len - 2 : 0;
  if (closed) {
    pp_hidden_quote = end;
    *end = '\0';
  } else {
    pp_open_string = 1;
    if (written_by_a_person())
      note_open_text();
    if (pp_len > 1)
      end[-1] = '\0';
  }
  pp_token = kTokString;
}

void take_symbol(Token token, int length) {
  pp_pos += length;
  pp_len = length;
  pp_token = token;
}

// Recognises a token that is not a name; leaves kTokNone otherwise.
void take_by_first_character() {
  const char *p = pp_pos;
  switch (*p) {
  case '"':
    return take_string();
  case '#':
    return take_literal();
  case '\'':
    if (p[1] != '\0' && p[2] == '\'') {
      pp_char_val = p[1];
      take_symbol(kTokCharacter, 3);
    }
    return;
  case '(':
    return take_symbol(kTokOpen, 1);
  case ')':
    return take_symbol(kTokClose, 1);
  case '[':
    return take_symbol(kTokOpenList, 1);
  case ']':
    return take_symbol(kTokCloseList, 1);
  case ';':
    return take_symbol(kTokEnd, 1);
  case '-':
    if (p[1] == '>')
      take_symbol(kTokArrow, 2);
    return;
  case ':':
    if (p[1] == ':' && p[2] == '=')
      take_symbol(kTokDefine, 3);
    return;
  case '?':
    if (read_int(++p, pp_int_val))
      take_number(kTokVariable, p);
    return;
  default:
    return;
  }
}

int end_of_source() {
  pp_token = kTokEnd;
  pp_start = pp_line_buffer.data() + pp_line_buffer.size() - 1;
  pp_len = 0;
  pp_at_end = 1;
  pp_statement_open = 0;
  return pp_token;
}

// Undoes what the previous token wrote into the line.
void restore_line() {
  *pp_pos = pp_last_char;
  if (pp_hidden_quote != nullptr)
    *pp_hidden_quote = '"';
  pp_hidden_quote = nullptr;
}

// Moves to the next character that is not blank, over line ends and comments; false at the end.
bool find_token() {
  for (;;) {
    while (*pp_pos == ' ' || *pp_pos == '\t')
      ++pp_pos;
    if (*pp_pos == '\n' || *pp_pos == '\0') {
      if (pp_get_line() == 0)
        return false;
    } else if (*pp_pos == '/' && pp_pos[1] == '*') {
      skip_comment();
    } else {
      return true;
    }
  }
}

} // namespace

void note_integer_bounds(const std::string &taken) {
  show_note(format_text("note: integers have 32 bits; this one is read as #%s", taken.c_str()));
}

int pp_get_token() {
  restore_line();
  pp_token = kTokNone;
  pp_at_end = 0;
  if (!pp_statement_open)
    pp_open_string = 0;
  if (!find_token()) {
    pp_last_char = *pp_pos;
    return end_of_source();
  }
  pp_start = pp_pos;
  pp_len = 0;
  take_by_first_character();
  if (pp_token == kTokNone)
    take_name(pp_start);
  pp_last_char = *pp_pos;
  *pp_pos = '\0';
  pp_statement_open = pp_token != kTokEnd;
  if (pp_token != kTokEnd)
    pp_drop_prompt();
  return pp_token;
}

void pp_flush() {
  pp_last_char = '\n';
}

int pp_semicolon_follows() {
  if (pp_last_char != ' ')
    return pp_last_char == ';';
  const char *p = pp_pos + 1;
  while (*p == ' ' || *p == '\t')
    ++p;
  return *p == ';';
}

void skip_comment() {
  if (pp_file == nullptr && !reading_console()) {
    pp_pos += 2;
    return;
  }
  pp_record_pause(pp_pos);
  pp_pos += 2;
  for (;;) {
    if (*pp_pos == '\n' || *pp_pos == '\0') {
      if (pp_get_line() == 0)
        break;
      // Kept: the scan of a further line starts at its second character.
      ++pp_pos;
    } else if (*pp_pos == '*' && pp_pos[1] == '/') {
      pp_pos += 2;
      break;
    } else {
      ++pp_pos;
    }
  }
  pp_record_resume(pp_pos);
}

} // namespace velora
