// Finds who mentions a symbol. Trees may be nested deeply, so they are walked with stacks of their
// own. Searches run only when a name that exists is replaced, never while new names are read.
#include "db/dependants.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "core/events.h"
#include "core/symbols.h"
#include "core/trees.h"
#include "core/walks.h"
#include "db/removal.h"

namespace velora {

namespace {

// Whether a node itself, not a part of it, is `sym`.
bool refers_to(const node *leaf, const symbol *sym) {
  switch (family_of(sym)) {
  case Family::function:
    if (sym->stype == kBuiltinFunction)
      return leaf->type == kBuiltin && leaf->val.bi.fc == sym->b.fc;
    return leaf->type == kFunctionNode && leaf->val.fc == sym->b.fc;
  case Family::constructor:
    return leaf->type == kConstructorNode && leaf->val.cs == sym->b.cs;
  default:
    return leaf->type == kName && leaf->val.sym == sym;
  }
}

// The body as written is looked at too: it must never name a block that is gone.
bool group_depends_on(const symbol *sym, const defs_link &group) {
  if (lhs_tree_depends_on(sym, group.lhs_tree) != 0)
    return true;
  for (const rhs_link *clause = group.defs; clause != nullptr; clause = clause->next)
    if (rhs_tree_depends_on(sym, clause->rhs) != 0 ||
        rhs_tree_depends_on(sym, clause->original) != 0)
      return true;
  return false;
}

bool function_depends_on(const symbol *sym, const func_block *fc) {
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next)
    if (group_depends_on(sym, *group))
      return true;
  return false;
}

// The block that a node itself refers to, or null.
const void *block_of(const node *leaf) {
  switch (leaf->type) {
  case kBuiltin:
    return leaf->val.bi.fc;
  case kFunctionNode:
    return leaf->val.fc;
  case kConstructorNode:
    return leaf->val.cs;
  default:
    return nullptr;
  }
}

using Blocks = std::unordered_set<const void *>;

Blocks mentions_of(const func_block *fc) {
  Blocks blocks;
  const auto note = [&blocks](const node *n) {
    if (const void *block = block_of(n))
      blocks.insert(block);
    return false;
  };
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next) {
    any_alternative(group->lhs_tree, note);
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next) {
      any_node(clause->rhs, note);
      any_node(clause->original, note);
    }
  }
  return blocks;
}

// All mentions, as they were when gClauseChanges was `version`. Users stand in table order.
struct Index {
  bool made = false;
  std::uint64_t version = 0;
  std::unordered_map<const void *, std::vector<symbol *>> users;
  std::unordered_map<const symbol *, Blocks> mentions;
};

Index index;
// gClauseChanges at the last search, carried over the removals that followed it.
std::uint64_t searched_version = UINT64_MAX;

void make_index() {
  index = {};
  for (symbol *s = Symbol_table; s != nullptr; s = s->next) {
    if ((s->stype & kFunctionBit) == 0)
      continue;
    CheckForUserEvents(0);
    Blocks blocks = mentions_of(s->b.fc);
    for (const void *block : blocks)
      index.users[block].push_back(s);
    if (!blocks.empty())
      index.mentions[s] = std::move(blocks);
  }
  index.version = gClauseChanges;
  index.made = true;
}

std::vector<symbol *> search(const symbol *sym) {
  std::vector<symbol *> users;
  for (symbol *s = Symbol_table; s != nullptr; s = s->next)
    if ((s->stype & kFunctionBit) != 0 && s != sym && function_depends_on(sym, s->b.fc))
      users.push_back(s);
  return users;
}

std::vector<symbol *> look_up(const symbol *sym) {
  const auto found = index.users.find(sym->b.fc);
  if (found == index.users.end())
    return {};
  std::vector<symbol *> users = found->second;
  std::erase(users, sym);
  return users;
}

bool index_is_current() {
  return index.made && index.version == gClauseChanges;
}

} // namespace

Family family_of(const symbol *sym) {
  switch (sym->stype) {
  case kFunction:
  case kSysFunction:
  case kDbFunction:
  case kBuiltinFunction:
    return Family::function;
  case kConstructor:
  case kBuiltinConstructor:
    return Family::constructor;
  case kTypeOp:
  case kEnumType:
  case kNonlexType:
    return Family::type;
  default:
    return Family::none;
  }
}

int rhs_tree_depends_on(const symbol *sym, const node *rhs_tree) {
  return any_node(rhs_tree, [sym](const node *n) { return refers_to(n, sym); }) ? 1 : 0;
}

int lhs_tree_depends_on(const symbol *sym, const choice_node *lhs_tree) {
  return any_alternative(lhs_tree, [sym](const node *n) { return refers_to(n, sym); }) ? 1 : 0;
}

int type_appears_in_type_tree(const symbol *tp, const top_node *tp_tree) {
  std::vector<const top_node *> open{tp_tree};
  while (!open.empty()) {
    const top_node *t = open.back();
    open.pop_back();
    if (t == nullptr || (t->top_code & kTypeVariable) != 0)
      continue;
    if ((t->top_code & kTypeUser) != 0) {
      if (t->tnu.u.s == tp)
        return 1;
      open.insert(open.end(), t->tnu.u.ua, t->tnu.u.ua + type_arg_count(t));
    } else if ((t->top_code & kTypeArrow) != 0) {
      open.push_back(t->tnu.bia[0]);
      open.push_back(t->tnu.bia[1]);
    }
  }
  return 0;
}

std::vector<symbol *> functions_that_mention(const symbol *sym) {
  if (!index_is_current()) {
    if (searched_version != gClauseChanges) {
      searched_version = gClauseChanges;
      return search(sym);
    }
    make_index();
  }
  return look_up(sym);
}

KeptIndex::KeptIndex(const symbol *sym)
    : sym_(sym), block_(sym->b.fc), searched_(searched_version == gClauseChanges),
      indexed_(index_is_current()) {}

KeptIndex::~KeptIndex() {
  if (searched_)
    searched_version = gClauseChanges;
  if (!indexed_)
    return;
  const auto mine = index.mentions.find(sym_);
  if (mine != index.mentions.end()) {
    for (const void *block : mine->second)
      std::erase(index.users[block], sym_);
    index.mentions.erase(mine);
  }
  index.users.erase(block_);
  index.version = gClauseChanges;
}

} // namespace velora
