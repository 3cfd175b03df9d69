// The pages of help: one row for every built-in function, system function and built-in
// constructor. From these rows come `:help NAME` and docs/builtins.md, and the tests run every
// example. A family's rows stand in builtins/help_<family>.cpp; this level reads them only.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace velora {

inline constexpr int kMostExamples = 3;

// One page. The examples of a row run in order, starting in an empty folder, and may build on each
// other; unused ones are null. A query is what the user types at the prompt (a final ";" may be
// left out; sections such as "fdec f int; ;" may stand before it); an answer is all that the
// console then shows (not what beeps), without the blanks and line ends around it.
struct HelpRow {
  const char *name;
  const char *type;                       // as declared, positions joined by " -> "
  const char *sentence;                   // what it answers, in one sentence or two
  const char *examples[kMostExamples][2]; // query, answer
  const char *refuses; // which arguments leave the expression as it stands; null when none do
};

// A family's heading on the page of all built-ins, and its rows in the order of that page.
struct HelpFamily {
  const char *title;
  std::span<const HelpRow> rows;
};

// The rows of each family, defined in builtins/help_<family>.cpp.
extern const std::span<const HelpRow> help_own;
extern const std::span<const HelpRow> help_lists;
extern const std::span<const HelpRow> help_maths;
extern const std::span<const HelpRow> help_strings;
extern const std::span<const HelpRow> help_meta;
extern const std::span<const HelpRow> help_files;
extern const std::span<const HelpRow> help_whole_files;
extern const std::span<const HelpRow> help_classifier;
extern const std::span<const HelpRow> help_graphics;
extern const std::span<const HelpRow> help_database;
extern const std::span<const HelpRow> help_network;
extern const std::span<const HelpRow> help_system;
extern const std::span<const HelpRow> help_constructors;

// All families, in the order of the page.
std::span<const HelpFamily> help_families();

// The row of that name, or null.
const HelpRow *find_help(std::string_view name);

// One row as plain text for the console, ending in a line end.
std::string help_text(const HelpRow &row);

// The whole of docs/builtins.md.
std::string builtins_page();

} // namespace velora
