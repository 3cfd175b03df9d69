// Finding names by what they are about.
#include "shell/apropos.h"

#include <gtest/gtest.h>

#include <sstream>

#include "core/symbols.h"
#include "kit/language.h"

namespace velora {
namespace {

using AproposTest = kit::Language;

TEST_F(AproposTest, EveryNameInTheTableExists) {
  for (const AproposRow &row : apropos_rows()) {
    std::istringstream names(row.names);
    for (std::string name; names >> name;)
      EXPECT_NE(find_symbol(name.c_str(), 0), nullptr) << name << " for " << row.words;
  }
}

TEST_F(AproposTest, WhatIsMeantComesFirstAndNothingTwice) {
  const std::vector<FoundName> found = find_about("Length");
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found[0].name, "$");
  const std::vector<FoundName> maps = find_about("map");
  int times = 0;
  for (const FoundName &row : maps)
    times += row.name == "map" ? 1 : 0;
  EXPECT_EQ(times, 1);
  EXPECT_TRUE(find_about("").empty());
}

} // namespace
} // namespace velora
