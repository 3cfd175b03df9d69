// Cutting and recalling of query texts. Called by console_window; touches nothing else.
#include "shell/query_text.h"

#include <algorithm>

#include "front/brackets.h"
#include "shell/typed_words.h"

namespace velora {

std::string strip_prompt(std::string_view line) {
  const std::string_view prompt = trimmed(kQueryPrompt);
  line = trimmed(line);
  while (line.substr(0, prompt.size()) == prompt)
    line = trimmed(line.substr(prompt.size()));
  return std::string(line);
}

std::vector<std::string> split_queries(std::string_view typed, std::string &rest) {
  std::vector<std::string> queries;
  std::string open_lines;
  BracketScan marks;
  for (std::size_t end = typed.find('\n'); end != std::string_view::npos;) {
    open_lines += typed.substr(0, end);
    marks.step_over(typed.substr(0, end));
    typed.remove_prefix(end + 1);
    end = typed.find('\n');
    if (marks.unfinished() && end != std::string_view::npos) {
      open_lines += ' ';
      continue;
    }
    queries.push_back(strip_prompt(open_lines));
    open_lines.clear();
    marks = {};
  }
  rest = typed;
  return queries;
}

void QueryHistory::add(const std::string &query) {
  std::erase(queries_, query);
  if (queries_.size() == kMostQueries)
    queries_.erase(queries_.begin());
  queries_.push_back(query);
  place_ = queries_.size();
}

bool QueryHistory::recall(int step, const std::string &typed, std::string &found) {
  if ((step < 0 && place_ == 0) || (step > 0 && place_ >= queries_.size()))
    return false;
  if (place_ == queries_.size())
    unfinished_ = typed;
  place_ += static_cast<std::size_t>(step);
  found = place_ == queries_.size() ? unfinished_ : queries_[place_];
  return true;
}

} // namespace velora
