// A section that is being read, for the notes about what does not belong in it and about its end.
#pragma once

#include <string>

namespace velora {

class Section {
public:
  // The section's keyword is current.
  Section();
  // Called when the text ends inside the section.
  void note_unclosed() const;

private:
  friend class SectionStatement;
  std::string keyword_;
  long line_;
};

// A statement of the section, whose first token is current.
class SectionStatement {
public:
  explicit SectionStatement(const Section &section);
  // Called when the statement failed: says so when it is no statement of a section at all.
  void note_misplaced() const;

private:
  const Section &section_;
  int first_;
  bool command_;
  bool query_;
};

} // namespace velora
