// Sections typed in CONTROL: after `fdec` and its like, each statement is one of the section until
// an empty one ends it, as in a file. Plain text work; what is run is handed back.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

enum class SectionKind { none, tdec, cdec, fdec, fdef };

// The section that a word opens, or none.
SectionKind section_called(std::string_view word);
// Its prompt, as in "\nFDEC> ".
std::string_view section_prompt(SectionKind kind);

class TypedSection {
public:
  [[nodiscard]] SectionKind kind() const { return kind_; }
  // True in the middle of a statement.
  [[nodiscard]] bool statement_open() const { return !open_.empty(); }
  void enter(SectionKind kind) { kind_ = kind; }
  void leave();
  // Takes a line and answers the statements that it completes, without their semicolons. When an
  // empty statement ends the section, `behind` receives what stands after it.
  std::vector<std::string> take(std::string_view line, std::optional<std::string> &behind);

private:
  SectionKind kind_ = SectionKind::none;
  std::string open_; // the beginning of a statement
};

} // namespace velora
