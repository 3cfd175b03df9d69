// The pages of help: every example gives the answer that its page shows, types are those declared,
// nothing lacks a page, and docs/builtins.md is what the tables make.
#include "eval/help.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "core/print.h"
#include "core/symbols.h"
#include "eval/bi_support.h"
#include "eval/builtins/bi_files.h"
#include "eval/graphics_windows.h"
#include "eval/registry.h"
#include "kit/language.h"

namespace velora {

void PrintTo(const HelpRow &row, std::ostream *out) {
  *out << row.name;
}

namespace {

namespace fs = std::filesystem;

std::string trimmed(const std::string &text) {
  std::size_t first = text.find_first_not_of(" \n");
  return first == std::string::npos ? ""
                                    : text.substr(first, text.find_last_not_of(" \n") - first + 1);
}

std::string without_blanks(std::string text) {
  std::erase(text, ' ');
  return text;
}

std::vector<HelpRow> all_rows() {
  std::vector<HelpRow> rows;
  for (const HelpFamily &family : help_families())
    rows.insert(rows.end(), family.rows.begin(), family.rows.end());
  return rows;
}

bool families_are_complete() {
  for (const HelpFamily &family : help_families())
    if (family.rows.empty())
      return false;
  return true;
}

// Runs in an empty folder, with no file or window open and nothing learnt.
class HelpPage : public kit::Language, public testing::WithParamInterface<HelpRow> {
protected:
  void SetUp() override {
    Language::SetUp();
    before_ = fs::current_path();
    folder_ = fs::temp_directory_path() / "velora_help_page";
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    fs::current_path(folder_);
    kit::answer("prob_reset ;");
  }
  void TearDown() override {
    for (UserFileInfo &file : gUserFile)
      file.fp.reset();
    while (gBgrWind != nullptr)
      close_graphics(gBgrWind);
    close_narrative();
    fs::current_path(before_);
    fs::remove_all(folder_);
    Language::TearDown();
  }

private:
  fs::path before_, folder_;
};

TEST_P(HelpPage, ExamplesAnswerAsShown) {
  const HelpRow &row = GetParam();
  ASSERT_NE(nullptr, row.examples[0][0]) << row.name << " has no example";
  for (const auto &example : row.examples) {
    if (example[0] == nullptr)
      continue;
    std::string query = example[0];
    if (query.back() != ';')
      query += " ;";
    EXPECT_EQ(example[1], trimmed(kit::answer(query + "\n"))) << query;
  }
}

TEST_P(HelpPage, TypeIsTheOneDeclared) {
  const HelpRow &row = GetParam();
  const symbol *sym = find_symbol(row.name, 0);
  ASSERT_NE(nullptr, sym) << row.name;
  const top_node *types =
      (sym->stype & kKindMask) == kConstructor ? sym->b.cs->types : sym->b.fc->types;
  EXPECT_EQ(without_blanks(tspecs_text(types)), without_blanks(row.type)) << row.name;
}

std::string test_name(const testing::TestParamInfo<HelpRow> &info) {
  std::string name = std::to_string(info.index) + "_";
  for (const char *c = info.param.name; *c != '\0'; ++c)
    name += std::isalnum(static_cast<unsigned char>(*c)) ? *c : '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Every, HelpPage, testing::ValuesIn(all_rows()), test_name);

TEST(HelpPages, EveryNameHasOnePage) {
  std::set<std::string> names;
  for (const HelpRow &row : all_rows())
    EXPECT_TRUE(names.insert(row.name).second) << row.name << " has two pages";
  if (!families_are_complete())
    GTEST_SKIP() << "a family has no pages yet";
  for (const BuiltinRow &row : bi_funcs_table)
    EXPECT_EQ(1u, names.erase(row.name)) << row.name << " has no page";
  for (const char *name : sf_funcs_table)
    EXPECT_EQ(1u, names.erase(name)) << name << " has no page";
  for (const ConsEntry &row : bi_cons_table)
    EXPECT_EQ(1u, names.erase(row.name)) << row.name << " has no page";
  EXPECT_TRUE(names.empty()) << *names.begin() << " is no built-in";
}

TEST(HelpPages, ThePrintedPageIsTheOneMadeFromTheTables) {
  std::ostringstream page;
  page << std::ifstream(VELORA_SOURCE_DIR "/docs/builtins.md").rdbuf();
  EXPECT_TRUE(page.str() == builtins_page()) << "run: velora --builtins-page > docs/builtins.md";
}

TEST(HelpPages, AreFoundByName) {
  ASSERT_NE(nullptr, find_help("str_concat"));
  EXPECT_EQ("str_concat  list str -> str\n"
            "  Joins the strings of a list without anything between them.\n"
            "  Left as it stands: a list that holds anything but strings.\n"
            "    str_concat [\"ab\" \"\" \"cd\"]\n"
            "      \"abcd\"\n"
            "    str_concat nil\n"
            "      \"\"\n",
            help_text(*find_help("str_concat")));
  EXPECT_EQ(nullptr, find_help("str_"));
}

} // namespace
} // namespace velora
