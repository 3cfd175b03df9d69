// What the tests of the front end share: a small language in the symbol table, statements fed from
// strings, files and a scripted console, and terms written as text.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <fstream>
#include <string>
#include <vector>

#include "core/print.h"
#include "core/space.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "front/cint.h"
#include "front/parse.h"
#include "front/parser.h"
#include "front/putils.h"
#include "front/source.h"
#include "kit/language.h"
#include "platform/response.h"

namespace velora::front_test {

// A term with its applications in brackets: "((f #1) ?0)".
inline std::string show(const node *n) {
  if (n == nullptr)
    return "null";
  if (is_apply(n))
    return "(" + show(n->val.a.a1) + " " + show(n->val.a.a2) + ")";
  return leaf_text(n);
}

// A decision tree: alternatives joined by "|", each with its mask, applications in brackets.
inline std::string show(const choice_node *list) {
  std::string text;
  for (; list != nullptr; list = list->next) {
    text += text.empty() ? "" : "|";
    if (is_apply(&list->n))
      text += "(" + show(choice_list(list->n.val.a.a1)) + " " +
              show(choice_list(list->n.val.a.a2)) + ")";
    else
      text += leaf_text(&list->n) + "/" + std::to_string(list->mask);
  }
  return text;
}

// The lines a scripted console still has, and the prompts that it showed ("~" for a continuation).
inline std::deque<std::string> console_lines;
inline std::vector<std::string> prompts;

inline int refill(std::string &line, const char *prompt) {
  prompts.push_back(prompt == nullptr ? "~" : prompt);
  if (console_lines.empty())
    return 0;
  line = console_lines.front();
  console_lines.pop_front();
  return 1;
}

// Starts each test with the functions f, g and h, from int to int.
class FrontTest : public kit::Language {
protected:
  void SetUp() override {
    Language::SetUp();
    pp_reset(true);
    for (const char *name : {"f", "g", "h"})
      EXPECT_EQ(cint_fdec(std::string(name) + " ::= int -> int"), 1);
    console().clear();
    gParseErrors = 0;
  }

  void TearDown() override {
    pp_refill = nullptr;
    console_lines.clear();
    prompts.clear();
    pp_reset(true);
    gParseErrors = 0;
    Language::TearDown();
    init_free_list();
    free_retired();
  }

  // Declares a constructor.
  static void cons(const std::string &name, const std::string &types) {
    EXPECT_EQ(cint_cdec(name + " ::= " + types), 1) << name;
  }

  static symbol *sym(const std::string &name) { return find_symbol(name.c_str(), name.size()); }

  // The clause of function `name` that was added last, null without clauses.
  static rhs_link *last_clause(const std::string &name) {
    defs_link *group = sym(name)->b.fc->defs;
    if (group == nullptr)
      return nullptr;
    while (group->next != nullptr)
      group = group->next;
    rhs_link *clause = group->defs;
    while (clause != nullptr && clause->next != nullptr)
      clause = clause->next;
    return clause;
  }

  // The compiled body of a clause that becomes the only one of its function.
  static std::string compiled(const std::string &clause) {
    const std::string name = clause.substr(0, clause.find(' '));
    EXPECT_EQ(cint_fdec(name + " ::= int -> int"), 1);
    EXPECT_EQ(cint_fdef(clause), 1) << clause;
    return show(last_clause(name)->rhs);
  }

  // Writes a file that goes away with the test and answers its name.
  std::string file(const std::string &name, const std::string &text) {
    const std::string path = ::testing::TempDir() + "/" + name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

  // What beeped since the last call.
  std::string messages() {
    std::string text;
    text.swap(console().messages);
    return text;
  }

  std::string notes() {
    std::string text;
    text.swap(console().notes);
    return text;
  }
};

} // namespace velora::front_test
