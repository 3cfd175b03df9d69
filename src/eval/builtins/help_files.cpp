// The pages of help of reading and writing text files by name.
#include "eval/help.h"

namespace velora {

namespace {

constexpr const char *kNoName = "a name that is not a string.";
constexpr const char *kNoReading =
    "a file that cannot be read, or that is open for writing; a name that is not a string.";

constexpr HelpRow kRows[] = {
    {"file_open_read",
     "str -> bool",
     "Opens a file for reading, from its start if it is open already. False when it cannot be read "
     "or 15 files are open.",
     {{R"(file_open_read "missing")", "False"}},
     kNoName},
    {"file_open_write",
     "str -> bool",
     "Opens a file for writing. One that exists is overwritten if its name ends in \".tmp\" and "
     "added to if it ends in \".add\"; any other is left alone, and the answer is False.",
     {{R"(file_open_write "a.tmp")", "True"}},
     kNoName},
    {"file_close",
     "str -> bool",
     "Closes a file; False when no file of that name is open.",
     {{R"(file_open_write "a.tmp")", "True"},
      {R"(file_close "a.tmp")", "True"},
      {R"(file_close "a.tmp")", "False"}},
     kNoName},
    {"file_read_line",
     "str -> str",
     "The next line of a file with its line end, at most 4999 characters at a time; the empty "
     "string at the end. A file that is not open is opened.",
     {{R"(list_to_file ["one" "two"] "a.tmp")", "True"},
      {R"(str_to_words (file_read_line "a.tmp"))", R"([ "one" ])"},
      {R"(str_to_words (file_read_line "a.tmp"))", R"([ "two" ])"}},
     kNoReading},
    {"file_read_word",
     "str -> str",
     "The next word of a file, up to a blank or a line end; the empty string at the end. A file "
     "that is not open is opened.",
     {{R"(list_to_file ["one two"] "a.tmp")", "True"},
      {R"(file_read_word "a.tmp")", R"("one")"},
      {R"([(file_read_word "a.tmp") (file_read_word "a.tmp")])", R"([ "two" "" ])"}},
     kNoReading},
    {"file_read_char",
     "str -> char",
     "The next character of a file; at the end character 255, of which encode makes #-1. A file "
     "that is not open is opened.",
     {{R"(list_to_file ["x"] "a.tmp")", "True"},
      {R"([(file_read_char "a.tmp") (file_read_char "a.tmp")])", "[ 'x' '\n' ]"},
      {R"(encode (file_read_char "a.tmp"))", "#-1"}},
     kNoReading},
    {"file_write_line",
     "str -> str -> bool",
     "Writes the second string and a line end to the file named by the first. False when it is not "
     "open for writing.",
     {{R"(file_open_write "a.tmp")", "True"},
      {R"(file_write_line "a.tmp" "one")", "True"},
      {R"(file_to_list "a.tmp")", R"([ "one" ])"}},
     "a line that is not a string."},
    {"file_write_string",
     "str -> str -> bool",
     "As file_write_line, without the line end.",
     {{R"(file_open_write "a.tmp")", "True"},
      {R"([(file_write_string "a.tmp" "o") (file_write_string "a.tmp" "ne")])", "[ True True ]"},
      {R"(file_to_list "a.tmp")", R"([ "one" ])"}},
     "a text that is not a string."},
    {"file_write_char",
     "str -> char -> bool",
     "Writes one character to a file. False when it is not open for writing.",
     {{R"(file_open_write "a.tmp")", "True"},
      {R"(file_write_char "a.tmp" 'x')", "True"},
      {R"(file_to_list "a.tmp")", R"([ "x" ])"}},
     "anything but a character."},
    {"file_files",
     "list str",
     "The names of the open files.",
     {{R"(file_open_write "a.tmp")", "True"}, {"file_files", R"([ "a.tmp" ])"}},
     nullptr},
};

} // namespace

constinit const std::span<const HelpRow> help_files = kRows;

} // namespace velora
