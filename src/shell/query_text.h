// The text that a user types or pastes as queries: cutting it into queries, taking the prompt off,
// and the list of earlier queries. Plain text functions, called by console_window and by tests.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

inline constexpr std::string_view kQueryPrompt = "\nQUERY> ";

// `line` without the prompt before it and the blanks around it.
std::string strip_prompt(std::string_view line);

// Cuts typed text at its line ends into queries. A line whose brackets or quotes are still open is
// continued by the next one. `rest` receives what follows the last line end.
std::vector<std::string> split_queries(std::string_view typed, std::string &rest);

// How many earlier queries are kept.
inline constexpr std::size_t kMostQueries = 1'000;

// Earlier queries, oldest first, and the walk through them.
class QueryHistory {
public:
  void add(const std::string &query);
  // The query `step` places later (1) or earlier (-1) in the walk; `typed` is what stands in the
  // console now and is kept as the walk's end. Answers false when there is none.
  bool recall(int step, const std::string &typed, std::string &found);

private:
  std::vector<std::string> queries_;
  std::size_t place_ = 0; // queries_.size() at the end of the walk
  std::string unfinished_;
};

} // namespace velora
