// The registry: the libraries declare what the tables name, in the tables' order and with types of
// as many arguments as the functions take; what is missing is reported; the dispatcher keeps the
// arity rules.
#include "eval/registry.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string_view>

#include "core/symbols.h"
#include "eval/bi_support.h"
#include "kit/language.h"

namespace velora {
namespace {

using kit::answer;

class RegistryTest : public kit::Language {
protected:
  // Takes the kind off a symbol while `act` runs.
  template <typename Act> void without(std::initializer_list<const char *> names, Act act) {
    std::vector<std::pair<symbol *, std::uint8_t>> kinds;
    for (const char *name : names) {
      symbol *sym = find_symbol(name, 0);
      ASSERT_NE(sym, nullptr) << name;
      kinds.emplace_back(sym, sym->stype);
      sym->stype = kKindless;
    }
    act();
    for (auto [sym, kind] : kinds)
      sym->stype = kind;
  }
};

// The names of a library's section, in order.
std::vector<std::string> declared_in(const std::string &file, const std::string &section) {
  std::ifstream in(VELORA_SOURCE_DIR "/lib/" + file);
  std::vector<std::string> names;
  bool inside = false;
  for (std::string line; std::getline(in, line);) {
    if (line == section)
      inside = true;
    else if (line == ";")
      inside = false;
    else if (inside && line.find("::=") != std::string::npos)
      names.push_back(line.substr(2, line.find(' ', 2) - 2));
  }
  return names;
}

TEST_F(RegistryTest, TheTableStandsInNumberOrderAndTheLibraryFollowsIt) {
  const std::vector<std::string> names = declared_in("bis.fdb", "fdec");
  ASSERT_EQ(names.size(), static_cast<std::size_t>(kBuiltins));
  std::set<std::string> seen;
  for (int i = 0; i < kBuiltins; ++i) {
    const BuiltinRow &row = bi_funcs_table[i];
    EXPECT_EQ(row.number, i);
    EXPECT_EQ(row.name, names[static_cast<std::size_t>(i)]);
    EXPECT_TRUE(seen.insert(row.name).second) << row.name;
    EXPECT_LE(row.arity.least, row.arity.most) << row.name;
  }
}

TEST_F(RegistryTest, EveryBuiltinIsMarkedAndKnowsItsNumber) {
  for (const BuiltinRow &row : bi_funcs_table) {
    const symbol *sym = find_symbol(row.name, 0);
    ASSERT_NE(sym, nullptr) << row.name;
    EXPECT_EQ(sym->stype, kBuiltinFunction) << row.name;
    EXPECT_EQ(sym->b.fc->max_var, row.number) << row.name;
    EXPECT_EQ(sym->b.fc->defs, nullptr) << row.name;
  }
}

// A picture is checked against these types, so an exact count of arguments must be the type's.
TEST_F(RegistryTest, TypesHaveAsManyArgumentsAsTheFunctionsTake) {
  for (const BuiltinRow &row : bi_funcs_table) {
    const int arrows = find_symbol(row.name, 0)->b.fc->arity;
    EXPECT_GE(arrows, row.arity.least) << row.name;
    if (row.arity.most != kNoLimit) {
      EXPECT_EQ(arrows, row.arity.most) << row.name;
    }
  }
}

// Whoever may refuse an effect asks with the name that the argument gives.
TEST_F(RegistryTest, EffectsNameArgumentsThatTheFunctionsTake) {
  std::set<std::string> guarded;
  for (const BuiltinRow &row : bi_funcs_table) {
    const int arrows = find_symbol(row.name, 0)->b.fc->arity;
    EXPECT_LE(row.effect.name_argument, arrows) << row.name;
    if (row.effect.kind == Effect::writes || row.effect.kind == Effect::database)
      guarded.insert(row.name);
    // What is named like an output file, and answers whether it worked, writes.
    if (std::string_view(row.name).find("to_file") != std::string_view::npos ||
        std::string_view(row.name).find("write") != std::string_view::npos) {
      EXPECT_EQ(row.effect.kind, Effect::writes) << row.name;
    }
  }
  EXPECT_EQ(guarded.size(), 16u);
}

TEST_F(RegistryTest, ConstructorsStandInTheirRows) {
  EXPECT_EQ(declared_in("bis.fdb", "cdec").size(), static_cast<std::size_t>(kConsRows));
  for (const ConsEntry &row : bi_cons_table) {
    const symbol *sym = find_symbol(row.name, 0);
    ASSERT_NE(sym, nullptr) << row.name;
    EXPECT_EQ(sym->stype, kBuiltinConstructor) << row.name;
    EXPECT_EQ(sym->b.cs, row.cs) << row.name;
  }
}

TEST_F(RegistryTest, EnumeratedTypesHaveTheirValuesInTheOrderOfTheRows) {
  const struct {
    const char *type;
    ConsRow first, last;
  } types[] = {
      {"bool", kTrue, kFalse}, {"color", kConsBlack, kConsYellow}, {"compass", kNorth, kSWest}};
  for (const auto &[type, first, last] : types) {
    const symbol *sym = find_symbol(type, 0);
    ASSERT_NE(sym, nullptr) << type;
    EXPECT_EQ(sym->stype, kBuiltinEnum) << type;
    const symbol *value = sym->b.en->head;
    for (int row = first; row <= last; ++row, value = value->b.cs->link) {
      ASSERT_NE(value, nullptr) << type;
      EXPECT_STREQ(value->name, bi_cons_table[row].name);
    }
    EXPECT_EQ(value, nullptr) << type;
  }
}

TEST_F(RegistryTest, SystemFunctionsAreMarkedAndDefined) {
  EXPECT_EQ(declared_in("sys.fdb", "fdec").size(), static_cast<std::size_t>(kSystemFunctions));
  for (const char *name : sf_funcs_table) {
    const symbol *sym = find_symbol(name, 0);
    ASSERT_NE(sym, nullptr) << name;
    EXPECT_EQ(sym->stype, kSysFunction) << name;
    EXPECT_NE(sym->b.fc->defs, nullptr) << name;
  }
}

TEST_F(RegistryTest, TheLibrariesLeaveNothingOfTheirOwnBehind) {
  for (const symbol *sym = Symbol_table; sym != nullptr; sym = sym->next)
    EXPECT_NE(sym->stype & (kBuiltinBit | kSystemBit), 0) << sym->name;
}

TEST_F(RegistryTest, BasicTypesAreInOrder) {
  const std::vector<std::string> types = {"int", "char",  "str",     "bool",   "real",
                                          "sym", "color", "compass", "linkage"};
  EXPECT_EQ(basic_types, types);
}

TEST_F(RegistryTest, ReportsEveryMissingBuiltin) {
  without({"zip", "map", "Pair", "list", "compass", "linkage"}, [this] {
    EXPECT_EQ(check_bis_declared(), 0);
    EXPECT_EQ(console().text, "Built-in function map not declared\n"
                              "Built-in function zip not declared\n"
                              "Built-in constructor Pair not declared\n"
                              "Built-in typeop list not declared\n"
                              "Built-in enum compass not declared\n"
                              "Built-in typeop linkage not declared\n");
  });
  console().clear();
  EXPECT_EQ(check_bis_declared(), 1);
  EXPECT_EQ(console().text, "");
}

TEST_F(RegistryTest, ATypeOfAnotherKindIsMissing) {
  symbol *list = find_symbol("list", 0);
  list->stype = kEnumType;
  EXPECT_EQ(check_bis_declared(), 0);
  EXPECT_EQ(console().text, "Built-in typeop list not declared\n");
  list->stype = kTypeOp;
  EXPECT_EQ(check_bis_declared(), 1);
  EXPECT_EQ(list->stype, kBuiltinTypeOp);
}

TEST_F(RegistryTest, ReportsEveryMissingSystemFunction) {
  without({"head", "cross_prod"}, [this] {
    EXPECT_EQ(check_sys_declared(), 0);
    EXPECT_EQ(console().text, "System function head not declared\n"
                              "System function cross_prod not declared\n");
  });
  EXPECT_EQ(check_sys_declared(), 1);
}

TEST_F(RegistryTest, StartFailsWithoutTheLibraries) {
  const std::string folder = gLibDir;
  gLibDir = "no/such/folder";
  EXPECT_EQ(init_Velora(), 13);
  gLibDir = folder;
  EXPECT_NE(console().messages.find("Can't read from file no/such/folder/bis.fdb"),
            std::string::npos);
}

// --- the dispatcher ----------------------------------------------------------------------------

std::string applied(const std::string &name, int args) {
  std::string text = name;
  for (int i = 0; i < args; ++i)
    text += " #1";
  return text;
}

std::string as_it_stands(const std::string &name, int args) {
  return args == 0 ? name : "( " + applied(name, args) + ")";
}

TEST_F(RegistryTest, TooFewArgumentsLeaveEveryBuiltinAsItStands) {
  for (const BuiltinRow &row : bi_funcs_table) {
    if (row.arity.least > 0) {
      EXPECT_EQ(answer(applied(row.name, row.arity.least - 1) + " ;\n"),
                as_it_stands(row.name, row.arity.least - 1));
    }
  }
}

TEST_F(RegistryTest, TooManyArgumentsLeaveExactBuiltinsAsTheyStand) {
  for (const BuiltinRow &row : bi_funcs_table) {
    if (row.arity.most != kNoLimit) {
      EXPECT_EQ(answer(applied(row.name, row.arity.most + 1) + " ;\n"),
                as_it_stands(row.name, row.arity.most + 1));
    }
  }
}

TEST_F(RegistryTest, NumbersBeyondTheTableAreRefused) {
  func_block none{};
  for (int number : {-1, int{kBuiltins}, 1000000}) {
    node head{};
    head.type = kBuiltin;
    head.val.bi = {&none, number};
    node *stack[] = {&head};
    EXPECT_EQ(built_in_redex(stack, 0), 0) << number;
  }
}

} // namespace
} // namespace velora
