// Where the tokenizer's lines come from: a file, the command buffer that holds one statement, or
// the console. Sources nest: a file may load a file and a query may feed a statement, so each
// switch is an object that puts the former source back, also when a command is abandoned.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace velora {

// Lines from outside are refused beyond this many characters: so long a line is an endless source.
inline constexpr std::size_t kLongestLine = std::size_t{1} << 28;

// The interactive source: fetches one line into `line` (with or without its line end) after
// showing `prompt`, or the continuation prompt when that is null. Answers 0 at the end of input.
// Null when there is no console to read from.
extern int (*pp_refill)(std::string &line, const char *prompt);

// The text of the statement that is fed through the command buffer, and what was read of it.
extern std::string pp_velora_buffer;
extern std::size_t pp_velora_pos;

// Reads the next line of the source into pp_line_buffer: 1, or 0 at its end, where the old line
// stays. NUL bytes become blanks; a carriage return before the line end is dropped.
int pp_get_line();
// The next line of the command buffer; 0 when it is used up.
int get_velora_line();

// True while lines come from the console (pp_refill), not from a file or a statement.
bool reading_console();
// Where the current line stands: the file's name ("" when none is read) and the line number.
const std::string &pp_source_name();
long pp_line_number();
// The current line as it was read, without its line end.
std::string pp_line_text();

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

struct SourceState;

// Reads from an open file while in scope, and closes it. When the former source was a file, the
// rest of the line that it stood in is discarded; otherwise everything is as it was.
class FileSource {
public:
  FileSource(std::FILE *file, const std::string &name);
  ~FileSource();
  FileSource(const FileSource &) = delete;
  FileSource &operator=(const FileSource &) = delete;

private:
  std::unique_ptr<SourceState> former_;
  std::FILE *file_;
};

// Reads from the command buffer while in scope; the former source is put back as by FileSource.
class StatementSource {
public:
  explicit StatementSource(std::string text);
  ~StatementSource();
  StatementSource(const StatementSource &) = delete;
  StatementSource &operator=(const StatementSource &) = delete;

private:
  std::unique_ptr<SourceState> former_;
};

} // namespace velora
