// The tokenizer: turns Orvek text into tokens for the recursive-descent parsers. One token is
// current at a time; its text is cut out of the line buffer in place and its value stands in the
// record of what is being read until the next call of pp_get_token.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace velora {

// Token codes. A type keyword's code plus 8 is its type code; fdec and cdec also say what kind of
// declaration is read.
enum Token {
  kTokInt = 1,
  kTokChar = 2,
  kTokReal = 3,
  kTokStr = 4,
  kTokSym = 6,
  kTokInteger = 9,
  kTokCharacter = 10,
  kTokRealLit = 11,
  kTokString = 12,
  kTokEnd = 16,
  kTokDefine = 18,
  kTokArrow = 19,
  kTokOpen = 20,
  kTokClose = 21,
  kTokOpenList = 22,
  kTokCloseList = 23,
  kTokVariable = 24,
  kTokName = 25,
  kTokFdec = 26,
  kTokCdec = 27,
  kTokFdef = 28,
  kTokLambda = 29,
  kTokEndOfList = 30,
  kTokTdec = 31,
  kTokLload = 32,
  kTokTypeop = 35,
  kTokNonlex = 36,
  kTokEnum = 37,
  kTokNone = 64
};

// The recording of a console statement's raw text. `from` counts characters of the current line.
struct StatementRecord {
  bool on = false;
  bool paused = false;
  std::string text;
  std::size_t from = 0;
};

// Everything that reading one text consists of: the line, the current token with its value, and
// where further lines come from. Exactly one such record is current (gReading); putting another in
// its place reads another text, and putting it back goes on where it stood. The pointers point into
// the record's own line buffer, which keeps its place in memory when the record is moved.
struct Tokenizer {
  // The current line: its characters, a newline and a NUL. Lines of any length are read whole.
  std::vector<char> line_buffer{'\n', '\0'};
  // The next unread character of the line.
  char *pos = line_buffer.data();
  // The character that the NUL after the current token stands for.
  char last_char = '\n';
  // The closing quote in the line that a NUL stands for; null when there is none.
  char *hidden_quote = nullptr;

  // The current token: its code, its text (NUL-terminated in place) and its length in characters.
  // The text of a string literal begins with its quote and stops before the closing one.
  int token = kTokEnd;
  char *start = line_buffer.data() + 1;
  int len = 0;
  // Its value: number of a literal or variable, real, character, text of a string or name.
  int int_val = 0;
  float real_val = 0;
  char char_val = 0;
  char *str_val = line_buffer.data() + 1;
  int str_len = 0;
  // Non-zero when the current end token is the end of the source, not a semicolon.
  int at_end = 0;
  // Non-zero after a token other than the end token: a statement has begun and is not yet closed.
  int statement_open = 0;
  // Non-zero when a string literal of the current statement lacked its closing quote.
  int open_string = 0;
  // Non-zero while a faulty statement is skipped: nothing is told of what stands in it.
  int skipping = 0;

  // The text of the file that is read, and how much of it was; null while text comes from the
  // command buffer or the console.
  const std::string *file = nullptr;
  std::size_t file_pos = 0;
  // The text that is fed through the command buffer, and what was read of it.
  std::string velora_buffer;
  std::size_t velora_pos = 0;
  // True while the command buffer is the source, used up or not.
  bool from_buffer = false;
  // For messages: the file's name and the number of the current line.
  std::string source_name;
  bool source_is_window = false; // the name is the title of a text window
  long line_number = 0;
  bool nul_noted = false;
  // The prompt of the next console line; null for the prompt of continuation lines.
  const char *pending_prompt = nullptr;
  StatementRecord record;

  Tokenizer() = default;
  // Back to the state of a fresh record, in place, so that no memory is needed.
  void start_over();
  Tokenizer(Tokenizer &&) = default;
  Tokenizer &operator=(Tokenizer &&) = default;
  Tokenizer(const Tokenizer &) = delete;
  Tokenizer &operator=(const Tokenizer &) = delete;
  ~Tokenizer() = default;
};

// What is being read.
extern Tokenizer gReading;

// The members that the parsers use, by the names that they use.
inline constexpr std::vector<char> &pp_line_buffer = gReading.line_buffer;
inline constexpr char *&pp_pos = gReading.pos;
inline constexpr char &pp_last_char = gReading.last_char;
inline constexpr char *&pp_hidden_quote = gReading.hidden_quote;
inline constexpr int &pp_token = gReading.token;
inline constexpr char *&pp_start = gReading.start;
inline constexpr int &pp_len = gReading.len;
inline constexpr int &pp_int_val = gReading.int_val;
inline constexpr float &pp_real_val = gReading.real_val;
inline constexpr char &pp_char_val = gReading.char_val;
inline constexpr char *&pp_str_val = gReading.str_val;
inline constexpr int &pp_str_len = gReading.str_len;
inline constexpr int &pp_at_end = gReading.at_end;
inline constexpr int &pp_statement_open = gReading.statement_open;
inline constexpr int &pp_open_string = gReading.open_string;
inline constexpr const std::string *&pp_file = gReading.file;
inline constexpr std::string &pp_velora_buffer = gReading.velora_buffer;
inline constexpr std::size_t &pp_velora_pos = gReading.velora_pos;

// Notes that a number beyond 32 bits is read as the integer `taken`.
void note_integer_bounds(const std::string &taken);

// Reads the next token and answers its code.
int pp_get_token();
// Discards the rest of the current line: the next token is looked for on a new one.
void pp_flush();
// Non-zero when a semicolon follows the current token on its line.
int pp_semicolon_follows();
// Skips a comment; the two characters that open it are next. At the end of the source it stops.
void skip_comment();

} // namespace velora
