// The registry of built-in functions, constructors and system functions: the tables that tie names
// to numbers, the start-up sequence that loads and checks the libraries, and the dispatcher.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/builtin_ids.h"
#include "core/records.h"

namespace velora {

inline constexpr int kSystemFunctions = 32;
inline constexpr int kNoLimit = 1 << 30;

struct ArityRule {
  int least;
  int most;
};

// What a built-in does besides giving its value.
enum class Effect : std::uint8_t {
  nothing,  // its value depends on its arguments and the clauses alone
  reads,    // it looks at files or the clock
  writes,   // it makes, changes or deletes files
  database, // it opens, reads, makes, saves or closes a database, or loads a file of commands
  library,  // it calls the user's library
  console,  // it shows, asks, draws or waits
  state     // it uses or changes clauses, declarations, links, or other state of the program
};

struct EffectRule {
  Effect kind;
  int name_argument;    // the argument that names the file or database, counted from 1; 0 for none
  bool goes_on = false; // with a file that was opened before
};

struct BuiltinRow {
  BuiltinId number;
  const char *name;
  ArityRule arity;
  EffectRule effect;
  int (*function)(node **stack, int spine_len);
};
extern const BuiltinRow bi_funcs_table[kBuiltins];
extern const char *const sf_funcs_table[kSystemFunctions];

// Names of the basic types, filled at start.
extern std::vector<std::string> basic_types;

// The folder that holds bis.fdb, sys.fdb and user.fdb.
extern std::string gLibDir;
// The path of a file in that folder; the name alone when no folder is known.
std::string library_file(const std::string &name);

// Loads and checks the libraries and makes the query space. 0 on success, 13 when a library did
// not load or lacks a name (each one reported), 19 when there is no query space.
int init_Velora();
int check_bis_declared();
int check_sys_declared();

// Runs a built-in that may look at, or change, more than its arguments and the clauses.
int touching_redex(const BuiltinRow &row, node **stack, int spine_len);

// Reduces the application of a built-in; 1 when the expression was rewritten, else 0.
inline int built_in_redex(node **stack, int spine_len) {
  const auto number = static_cast<unsigned>(stack[0]->val.bi.id);
  if (number >= kBuiltins)
    return 0;
  const BuiltinRow &row = bi_funcs_table[number];
  if (spine_len < row.arity.least || spine_len > row.arity.most)
    return 0;
  return row.effect.kind == Effect::nothing ? row.function(stack, spine_len)
                                            : touching_redex(row, stack, spine_len);
}

} // namespace velora
