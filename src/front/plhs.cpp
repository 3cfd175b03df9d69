// Decision trees of clause heads. Called when a clause is added; the matcher walks what is built
// here.
#include "front/plhs.h"

#include <bit>
#include <functional>
#include <string_view>
#include <vector>

#include "core/text.h"
#include "core/trees.h"
#include "core/walks.h"
#include "front/clause_index.h"

namespace velora {

namespace {

// A new alternative for a pattern; the part lists of an application start empty.
choice_node *new_alternative(const node *pattern, std::uint32_t mask) {
  auto *made = new choice_node{*pattern, mask, nullptr};
  if (is_apply(pattern))
    made->n.val.a.a1 = made->n.val.a.a2 = nullptr;
  else if (pattern->type == kString)
    hold_text(pattern->val.s.str);
  return made;
}

// The alternative of the list that equals `pattern`, made if need be.
choice_node *alternative_for(choice_node **list, const node *pattern, std::uint32_t mask) {
  choice_node **place = nullptr;
  choice_node **link = list;
  for (; *link != nullptr; link = &(*link)->next) {
    if (place == nullptr && (*link)->n.type == kVariable)
      place = link;
    // The presence of an application's parts is no matter here: every pattern has both.
    if (is_apply(pattern) ? is_apply(&(*link)->n) : equal_node(&(*link)->n, pattern) != 0) {
      (*link)->mask |= mask;
      return *link;
    }
  }
  if (place == nullptr)
    place = link;
  choice_node *made = new_alternative(pattern, mask);
  made->next = *place;
  *place = made;
  return made;
}

const choice_node *find_alternative(const choice_node *list, const node *pattern,
                                    std::uint32_t mask) {
  for (; list != nullptr; list = list->next)
    if ((list->mask & mask) != 0 &&
        (is_apply(pattern) ? is_apply(&list->n) : equal_node(&list->n, pattern) != 0))
      return list;
  return nullptr;
}

std::uint64_t mix(std::uint64_t hash, std::uint64_t value) {
  return (hash ^ value) * 0x9E3779B97F4A7C15u + (hash >> 29);
}

// What a node adds to the hash of a head: equal nodes add the same.
std::uint64_t leaf_value(const node *n) {
  const auto with_type = [n](std::uint64_t value) { return value * 128 + n->type; };
  switch (n->type) {
  case kVariable:
    return with_type(static_cast<std::uint32_t>(n->val.v));
  case kInteger:
    return with_type(static_cast<std::uint32_t>(n->val.i));
  case kCharacter:
    return with_type(static_cast<unsigned char>(n->val.c));
  case kFunctionNode:
  case kConstructorNode:
  case kName:
    return with_type(reinterpret_cast<std::uintptr_t>(n->val.sym));
  case kBuiltin:
    return with_type(static_cast<std::uint32_t>(n->val.bi.id));
  case kReal: // the two zeros are equal
    return with_type(n->val.r == 0 ? 0 : std::bit_cast<std::uint32_t>(n->val.r));
  case kString: {
    const std::string_view text(n->val.s.str, static_cast<std::size_t>(n->val.s.len));
    return with_type(std::hash<std::string_view>{}(text));
  }
  default:
    return n->type;
  }
}

// False when no clause of the group can have a head with that hash.
bool may_hold(const defs_link &group, std::uint32_t hash) {
  bool found = group.hashed == 0;
  for (const std::uint32_t h : group.head_hash)
    found |= h == hash;
  return found;
}

// Takes a clause's bit out of every alternative of a tree. Runs while a command is abandoned, so it
// takes no memory; its frames are small and the program's stack is large.
void drop_mask(choice_node *list, std::uint32_t mask) {
  for (; list != nullptr; list = list->next) {
    list->mask &= ~mask;
    if (is_apply(&list->n)) {
      drop_mask(choice_list(list->n.val.a.a1), mask);
      drop_mask(choice_list(list->n.val.a.a2), mask);
    }
  }
}

// A head that could not be merged to its end leaves no bit behind for the next clause to inherit.
struct MaskGuard {
  choice_node *&tree;
  std::uint32_t mask;
  bool done = false;
  ~MaskGuard() {
    if (!done)
      drop_mask(tree, mask);
  }
};

} // namespace

// The part lists are kept as node pointers inside the alternative, so they are merged through a
// local head that is written back at once.
void merge_lhs(const node *l_t, choice_node **tree, std::uint32_t mask, int *max_var) {
  MaskGuard guard{*tree, mask};
  struct Position {
    const node *pattern;
    node **part; // null: the top of the tree
  };
  std::vector<Position> open{{l_t, nullptr}};
  while (!open.empty()) {
    const Position at = open.back();
    open.pop_back();
    if (at.pattern == nullptr)
      continue;
    if (at.pattern->type == kVariable && at.pattern->val.v > *max_var)
      *max_var = at.pattern->val.v;
    choice_node *list = at.part == nullptr ? *tree : choice_list(*at.part);
    choice_node *alternative = alternative_for(&list, at.pattern, mask);
    if (at.part == nullptr)
      *tree = list;
    else
      *at.part = as_part(list);
    if (is_apply(at.pattern)) {
      open.push_back({at.pattern->val.a.a2, &alternative->n.val.a.a2});
      open.push_back({at.pattern->val.a.a1, &alternative->n.val.a.a1});
    }
  }
  guard.done = true;
}

std::uint32_t exact_node_match(std::uint32_t mask, const choice_node *m_t, const node *l_t,
                               std::uint32_t intersect) {
  struct Position {
    const node *pattern;
    const choice_node *list;
  };
  std::vector<Position> open{{l_t, m_t}};
  std::uint32_t live = mask & intersect;
  while (live != 0 && !open.empty()) {
    const Position at = open.back();
    open.pop_back();
    const choice_node *alternative = find_alternative(at.list, at.pattern, live);
    if (alternative == nullptr)
      return 0;
    live &= alternative->mask;
    if (is_apply(at.pattern)) {
      open.push_back({at.pattern->val.a.a2, choice_list(alternative->n.val.a.a2)});
      open.push_back({at.pattern->val.a.a1, choice_list(alternative->n.val.a.a1)});
    }
  }
  return live;
}

std::uint32_t head_hash(const node *lhs) {
  std::uint64_t hash = 0;
  each_node(lhs, [&hash](const node *n) { hash = mix(hash, leaf_value(n)); });
  return static_cast<std::uint32_t>(hash >> 32);
}

namespace {

// The clause of one group whose head is exactly `lhs`, or null.
rhs_link *find_in_group(const defs_link *group, const node *lhs) {
  const std::uint32_t found = exact_node_match(~0u, group->lhs_tree, lhs, ~0u);
  if (found == 0)
    return nullptr;
  rhs_link *clause = group->defs;
  for (int k = std::bit_width(found) - 1; k > 0 && clause != nullptr; --k)
    clause = clause->next;
  return clause;
}

} // namespace

rhs_link *find_lhs_match(const func_block *fc, const node *lhs) {
  const std::uint32_t hash = head_hash(lhs);
  if (const ClauseIndex *index = clause_index(fc)) {
    const auto with = index->groups.find(hash);
    if (with == index->groups.end())
      return nullptr;
    for (const defs_link *group : with->second)
      if (rhs_link *clause = find_in_group(group, lhs))
        return clause;
    return nullptr;
  }
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next)
    if (may_hold(*group, hash))
      if (rhs_link *clause = find_in_group(group, lhs))
        return clause;
  return nullptr;
}

} // namespace velora
