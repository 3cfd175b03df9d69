// Cutting of typed lines into the statements of a section.
#include "shell/console_section.h"

#include <utility>

namespace velora {

namespace {

constexpr std::pair<std::string_view, SectionKind> kSections[] = {{"tdec", SectionKind::tdec},
                                                                  {"cdec", SectionKind::cdec},
                                                                  {"fdec", SectionKind::fdec},
                                                                  {"fdef", SectionKind::fdef}};

bool is_blank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// Where the first semicolon outside of strings and of the literal ';' stands.
std::size_t statement_end(std::string_view text) {
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"')
      quoted = !quoted;
    else if (!quoted && text[i] == '\'' && i + 2 < text.size() && text[i + 2] == '\'')
      i += 2;
    else if (!quoted && text[i] == ';')
      return i;
  }
  return std::string_view::npos;
}

} // namespace

SectionKind section_called(std::string_view word) {
  for (const auto &[name, kind] : kSections)
    if (name == word)
      return kind;
  return SectionKind::none;
}

std::string_view section_prompt(SectionKind kind) {
  switch (kind) {
  case SectionKind::tdec:
    return "\nTDEC> ";
  case SectionKind::cdec:
    return "\nCDEC> ";
  case SectionKind::fdec:
    return "\nFDEC> ";
  case SectionKind::fdef:
    return "\nFDEF> ";
  case SectionKind::none:
    break;
  }
  return "\nQUERY> ";
}

void TypedSection::leave() {
  kind_ = SectionKind::none;
  open_.clear();
}

// The whole text from the statement's start is looked through again with each line, since a string
// may have been open at the end of the last one.
std::vector<std::string> TypedSection::take(std::string_view line,
                                            std::optional<std::string> &behind) {
  std::vector<std::string> statements;
  std::string text = open_ + (open_.empty() ? "" : "\n") + std::string(line);
  for (std::size_t end = statement_end(text); end != std::string::npos; end = statement_end(text)) {
    const std::string statement = text.substr(0, end);
    text.erase(0, end + 1);
    if (is_blank(statement)) {
      leave();
      behind = text;
      return statements;
    }
    statements.push_back(statement);
  }
  open_ = is_blank(text) ? "" : text;
  return statements;
}

} // namespace velora
