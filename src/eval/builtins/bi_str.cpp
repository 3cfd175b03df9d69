// The string built-ins: words, searching, joining and taking apart. Called by the dispatcher with
// the spine; a text is a run of bytes, and bytes beyond ASCII count as letters.
#include <cctype>
#include <string>

#include "core/space.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "platform/response.h"

namespace velora {

namespace {

// What findstr and countstr look at of the pattern and of the text.
constexpr std::size_t kPatternLength = 500;
constexpr std::size_t kSearchLength = 5000;

bool is_word_char(char c, bool points_too) {
  auto byte = static_cast<unsigned char>(c);
  return byte >= 0x80 || std::isalnum(byte) != 0 || (points_too && c == '.');
}

int split_words(node **stack, bool points_too) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr)
    return 0;
  const std::string text(text_of(s));
  ListBuilder words;
  std::size_t at = 0;
  while (at < text.size()) {
    std::size_t from = at;
    while (at < text.size() && is_word_char(text[at], points_too))
      ++at;
    if (at > from)
      words.add_string({text.data() + from, at - from});
    else
      ++at;
  }
  return words.write_over(stack[1]);
}

// The concatenation of a list of strings with `between` after each but the last.
int join(node **stack, std::string_view between) {
  const node *list = force_list(stack, 1);
  if (list == nullptr)
    return 0;
  std::string joined;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell)) {
    if (cell_head(cell)->type != kString)
      return 0;
    if (cell != list)
      joined += between;
    joined += text_of(cell_head(cell));
    check_text_fits(joined.size());
  }
  return set_string(stack[1], joined);
}

// The first `most` bytes of a text with the letters a to z as capitals.
std::string searchable(const node *s, std::size_t most) {
  std::string text(text_of(s));
  if (text.size() > most) {
    BeepMsge("bi_findstr : terminating string\n", 0);
    text.resize(most);
  }
  for (char &c : text)
    if (c >= 'a' && c <= 'z')
      c = static_cast<char>(c - 'a' + 'A');
  return text;
}

// Fills the two texts of a search; 0 when an argument is not a string.
int search_texts(node **stack, std::string &string_one, std::string &string_two) {
  const node *pattern = force_arg(stack, 1, kString);
  if (pattern == nullptr)
    return 0;
  const node *text = force_arg(stack, 2, kString);
  if (text == nullptr)
    return 0;
  string_one = searchable(pattern, kPatternLength);
  string_two = searchable(text, kSearchLength);
  return 1;
}

} // namespace

int bi_str_to_words(node **stack, int) {
  return split_words(stack, false);
}

int bi_str_to_words_tab(node **stack, int) {
  return split_words(stack, true);
}

int bi_words_to_str(node **stack, int) {
  return join(stack, " ");
}

int bi_str_concat(node **stack, int) {
  return join(stack, "");
}

int bi_findstr(node **stack, int) {
  std::string string_one, string_two;
  if (!search_texts(stack, string_one, string_two))
    return 0;
  return set_bool(stack[2], string_two.find(string_one) != std::string::npos);
}

// An empty pattern occurs nowhere.
int bi_countstr(node **stack, int) {
  std::string string_one, string_two;
  if (!search_texts(stack, string_one, string_two))
    return 0;
  std::int32_t count = 0;
  std::size_t at = string_one.empty() ? std::string::npos : string_two.find(string_one);
  while (at != std::string::npos) {
    ++count;
    at = string_two.find(string_one, at + string_one.size());
  }
  return set_int(stack[2], count);
}

int bi_str_head(node **stack, int) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr || s->val.s.len == 0)
    return 0;
  return set_char(stack[1], s->val.s.str[0]);
}

int bi_str_tail(node **stack, int) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr)
    return 0;
  std::string_view text = text_of(s);
  return set_string(stack[1], text.substr(text.empty() ? 0 : 1));
}

int bi_str_reverse(node **stack, int) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr)
    return 0;
  std::string_view text = text_of(s);
  return set_string(stack[1], std::string(text.rbegin(), text.rend()));
}

// A text ends at its NUL, so that character joins no string.
int bi_str_tag(node **stack, int) {
  const node *s = force_arg(stack, 1, kString);
  if (s == nullptr)
    return 0;
  const node *c = force_arg(stack, 2, kCharacter);
  if (c == nullptr || c->val.c == '\0')
    return 0;
  return set_string(stack[2], std::string(text_of(s)) + c->val.c);
}

int bi_str_cons(node **stack, int) {
  const node *c = force_arg(stack, 1, kCharacter);
  if (c == nullptr || c->val.c == '\0')
    return 0;
  const node *s = force_arg(stack, 2, kString);
  if (s == nullptr)
    return 0;
  return set_string(stack[2], c->val.c + std::string(text_of(s)));
}

int bi_implode(node **stack, int) {
  const node *list = force_list(stack, 1);
  if (list == nullptr)
    return 0;
  std::string text;
  for (const node *cell = list; is_cell(cell); cell = cell_tail(cell)) {
    const node *c = cell_head(cell);
    if (c->type != kCharacter || c->val.c == '\0')
      return 0;
    text += c->val.c;
  }
  return set_string(stack[1], text);
}

} // namespace velora
