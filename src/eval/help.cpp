// Finds and lays out the pages of help: as plain text for the console and as one Markdown page.
// Called by the shell's `:help`, by `--builtins-page` and by the tests; touches nothing else.
#include "eval/help.h"

#include <array>

namespace velora {

namespace {

// A Markdown code span; a text that holds a backtick is fenced with two.
std::string code(std::string_view text) {
  bool ticks = text.find('`') != std::string_view::npos;
  std::string fence = ticks ? "`` " : "`";
  return fence + std::string(text) + (ticks ? " ``" : "`");
}

// Running text with the signs that Markdown would take for its own.
std::string prose(std::string_view text) {
  std::string out;
  for (char c : text) {
    if (c == '*' || c == '<' || c == '`' || c == '\\')
      out += '\\';
    out += c;
  }
  return out;
}

// The anchor that a Markdown reader derives from a family's heading.
std::string anchor(std::string_view title) {
  std::string made;
  for (char c : title) {
    if (c == ' ')
      made += '-';
    else if (c >= 'A' && c <= 'Z')
      made += static_cast<char>(c - 'A' + 'a');
    else if ((c >= 'a' && c <= 'z') || c == '-')
      made += c;
  }
  return made;
}

// Indents every further line of an answer, so that it stays in its block.
std::string indented(std::string_view text, std::string_view margin) {
  std::string out(margin);
  for (char c : text) {
    out += c;
    if (c == '\n')
      out += margin;
  }
  return out;
}

void add_page(std::string &page, const HelpRow &row) {
  page += "### " + code(row.name) + "\n\n" + code(row.type) + "\n\n" + prose(row.sentence) + "\n";
  if (row.refuses != nullptr)
    page += "\nLeft as it stands: " + prose(row.refuses) + "\n";
  if (row.examples[0][0] != nullptr)
    page += '\n';
  for (const auto &example : row.examples) {
    if (example[0] != nullptr)
      page += indented(example[0], "    ") + "\n" + indented(example[1], "      ") + "\n";
  }
  page += '\n';
}

} // namespace

std::span<const HelpFamily> help_families() {
  static const std::array<HelpFamily, 13> families{{
      {"Arithmetic, comparison and control", help_own},
      {"Lists", help_lists},
      {"Mathematics, combinators and matrices", help_maths},
      {"Strings and conversions", help_strings},
      {"Evaluation and definitions", help_meta},
      {"Files", help_files},
      {"Whole files and tables", help_whole_files},
      {"The classifier", help_classifier},
      {"Graphics, maps and narration", help_graphics},
      {"Databases and types", help_database},
      {"The function network", help_network},
      {"System functions", help_system},
      {"Constructors", help_constructors},
  }};
  return families;
}

const HelpRow *find_help(std::string_view name) {
  for (const HelpFamily &family : help_families())
    for (const HelpRow &row : family.rows)
      if (name == row.name)
        return &row;
  return nullptr;
}

std::string help_text(const HelpRow &row) {
  std::string text = std::string(row.name) + "  " + row.type + "\n  " + row.sentence + "\n";
  if (row.refuses != nullptr)
    text += std::string("  Left as it stands: ") + row.refuses + "\n";
  for (const auto &example : row.examples)
    if (example[0] != nullptr)
      text += indented(example[0], "    ") + "\n" + indented(example[1], "      ") + "\n";
  return text;
}

std::string builtins_page() {
  std::string page = "# Built-in functions and constructors\n\n"
                     "Made by `velora --builtins-page`; do not edit. Below each query stands what "
                     "the console answers.\n\n";
  for (const HelpFamily &family : help_families())
    if (!family.rows.empty())
      page += std::string("- [") + family.title + "](#" + anchor(family.title) + ")\n";
  page += '\n';
  for (const HelpFamily &family : help_families()) {
    if (family.rows.empty())
      continue;
    page += std::string("## ") + family.title + "\n\n";
    for (const HelpRow &row : family.rows)
      add_page(page, row);
  }
  return page;
}

} // namespace velora
