// Error reporting and recovery of the parsers. Every report counts, beeps, and is followed by
// notes that show the place.
#pragma once

#include <cstddef>
#include <string>

namespace velora {

// How many errors the parsers have reported.
extern int gParseErrors;

// Reports the current token: "Error (%s):  %s found when { %s } expected\n" with `fun`, the
// token's text and `token_required`. Answers 0.
int report_error(const char *fun, const char *token_required);
inline int report_error(const std::string &fun, const char *token_required) {
  return report_error(fun.c_str(), token_required);
}
// Reports "Error: %s" with the message. Answers 0.
int parse_error(const char *message);
// Shows `message` as an error at the current token and counts it. Answers 0.
int refuse(const std::string &message);
// Reports the current token as a name that nobody declared, with what may have been meant.
// `infix` tells that an operator stands after the first element of its level.
void report_undefined(bool infix);
// Tells that the text that begins at the current token has no closing quote, and where it stands.
void note_open_text();
// Where an opening bracket stands in the file that is read: what a note needs when the brackets
// behind it turn out not to close it, perhaps lines later.
struct BracketPlace {
  long line = 0;
  std::size_t column = 0;   // in bytes
  std::size_t line_end = 0; // in the file
};
// The current token is an opening bracket.
BracketPlace bracket_place();
// Tells of a bracket in a file that has no closing one. Nothing is told of what a database or a
// statement of the system's own leaves open; who types a query is refused it elsewhere.
void note_open_bracket(const BracketPlace &place, bool square);
// Counts a failure that has no message of its own: the current token cannot stand where it does in
// an expression. Only a note says so.
void fail_silently();
// A note beside the listing of a name that is not known.
void note_unknown_name(const std::string &name);
// The command of the shell that somebody means who types `word` bare, such as "help"; or null.
const char *command_meant(const std::string &word);
// True when a definition sign stands at the current token or behind it in the statement, as far as
// that goes on this line.
bool definition_follows();
// True when a "?" stands behind the current token in the statement, on this line.
bool variable_follows();
// Skips tokens until the end token. Answers 1.
int process_error();

// Prints `text` as a prompt or echo: nothing while a file is read; at the console it is the
// prompt of the next line.
void pprintf(const char *text);

// 1 when the current token is the end token; else reports "semicolon" expected.
int p_end();

// Quotes the part of `line` around column `at` as a note, with a mark under it.
void show_excerpt(const std::string &line, std::size_t at);

// Forgets which place was shown last, so that the next error shows its place again.
void forget_noted_place();

} // namespace velora
