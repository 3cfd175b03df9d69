// The dispatcher's look at the rights of the session. A trusted session passes through quickly;
// only what stands in a database that is being read is looked at in every session.
#include "eval/effects.h"

#include <algorithm>
#include <cstdlib>

#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "eval/needs.h"
#include "platform/trust.h"

namespace velora {

namespace {

// These change which database is open; a text that is being read must not pull it away from under
// itself.
bool changes_database(const BuiltinRow &row) {
  return row.function == bi_open || row.function == bi_close || row.function == bi_create ||
         row.function == bi_commit;
}

// What the built-in would do, as a question says it.
std::string wish_text(const BuiltinRow &row) {
  if (row.effect.kind == Effect::writes)
    return "write the file";
  if (row.effect.kind == Effect::library)
    return "call the library";
  if (row.function == bi_load)
    return "load the file";
  return std::string(row.name) + " the database";
}

std::string wish_path(const BuiltinRow &row, node **stack, int spine_len) {
  if (row.effect.kind == Effect::library) {
    const char *library = std::getenv("VELORA_USER_LIBRARY");
    return library == nullptr ? std::string() : resolved_path(library);
  }
  const int argument = row.effect.name_argument;
  if (row.effect.kind == Effect::database && argument == 0) {
    const std::string file = open_database_file();
    return file.empty() ? file : resolved_path(file);
  }
  if (argument == 0 || argument > spine_len)
    return {};
  const node *name = force_arg(stack, argument, kString);
  if (name == nullptr)
    return {};
  const bool is_base = changes_database(row);
  return resolved_path(std::string(text_of(name)) + (is_base ? ".ddb" : ""));
}

} // namespace

bool may_act(const BuiltinRow &row, node **stack, int spine_len) {
  if (DatabaseReading::depth > 0 && changes_database(row)) {
    refuse_effect(std::string("to ") + wish_text(row) + " while a database is being read");
    return false;
  }
  if (!session_is_restricted())
    return true;
  EffectWish wish{wish_text(row), wish_path(row, stack, spine_len), false, row.effect.goes_on};
  wish.remember = row.effect.kind == Effect::writes;
  return effect_is_allowed(wish);
}

// All of them but the call of the user's library answer a truth value.
int refused(const BuiltinRow &row, node **stack, int spine_len) {
  if (row.effect.kind == Effect::library)
    return 0;
  const bool takes_any = row.arity.least == 0 && row.arity.most == kNoLimit;
  const int last = takes_any ? spine_len : row.arity.least;
  return set_bool(stack[last], false);
}

} // namespace velora
