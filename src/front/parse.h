// The tokenizer: turns Orvek text into tokens for the recursive-descent parsers. One token is
// current at a time; its text is cut out of the line buffer in place and its value stands in the
// globals below until the next call of pp_get_token.
#pragma once

#include <cstdio>
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

// The current line: its characters, a newline and a NUL. Lines of any length are read whole.
extern std::vector<char> pp_line_buffer;
// The next unread character of the line.
extern char *pp_pos;
// The character that the NUL after the current token stands for.
extern char pp_last_char;
// The file that is read; null while text comes from the command buffer or the console.
extern std::FILE *pp_file;

// The current token: its code, its text (NUL-terminated in place) and its length in characters.
// The text of a string literal begins with its quote and stops before the closing one.
extern int pp_token;
extern char *pp_start;
extern int pp_len;
// Its value: number of a literal or variable, real, character, text of a string or name.
extern int pp_int_val;
extern float pp_real_val;
extern char pp_char_val;
extern char *pp_str_val;
extern int pp_str_len;
// Non-zero when the current end token is the end of the source, not a semicolon.
extern int pp_at_end;
// Non-zero after a token other than the end token: a statement has begun and is not yet closed.
extern int pp_statement_open;
// Non-zero when a string literal of the current statement lacked its closing quote.
extern int pp_open_string;
// The closing quote in the line that a NUL stands for; null when there is none.
extern char *pp_hidden_quote;

// Reads the next token and answers its code.
int pp_get_token();
// Discards the rest of the current line: the next token is looked for on a new one.
void pp_flush();
// Non-zero when a semicolon follows the current token on its line.
int pp_semicolon_follows();
// Skips a comment; the two characters that open it are next. At the end of the source it stops.
void skip_comment();

} // namespace velora
