// Reads the call links from the text of a database file. The file is read as plain text, not
// through the language parser, so that a database can be surveyed that does not load.
#include <algorithm>
#include <cctype>
#include <unordered_map>
#include <unordered_set>

#include "core/events.h"
#include "core/needs.h"
#include "network/links.h"
#include "platform/safe_file.h"

namespace velora {

std::vector<ArrayEntry> ARRAY;

namespace {

bool is_blank(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool is_bracket(char c) {
  return c == '(' || c == ')' || c == '[' || c == ']';
}

// A character literal such as ';' or '"' stands at `pos`.
bool is_literal(std::string_view text, std::size_t pos) {
  return text[pos] == '\'' && pos + 2 < text.size() && text[pos + 2] == '\'';
}

// Takes whole words and clauses off the text of a file.
class Scanner {
public:
  explicit Scanner(std::string_view text) : text_(text) {}

  // Goes past the next word "fdef"; false at the end of the text.
  bool find_fdef() {
    for (;;) {
      while (pos_ < text_.size() && (is_blank(text_[pos_]) || text_[pos_] == ';'))
        ++pos_;
      if (pos_ == text_.size())
        return false;
      const std::size_t start = pos_;
      while (pos_ < text_.size() && !is_blank(text_[pos_]))
        ++pos_;
      if (text_.substr(start, pos_ - start) == "fdef")
        return true;
    }
  }

  // The next clause without its `;`, comments cut out and line ends made blanks. A `;` in a text
  // or a character does not end it.
  std::string read_function() {
    std::string clause;
    while (pos_ < text_.size() && text_[pos_] != ';') {
      if (at_comment(clause)) {
        const std::size_t end = text_.find("*/", pos_ + 2);
        pos_ = end == std::string_view::npos ? text_.size() : end + 2;
        clause += ' ';
      } else {
        take(clause, item_length());
      }
    }
    if (pos_ < text_.size())
      ++pos_;
    return clause;
  }

private:
  // A comment opens only where a token begins.
  bool at_comment(const std::string &before) const {
    return text_.substr(pos_, 2) == "/*" &&
           (before.empty() || is_blank(before.back()) || is_bracket(before.back()));
  }

  // One character, or the whole of a text or character literal.
  std::size_t item_length() const {
    if (is_literal(text_, pos_))
      return 3;
    if (text_[pos_] != '"')
      return 1;
    const std::size_t close = text_.find('"', pos_ + 1);
    return (close == std::string_view::npos ? text_.size() : close + 1) - pos_;
  }

  void take(std::string &clause, std::size_t length) {
    for (const std::size_t end = pos_ + length; pos_ < end; ++pos_)
      clause += text_[pos_] == '\n' ? ' ' : text_[pos_];
  }

  std::string_view text_;
  std::size_t pos_ = 0;
};

// The next word of a clause from `pos` on; brackets stand for themselves and are skipped. Empty at
// the end.
std::string_view next_word(std::string_view clause, std::size_t &pos) {
  while (pos < clause.size() && (is_blank(clause[pos]) || is_bracket(clause[pos])))
    ++pos;
  const std::size_t start = pos;
  if (pos == clause.size())
    return {};
  if (is_literal(clause, pos)) {
    pos += 3;
  } else if (clause[pos] == '"') {
    const std::size_t close = clause.find('"', pos + 1);
    pos = close == std::string_view::npos ? clause.size() : close + 1;
  } else {
    while (pos < clause.size() && !is_blank(clause[pos]) && !is_bracket(clause[pos]))
      ++pos;
  }
  return clause.substr(start, pos - start);
}

// Where the right-hand side begins: behind the first "::=" outside texts.
std::size_t body_start(std::string_view clause) {
  bool in_text = false;
  for (std::size_t i = 0; i < clause.size(); ++i) {
    if (!in_text && is_literal(clause, i))
      i += 2;
    else if (clause[i] == '"')
      in_text = !in_text;
    else if (!in_text && clause.substr(i, 3) == "::=")
      return i + 3;
  }
  return clause.size();
}

// A word that names a function or constructor.
bool Important(std::string_view word) {
  constexpr std::string_view kLiteralMarks = "\"#'?";
  return !word.empty() && kLiteralMarks.find(word.front()) == std::string_view::npos &&
         word != "True" && word != "False" && word != "nil" && word != "None";
}

// Collects the mentions of each function while the clauses go by.
class Table {
public:
  void add_clause(std::string_view clause) {
    std::size_t pos = 0;
    Row &row = row_of(std::string(next_word(clause, pos)));
    pos = body_start(clause);
    std::string_view word = next_word(clause, pos);
    if (word == "error")
      return;
    for (; !word.empty(); word = next_word(clause, pos))
      if (Important(word) && row.seen.emplace(word).second)
        ARRAY[row.entry].mentions.emplace_back(word);
  }

private:
  struct Row {
    std::size_t entry = 0;
    std::unordered_set<std::string> seen;
  };

  Row &row_of(const std::string &name) {
    const auto [place, is_new] = rows_.try_emplace(name);
    if (is_new) {
      place->second.entry = ARRAY.size();
      ARRAY.push_back({name, {}});
    }
    return place->second;
  }

  std::unordered_map<std::string, Row> rows_;
};

} // namespace

void scan_text_to_ARRAY(std::string_view text) {
  ARRAY.clear();
  Scanner scanner(text);
  Table table;
  while (scanner.find_fdef())
    for (;;) {
      CheckForUserEvents(0);
      const std::string clause = scanner.read_function();
      if (std::all_of(clause.begin(), clause.end(), is_blank))
        break;
      table.add_clause(clause);
    }
}

void scan_file_to_ARRAY(const std::string &filename) {
  std::string text;
  if (!read_whole_file(filename, text))
    error_exit("Cannot open ddb file");
  scan_text_to_ARRAY(text);
}

} // namespace velora
