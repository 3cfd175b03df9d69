// Finding a name by what it is about: the names and sentences of the help pages, the user's names,
// and the words that programmers of other languages would look for.
#pragma once

#include <string>
#include <vector>

namespace velora {

struct AproposRow {
  const char *words; // what somebody may look for, parted by blanks
  const char *names; // the names that do it here, parted by blanks
};
// The table of such words, for those who check that every name in it exists.
const std::vector<AproposRow> &apropos_rows();

struct FoundName {
  std::string name;
  std::string about; // its declaration or the sentence of its help page
};
// What fits `word`, best first: names meant by it, names that hold it, pages that mention it.
std::vector<FoundName> find_about(const std::string &word);

} // namespace velora
