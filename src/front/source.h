// Where the tokenizer's lines come from: a file, the command buffer that holds one statement, or
// the console. Sources nest: a file may load a file and a query may feed a statement, so each
// switch is an object that puts the former source back, also when a command is abandoned.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "front/parse.h"

namespace velora {

// Lines from outside are refused beyond this many characters: so long a line is an endless source.
inline constexpr std::size_t kLongestLine = std::size_t{1} << 28;

// Some editors put this before the first letter of a file in UTF-8; it is no part of the first
// line.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The interactive source: fetches one line into `line` (with or without its line end) after
// showing `prompt`, or the continuation prompt when that is null. Answers 0 at the end of input.
// Null when there is no console to read from.
extern int (*pp_refill)(std::string &line, const char *prompt);

// Reads the next line of the source into pp_line_buffer: 1, or 0 at its end, where the old line
// stays. NUL bytes become blanks; a carriage return before the line end is dropped.
int pp_get_line();
// The next line of the command buffer; 0 when it is used up.
int get_velora_line();

// True while lines come from the console (pp_refill), not from a file or a statement.
bool reading_console();
// Where the current line stands: the file's name ("" when none is read) and the line number.
const std::string &pp_source_name();
// "NAME:LINE:COLUMN", or for the text of a window "TITLE, line LINE".
std::string pp_place(long line, std::size_t column);
long pp_line_number();
// True when the file that is read goes on behind the current line with more than blanks.
bool pp_rest_of_file();
// The current line as it was read, without its line end.
std::string pp_line_text();
// How long it is, and the part [from, to) of it: a line may be as long as memory goes, and what
// looks at each of its statements must not look at all of it each time.
std::size_t pp_line_length();
std::string pp_line_part(std::size_t from, std::size_t to);

// The prompt for the next console line, while no token of a statement has been read.
void pp_set_prompt(const char *prompt);
// Called by the tokenizer for each token that is not the end: further lines are continuations.
void pp_drop_prompt();

// Recording of the raw text of a console statement, from the current token up to the `;` that is
// current when it is taken. Comments are left out.
void pp_begin_record();
std::string pp_take_record();
// The statement being recorded as far as the `;` that ends it on the current line; empty when
// nothing is recorded or the line does not end it.
std::string pp_recorded_statement();
// Called by skip_comment around a comment.
void pp_record_pause(const char *upto);
void pp_record_resume(const char *from);

// Puts the tokenizer back to its idle state after an abandoned command. The unread rest of the
// console's line stays unless `forget_line`.
void pp_reset(bool forget_line = false);

// What a file is called in messages: a window's text that is read through a scratch file has the
// window's title.
struct ShownName {
  std::string name;
  bool is_window = false;
};

// Reads the text of a file while in scope. When the former source was a file, the rest of the line
// that it stood in is discarded; otherwise everything is as it was.
class FileSource {
public:
  FileSource(std::string text, const ShownName &shown);
  FileSource(std::string text, const std::string &name)
      : FileSource(std::move(text), ShownName{name}) {}
  ~FileSource();
  FileSource(const FileSource &) = delete;
  FileSource &operator=(const FileSource &) = delete;

private:
  Tokenizer former_;
  std::string text_;
};

// Reads from the command buffer while in scope; the former source is put back as by FileSource.
class StatementSource {
public:
  explicit StatementSource(std::string text);
  ~StatementSource();
  StatementSource(const StatementSource &) = delete;
  StatementSource &operator=(const StatementSource &) = delete;

private:
  Tokenizer former_;
};

// A text that is read beside the one being read, a piece at a time: while a Turn is in scope the
// tokenizer and the parsers read this text from where the last turn left it, and afterwards what
// was read before goes on untouched, in the middle of its line too. `name` stands in messages.
// A text has one turn at a time; other sources may nest inside a turn.
class TextBeside {
public:
  explicit TextBeside(std::string text, std::string name = {});

  class Turn {
  public:
    explicit Turn(TextBeside &text);
    ~Turn();
    Turn(const Turn &) = delete;
    Turn &operator=(const Turn &) = delete;

  private:
    TextBeside &text_;
    Tokenizer former_;
  };

private:
  Tokenizer own_;
};

} // namespace velora
