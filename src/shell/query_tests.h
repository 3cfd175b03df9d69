// Tests of a database: queries with the answers that they must give, in a plain text file.
#pragma once

#include <string>
#include <vector>

namespace velora {

// One query. `heading` is what the last line "== HEADING" above it said.
struct QueryTest {
  std::string heading;
  std::string query; // with its semicolon
  std::string answer;
  long line = 0;
};

// Reads the tests of a file's text: a line that ends with a semicolon is a query, the lines below
// it are its answer; blank lines and comments "// ..." are passed over.
std::vector<QueryTest> read_query_tests(const std::string &text);

// Runs the tests of a file and tells which answers are wrong and how many are right. 1 when all
// are right, else 0.
int run_query_tests(const std::string &file);

} // namespace velora
