// The one walk over a text that counts its brackets.
#include "front/brackets.h"

namespace velora {

void BracketScan::step_over(std::string_view piece) {
  for (std::size_t i = 0; i < piece.size(); ++i) {
    const char c = piece[i];
    if (c == '"')
      quoted_ = !quoted_;
    if (quoted_)
      continue;
    if (c == '\'' && i + 2 < piece.size() && piece[i + 2] == '\'')
      i += 2; // a character literal
    round_ += (c == '(') - (c == ')');
    square_ += (c == '[') - (c == ']');
    crossed_ = crossed_ || square_ < 0 || round_ < 0;
  }
}

const char *BracketScan::fault() const {
  if (quoted_)
    return kQuotesFault;
  if (square_ != 0)
    return kSquareFault;
  return round_ != 0 ? kRoundFault : nullptr;
}

std::vector<const char *> BracketScan::faults() const {
  std::vector<const char *> found;
  if (square_ != 0)
    found.push_back(kSquareFault);
  if (round_ != 0)
    found.push_back(kRoundFault);
  if (quoted_)
    found.push_back(kQuotesFault);
  return found;
}

} // namespace velora
