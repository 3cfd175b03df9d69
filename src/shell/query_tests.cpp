// Running queries and holding their answers against those expected. Answers are compared word by
// word, so that it does not matter where their lines break.
#include "shell/query_tests.h"

#include <cerrno>
#include <sstream>

#include "front/cint.h"
#include "platform/response.h"
#include "platform/whole_file.h"
#include "shell/captured_console.h"
#include "shell/return_point.h"
#include "shell/typed_words.h"

namespace velora {

namespace {

// The words of a text with one blank between them.
std::string words_of(const std::string &text) {
  std::istringstream in(text);
  std::string all;
  for (std::string word; in >> word;)
    all += (all.empty() ? "" : " ") + word;
  return all;
}

// What a query shows, messages included.
std::string answer_of(const std::string &query) {
  CapturedConsole console;
  console.silent = true;
  const std::string text = query.substr(0, query.find_last_not_of(" ;") + 1);
  const CommandEnd end = run_command([&text] { return cint_command(text); });
  if (end == CommandEnd::interrupted)
    console.text = "Query interrupted";
  return words_of(console.text + " " + console.messages);
}

} // namespace

std::vector<QueryTest> read_query_tests(const std::string &text) {
  std::vector<QueryTest> tests;
  std::istringstream in(text);
  std::string heading;
  long number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    line = trimmed(line);
    if (line.empty() || line.starts_with("//"))
      continue;
    if (line.starts_with("=="))
      heading = trimmed(line.substr(2));
    else if (line.ends_with(';'))
      tests.push_back({heading, line, "", number});
    else if (!tests.empty())
      tests.back().answer += (tests.back().answer.empty() ? "" : " ") + line;
  }
  return tests;
}

int run_query_tests(const std::string &file) {
  std::string text;
  if (!read_whole_file(file, text)) {
    orvek_errorf("Can't read from file %s", file.c_str());
    return 0;
  }
  std::size_t right = 0;
  const std::vector<QueryTest> tests = read_query_tests(text);
  for (const QueryTest &test : tests) {
    const std::string got = answer_of(test.query);
    if (got == words_of(test.answer)) {
      ++right;
      continue;
    }
    DisplayResponsef("%s:%ld: %s%s\n  expected %s\n  answered %s\n", file.c_str(), test.line,
                     test.heading.empty() ? "" : (test.heading + ": ").c_str(), test.query.c_str(),
                     test.answer.empty() ? "nothing" : test.answer.c_str(),
                     got.empty() ? "nothing" : got.c_str());
  }
  DisplayResponsef("%zu of %zu answers are right\n", right, tests.size());
  return right == tests.size() && !tests.empty() ? 1 : 0;
}

} // namespace velora
