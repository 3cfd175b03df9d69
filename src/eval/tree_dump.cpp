// Textual drawings of application trees, appended to the file "apptrees" for the developers of the
// reducer. No command calls them.
#include <cstdio>

#include "core/events.h"
#include "core/print.h"
#include "eval/evaluate.h"
#include "platform/file_handle.h"
#include "platform/response.h"

namespace velora {

namespace {

constexpr int kMostTrees = 1000;

int num_trees = 0;
bool dump_started = false; // later calls append
int shown_on_line = 0;

FileHandle open_dump() {
  if (++num_trees >= kMostTrees) {
    num_trees = 0;
    error_exit("Number of trees reached 1000");
  }
  FileHandle f(std::fopen("apptrees", dump_started ? "a" : "w"));
  dump_started = true;
  return f;
}

std::string value_text(const node *n) {
  switch (n->type) {
  case kBuiltin:
  case kFunctionNode:
  case kConstructorNode:
  case kName:
    return leaf_text(n);
  case kInteger:
    return format_text("%ld", static_cast<long>(n->val.i));
  case kCharacter:
    return std::string(1, n->val.c);
  case kReal:
    return format_text("%f", static_cast<double>(n->val.r));
  default:
    return {};
  }
}

void dump_node(std::FILE *f, const node *n, const std::string &path) {
  check_stack();
  const std::string value = value_text(n);
  std::fprintf(f, "%p, ", static_cast<const void *>(n));
  if (value.empty())
    std::fprintf(f, "%s -- type %d,   ", path.c_str(), n->type);
  else
    std::fprintf(f, "%s -- %s,   ", path.c_str(), value.c_str());
  if (++shown_on_line % 2 == 0)
    std::fputc('\n', f);
  if (!is_apply(n))
    return;
  if (n->val.a.a1 != nullptr)
    dump_node(f, n->val.a.a1, path + "L");
  if (n->val.a.a2 != nullptr)
    dump_node(f, n->val.a.a2, path + "R");
}

void dump_edges(std::FILE *f, const node *n, char side, const std::string &path) {
  check_stack();
  const std::string value = value_text(n);
  std::fprintf(f, "(%p)(%1s)", static_cast<const void *>(n), std::string(1, side).c_str());
  if (value.empty())
    std::fprintf(f, "(t:%d) ", n->type);
  else
    std::fprintf(f, "(%s) ", value.c_str());
  std::fprintf(f, " %s node\n", path.c_str());
  if (!is_apply(n))
    return;
  std::fprintf(f, "%s %s edge\n", path.c_str(), (path + "L").c_str());
  std::fprintf(f, "%s %s edge\n", path.c_str(), (path + "R").c_str());
  if (n->val.a.a1 != nullptr)
    dump_edges(f, n->val.a.a1, 'L', path + "L");
  if (n->val.a.a2 != nullptr)
    dump_edges(f, n->val.a.a2, 'R', path + "R");
}

} // namespace

void draw_apply_tree(const char *msg, const node *root) {
  const FileHandle f = open_dump();
  if (f == nullptr || root == nullptr)
    return;
  std::fprintf(f.get(), "\n\n%s\n", msg);
  shown_on_line = 0;
  dump_node(f.get(), root, "T");
}

void draw_apply_tree1(const char *msg, const node *root) {
  const FileHandle f = open_dump();
  if (f == nullptr || root == nullptr)
    return;
  std::fprintf(f.get(), "\n\n(%s) T node\n", msg);
  dump_edges(f.get(), root, 'T', "T");
}

} // namespace velora
