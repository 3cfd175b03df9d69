// The registry: loads the libraries, ties the names they declare to the tables of built-ins,
// constructors and system functions, and carries an application of a built-in to its function.
// Called once at start by the program, and by the reducer for every built-in.
#include "eval/registry.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "core/clock.h"
#include "core/space.h"
#include "core/symbols.h"
#include "eval/bi_support.h"
#include "eval/effects.h"
#include "front/parser.h"
#include "platform/machine.h"
#include "platform/response.h"
#include "platform/safe_file.h"
#include "platform/trust.h"

namespace velora {

std::vector<std::string> basic_types;
std::string gLibDir;

const char *const sf_funcs_table[kSystemFunctions] = {
    "head",     "tail",    "!",       "last",  "and",     "or",         "sum",     "product",
    "average",  "concat",  "reverse", "merge", "flatmap", "first",      "second",  "permute",
    "inverseN", "inverse", "range",   "front", "bagN",    "if",         "insertB", "add1",
    "sub1",     "neg",     "abs",     "&&",    "||",      "inventoryf", "istype",  "cross_prod"};

namespace {

// The entry of that name when its kind has all of `bits`; else null.
symbol *declared(const char *name, std::uint8_t bits) {
  symbol *sym = find_symbol(name, 0);
  return sym != nullptr && (sym->stype & bits) == bits ? sym : nullptr;
}

int check_functions() {
  int complete = 1;
  for (const BuiltinRow &row : bi_funcs_table) {
    symbol *sym = declared(row.name, kFunctionBit);
    if (sym == nullptr) {
      DisplayResponsef("Built-in function %s not declared\n", row.name);
      complete = 0;
      continue;
    }
    sym->stype = kBuiltinFunction;
    sym->b.fc->max_var = static_cast<std::int16_t>(row.number);
  }
  return complete;
}

int check_constructors() {
  int complete = 1;
  for (ConsEntry &row : bi_cons_table) {
    symbol *sym = declared(row.name, kConstructorBit);
    if (sym == nullptr || (sym->stype & kFunctionBit) != 0) {
      DisplayResponsef("Built-in constructor %s not declared\n", row.name);
      complete = 0;
      continue;
    }
    sym->stype = kBuiltinConstructor;
    row.cs = sym->b.cs;
  }
  return complete;
}

// A type of the library, with the message for a library that lacks it.
struct LibraryType {
  const char *name;
  std::uint8_t kind;
  const char *missing;
};

int check_types() {
  static constexpr LibraryType types[] = {
      {"list", kTypeOp, "Built-in typeop list not declared\n"},
      {"pair", kTypeOp, "Built-in typeop pair not declared\n"},
      {"bool", kEnumType, "Built-in enum bool not declared\n"},
      {"color", kEnumType, "Built-in enum color not declared\n"},
      {"compass", kEnumType, "Built-in enum compass not declared\n"},
      {"linkage", kTypeOp, "Built-in typeop linkage not declared\n"}};
  int complete = 1;
  for (const LibraryType &type : types) {
    symbol *sym = find_symbol(type.name, 0);
    if (sym == nullptr || (sym->stype & kKindMask) != type.kind) {
      DisplayResponse(type.missing);
      complete = 0;
      continue;
    }
    sym->stype |= kBuiltinBit;
  }
  return complete;
}

int load_library(const char *name) {
  return load_file(library_file(name), 0, {name});
}

// A scratch file is made and removed again, so that its place in the folder is known to be there.
// A file of the user's that has its name is left alone.
void try_scratch_file() {
  constexpr const char *name = "fdef.tmp";
  HiddenFile scratch;
  if (scratch.make(name))
    scratch.write("Just some stuff to save trouble later\n");
}

} // namespace

std::string library_file(const std::string &name) {
  constexpr char kSeparator = static_cast<char>(std::filesystem::path::preferred_separator);
  return gLibDir.empty() ? name : gLibDir + kSeparator + name;
}

int check_bis_declared() {
  const int functions = check_functions();
  const int constructors = check_constructors();
  const int types = check_types();
  return functions != 0 && constructors != 0 && types != 0 ? 1 : 0;
}

int check_sys_declared() {
  int complete = 1;
  for (const char *name : sf_funcs_table) {
    symbol *sym = declared(name, kFunctionBit);
    if (sym == nullptr) {
      DisplayResponsef("System function %s not declared\n", name);
      complete = 0;
      continue;
    }
    sym->stype |= kSystemBit;
  }
  return complete;
}

int init_Velora() {
  if (load_library("bis.fdb") == 0 || check_bis_declared() == 0)
    return 13;
  if (load_library("sys.fdb") == 0 || check_sys_declared() == 0)
    return 13;
  // A ceiling that nobody has set is half of what the machine has, and no less than the space asked
  // for.
  if (gMaxNodes == 0)
    gMaxNodes = std::max(static_cast<std::int64_t>(machine_memory() / 2 / sizeof(node)),
                         machine_memory() == 0 ? std::int64_t{0} : std::int64_t{node_count});
  if (alloc_free_list() == 0)
    return 19;
  init_free_list();
  basic_types = {"int", "char", "str", "bool", "real", "sym", "color", "compass", "linkage"};
  trust_folder(gLibDir);
  if (!gLibDir.empty())
    trust_folder((std::filesystem::path(gLibDir) / ".." / "examples").string());
  DisplayResponse("Welcome to Velora\n");
  try_scratch_file();
  gSymbolTableChanged = 0; // what the libraries declare is no change of the user's
  return 0;
}

int touching_redex(const BuiltinRow &row, node **stack, int spine_len) {
  // What it finds outside may have changed since it was last called, and it may change what others
  // find: nothing that was remembered before holds during it or after. A refusal is told anew too.
  note_change();
  const int rewritten = is_guarded(row.effect.kind) && !may_act(row, stack, spine_len)
                            ? refused(row, stack, spine_len)
                            : row.function(stack, spine_len);
  note_change();
  return rewritten;
}

} // namespace velora
