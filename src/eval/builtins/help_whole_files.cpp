// The pages of help of whole files of lines and of tab-separated tables.
#include "eval/help.h"

namespace velora {

namespace {

constexpr const char *kMake = R"(list_to_file ["ash" "oak" "elm"] "trees.tmp")";
constexpr const char *kTable = R"(table_to_file [["oak" #3] ["elm" #5]] "trees.tmp")";

constexpr HelpRow kRows[] = {
    {"file_to_list",
     "str -> list str",
     "The lines of a file, without their line ends.",
     {{kMake, "True"}, {R"(file_to_list "trees.tmp")", R"([ "ash" "oak" "elm" ])"}},
     "a file that cannot be read."},
    {"list_to_file",
     "list str -> str -> bool",
     "Writes the strings of a list to a file, one a line. False when the file exists (unless its "
     "name ends in \".tmp\" or \".add\") or cannot be written; then nothing is written.",
     {{R"(list_to_file ["ash" "oak"] "trees.add")", "True"},
      {R"(list_to_file ["elm"] "trees.add")", "True"},
      {R"(file_to_list "trees.add")", R"([ "ash" "oak" "elm" ])"}},
     "a list that holds anything but strings."},
    {"file_filter",
     "(str -> bool) -> str -> str -> bool",
     "Writes the lines of the first file for which the test is True to the second. False when one "
     "cannot be read or the other not be written; then nothing is written.",
     {{kMake, "True"},
      {R"(file_filter (findstr "a") "trees.tmp" "a.tmp")", "True"},
      {R"(file_to_list "a.tmp")", R"([ "ash" "oak" ])"}},
     "a test that answers neither True nor False; nothing is written then."},
    {"file_takewhile",
     "(str -> bool) -> str -> str -> bool",
     "Writes the lines of the first file up to the first for which the test is not True to the "
     "second. False as for file_filter.",
     {{kMake, "True"},
      {R"(file_takewhile (findstr "s") "trees.tmp" "s.tmp")", "True"},
      {R"(file_to_list "s.tmp")", R"([ "ash" ])"}},
     "a test that answers neither True nor False; nothing is written then."},
    {"file_map",
     "(str -> str) -> str -> str -> bool",
     "Writes what the function answers for each line of the first file to the second. False as for "
     "file_filter.",
     {{kMake, "True"},
      {R"(file_map str_reverse "trees.tmp" "seert.tmp")", "True"},
      {R"(file_to_list "seert.tmp")", R"([ "hsa" "kao" "mle" ])"}},
     "a function that answers anything but strings; nothing is written then."},
    {"file_fold",
     "(str -> ?0 -> ?0) -> ?0 -> str -> ?0",
     "Folds the lines of a file from the first to the last, as foldl does a list: the function "
     "gets "
     "a line and the value so far.",
     {{kMake, "True"}, {R"(file_fold (K (+ #1)) #0 "trees.tmp")", "#3"}},
     "a file that cannot be read."},
    {"file_cut",
     "int -> int -> str -> str -> bool",
     "Cuts a range of lines out of the first file into the second: those numbered from the one "
     "number to the other, the first line being 1. False as for file_filter.",
     {{kMake, "True"},
      {R"(file_cut #2 #3 "trees.tmp" "cut.tmp")", "True"},
      {R"(file_to_list "cut.tmp")", R"([ "oak" "elm" ])"}},
     "a first number below 1."},
    {"file_to_table",
     "str -> list (list str)",
     "The rows of a table file: of each line the fields between its tabs.",
     {{kTable, "True"}, {R"(file_to_table "trees.tmp")", R"([ [ "oak" "3" ] [ "elm" "5" ] ])"}},
     "a file that cannot be read."},
    {"table_to_file",
     "list (list ?0) -> str -> bool",
     "Writes the rows of a table to a file, one a line, the texts of the fields (as symtostr gives "
     "them) joined by tabs. False as for list_to_file.",
     {{kTable, "True"},
      {R"(map symtostr (explode (file_read_word "trees.tmp")))", R"([ "o" "a" "k" ])"}},
     "fields that have no text, or whose text holds a tab or a line end."},
    {"lfile_to_tfile",
     "str -> str -> bool",
     "Turns a file of lists, written one a line as the console prints them, into a table file: the "
     "elements lose their marks and are joined by tabs. False as for file_filter.",
     {{R"(list_to_file ["[ #1 'a' oak ]" "[ #2 'b' elm ]"] "lists.tmp")", "True"},
      {R"(lfile_to_tfile "lists.tmp" "table.tmp")", "True"},
      {R"(file_to_table "table.tmp")", R"([ [ "1" "a" "oak" ] [ "2" "b" "elm" ] ])"}},
     "names that are not strings."},
};

} // namespace

constinit const std::span<const HelpRow> help_whole_files = kRows;

} // namespace velora
