// Whether the brackets and quotes of a text are closed, asked the same way wherever it matters: of
// a query that is typed, of pasted text that is cut into queries, of what a picture says. Brackets
// inside strings and character literals are no brackets. What is typed has no comments: the
// tokenizer reads on behind the two characters that open one.
#pragma once

#include <string_view>
#include <vector>

namespace velora {

class BracketScan {
public:
  // Goes on over a piece of the text. A character literal stands within one piece; a string may run
  // on into the next.
  void step_over(std::string_view piece);
  // More of the text may close what is open.
  [[nodiscard]] bool unfinished() const {
    return !crossed_ && (quoted_ || square_ > 0 || round_ > 0);
  }
  // What is wrong if the text ends here: "Unmatched double quotes\n", "Unmatched square
  // brackets\n", "Unmatched round brackets\n", or null.
  [[nodiscard]] const char *fault() const;
  // All of these that hold: square brackets, round brackets, quotes.
  [[nodiscard]] std::vector<const char *> faults() const;

private:
  long square_ = 0;
  long round_ = 0;
  bool quoted_ = false;
  bool crossed_ = false; // a bracket was closed that was not open
};

inline constexpr char kSquareFault[] = "Unmatched square brackets\n";
inline constexpr char kRoundFault[] = "Unmatched round brackets\n";
inline constexpr char kQuotesFault[] = "Unmatched double quotes\n";

} // namespace velora
