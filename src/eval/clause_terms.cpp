// Clauses as terms. Heads are read back out of the decision trees by the clause's own bit; removal
// keeps the compiled bodies and builds new trees only from the first group that loses a clause.
// Holds no roots between calls; the heap trees belong to Tree objects until they are handed over.
#include "eval/clause_terms.h"

#include <algorithm>

#include "core/events.h"
#include "core/needs.h"
#include "core/space.h"
#include "core/symbols.h"
#include "eval/bi_support.h"
#include "front/pfdef.h"
#include "front/plhs.h"

namespace velora {

namespace {

node *own_pattern(const choice_node *list, std::uint32_t mask) {
  check_stack();
  while (list != nullptr && (list->mask & mask) == 0)
    list = list->next;
  if (list == nullptr)
    return nullptr;
  if (!is_apply(&list->n))
    return copy_leaf(&list->n);
  Tree fun(own_pattern(choice_list(list->n.val.a.a1), mask));
  Tree arg(own_pattern(choice_list(list->n.val.a.a2), mask));
  node *both = make_apply_node(fun.get(), arg.get());
  fun.release();
  arg.release();
  return both;
}

// A heap copy of a term of the query space, as it stands.
Tree heap_copy(const node *term) {
  return Tree(copy_tree(term));
}

// One clause that stays, with its head, while the trees are built anew.
struct Kept {
  Tree head;
  rhs_link *clause;
};

// New decision trees, one for each full group of `kept` and one for the rest.
class NewTrees {
public:
  explicit NewTrees(const std::vector<Kept> &kept) {
    for (std::size_t i = 0; i < kept.size(); ++i) {
      const auto place = static_cast<unsigned>(i % kGroupSize);
      if (place == 0)
        trees_.push_back(nullptr);
      int highest = -1;
      merge_lhs(kept[i].head.get(), &trees_.back(), 1U << place, &highest);
    }
  }
  NewTrees(const NewTrees &) = delete;
  NewTrees &operator=(const NewTrees &) = delete;
  ~NewTrees() {
    for (choice_node *tree : trees_)
      free_lhs_tree(tree);
  }
  std::size_t size() const { return trees_.size(); }
  choice_node *take(std::size_t i) {
    choice_node *tree = trees_[i];
    trees_[i] = nullptr;
    return tree;
  }

private:
  std::vector<choice_node *> trees_;
};

// Hands `kept` out over the groups from `*place` on; groups that stay empty are deleted.
void refill_groups(defs_link **place, std::vector<Kept> &kept, NewTrees &trees) {
  for (std::size_t g = 0; g < trees.size(); ++g) {
    defs_link *group = *place;
    free_lhs_tree(group->lhs_tree);
    group->lhs_tree = trees.take(g);
    group->hashed = 0;
    rhs_link **end = &group->defs;
    const std::size_t last = std::min(kept.size(), (g + 1) * kGroupSize);
    for (std::size_t i = g * kGroupSize; i < last; ++i) {
      *end = kept[i].clause;
      end = &kept[i].clause->next;
    }
    *end = nullptr;
    place = &group->next;
  }
  // The groups behind have given their clauses away.
  while (*place != nullptr) {
    defs_link *group = *place;
    *place = group->next;
    free_lhs_tree(group->lhs_tree);
    delete group;
  }
}

} // namespace

node *clause_head(const defs_link *group, int k) {
  return own_pattern(group->lhs_tree, 1U << k);
}

std::vector<ClauseRef> clauses_of(const func_block *fc) {
  std::vector<ClauseRef> all;
  for (const defs_link *group = fc->defs; group != nullptr; group = group->next) {
    int k = 0;
    for (const rhs_link *clause = group->defs; clause != nullptr; clause = clause->next)
      all.push_back({group, clause, k++});
  }
  return all;
}

std::vector<node *> arguments_of(const node *term) {
  std::vector<node *> arguments;
  for (; is_apply(term); term = term->val.a.a1)
    arguments.push_back(term->val.a.a2);
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

node *getb_fdefs(func_block *fc, std::uint8_t quote) {
  ListBuilder clauses;
  for (const ClauseRef &ref : clauses_of(fc)) {
    const Tree head(clause_head(ref.group, ref.index));
    ListBuilder parts;
    const Root function(LMakeFunction(fc));
    parts.add_shared(function);
    for (const node *pattern : arguments_of(head.get()))
      parts.add_copy(pattern);
    parts.add_copy(ref.clause->original);
    clauses.add_list(parts);
  }
  const Root list(clauses.finish());
  const Root copy(LMakeInteger(0));
  LCopy_whole(copy, list, quote);
  return copy;
}

int remove_clauses(func_block *fc, const std::function<bool(const node *head)> &unwanted) {
  const std::vector<ClauseRef> all = clauses_of(fc);
  std::vector<Kept> rest;
  for (const ClauseRef &ref : all)
    rest.push_back({Tree(clause_head(ref.group, ref.index)), const_cast<rhs_link *>(ref.clause)});
  std::vector<bool> goes;
  for (const Kept &one : rest)
    goes.push_back(unwanted(one.head.get()));
  // What was evaluated in between may have defined clauses of its own.
  const std::vector<ClauseRef> now = clauses_of(fc);
  const bool same = std::equal(all.begin(), all.end(), now.begin(), now.end(),
                               [](const auto &a, const auto &b) { return a.clause == b.clause; });
  const auto first =
      static_cast<std::size_t>(std::find(goes.begin(), goes.end(), true) - goes.begin());
  if (!same || first == goes.size())
    return 0;

  const std::size_t start = first - first % kGroupSize;
  std::vector<Kept> kept;
  std::vector<rhs_link *> removed;
  for (std::size_t i = start; i < rest.size(); ++i) {
    if (goes[i])
      removed.push_back(rest[i].clause);
    else
      kept.push_back(std::move(rest[i]));
  }
  // The groups before the first clause that goes are left alone, and the new trees of the others
  // are whole before anything of the function is changed.
  NewTrees trees(kept);
  forget_plan(fc);
  defs_link **place = &fc->defs;
  for (std::size_t i = 0; i < start; i += kGroupSize)
    place = &(*place)->next;
  refill_groups(place, kept, trees);
  for (rhs_link *clause : removed)
    free_clause(clause);
  gSymbolTableChanged = 1;
  return static_cast<int>(removed.size());
}

int add_clause(func_block *fc, const node *const *patterns, int count, const node *body) {
  symbol *sym = own_function(fc);
  if (sym == nullptr)
    return 0;
  Tree head(make_leaf(kFunctionNode));
  head->val.fc = fc;
  for (int i = 0; i < count; ++i) {
    Tree pattern = heap_copy(patterns[i]);
    node *longer = make_apply_node(head.get(), pattern.get());
    head.release();
    pattern.release();
    head.reset(longer);
  }
  Tree written = heap_copy(body);
  return add_defs(fc, sym->stype == kDbFunction ? 1 : 0, head.release(), written.release(), 1);
}

symbol *own_function(const func_block *fc) {
  symbol *sym = fc->name == nullptr ? nullptr : find_symbol(fc->name, 0);
  if (sym == nullptr || sym->b.fc != fc)
    return nullptr;
  return sym->stype == kFunction || sym->stype == kDbFunction ? sym : nullptr;
}

} // namespace velora
