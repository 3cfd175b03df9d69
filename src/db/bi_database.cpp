// The built-ins of the database file: create, open, commit, close, and load. The first four answer
// a truth value whatever they are applied to.
#include <string>

#include "db/f_dbops.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "front/parser.h"

namespace velora {

namespace {

// Applies `operation` to the one argument when that is a text.
int answer_for_name(node **stack, int spine_len, int (*operation)(const std::string &)) {
  if (spine_len != 1)
    return set_bool(stack[spine_len], false);
  const node *name = force_arg(stack, 1, kString);
  const bool done = name != nullptr && operation(std::string(text_of(name))) != 0;
  return set_bool(stack[1], done);
}

int answer_without_argument(node **stack, int spine_len, int (*operation)()) {
  return set_bool(stack[spine_len], spine_len == 0 && operation() != 0);
}

} // namespace

int bi_create(node **stack, int spine_len) {
  return answer_for_name(stack, spine_len, fdb_create_db);
}

int bi_open(node **stack, int spine_len) {
  return answer_for_name(stack, spine_len, fdb_open_db);
}

int bi_commit(node **stack, int spine_len) {
  return answer_without_argument(stack, spine_len, fdb_commit_db);
}

int bi_close(node **stack, int spine_len) {
  return answer_without_argument(stack, spine_len, fdb_close_db);
}

int bi_load(node **stack, int) {
  const node *name = force_arg(stack, 1, kString);
  if (name == nullptr)
    return 0;
  return set_bool(stack[1], load_file(std::string(text_of(name)), 0) != 0);
}

} // namespace velora
