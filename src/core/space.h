// The query space: the bounded pool of nodes that queries are evaluated in, its roots and its
// collector. Everything that holds a node of the pool across the taking of another keeps it
// reachable from a root; Root is the easy way. Nodes never move.
//
// Allocation walks a cursor over the pool and takes every node that the last collection did not
// reach (its `mark` is not the current epoch), so there is no sweep. The pool is physically
// larger than `node_count`: a collection is due when many nodes have been used since the last, and
// the space has run out when what is reachable fills `node_count`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/records.h"

namespace velora {

inline constexpr std::int32_t kInitialNodes = 20480;

// Size of the space in nodes, and the ceiling that nodes and texts together may not grow past, in
// nodes (0: none yet; the start sets half the machine).
extern std::int32_t node_count;
extern std::int64_t gMaxNodes;
// Set beside the message of a full space when growing it would not help: texts have reached the
// ceiling.
extern bool gSpaceAtCeiling;

// Roots, in marking order.
extern node *Copy_root;
extern node *Query_root;
extern node *Tn1;
extern node *Tn2;
extern node *Tn3;

// A cell of the extra-root list, holding `root` (null for an empty cell) until the query ends.
struct Evalroot {
  node *root;
  Evalroot *next;
};
extern Evalroot *Eval_rootp;
// An empty cell of the extra-root list; the caller stores a node in it and clears it when done.
// "Unable to allocate further memory\n" through the error exit.
node **new_root_addr();
// Empties and frees the extra-root list.
void free_eval_roots();

// Keeps one node reachable while in scope. Roots form a stack.
class Root;
extern Root *gRootTop;
class Root {
public:
  explicit Root(node *n = nullptr) : held_(n), previous_(gRootTop) { gRootTop = this; }
  ~Root() { gRootTop = previous_; }
  Root(const Root &) = delete;
  Root &operator=(const Root &) = delete;
  Root &operator=(node *n) {
    held_ = n;
    return *this;
  }
  operator node *() const { return held_; }
  node *operator->() const { return held_; }
  node *get() const { return held_; }
  node **address() { return &held_; }
  Root *previous() const { return previous_; }

private:
  node *held_;
  Root *previous_;
};

// Allocates `node_count` nodes; 1 at the first attempt. Otherwise disables "Increase Query Space",
// retries with 5120 fewer each time and answers 0, with a smaller space or none.
int alloc_free_list();
// Makes every node free and clears every root.
void init_free_list();
// Resizes the space: 0 reset, 1 decrease (halve), 2 increase (double); prints the new size.
// 1, or 0 when only a smaller space than asked was obtained.
int resize_free_list(int choice);
// Frees the pool (at the end of the program).
void free_node_stack();

// Collects: everything not reachable from a root becomes free.
void garbage_collect();

// Makes the next node that is taken collect first.
void collect_at_next_node();
// Takes the error exit of a full space when a text of `len` bytes cannot fit below the ceiling.
void check_text_fits(std::size_t len);

// Counters since the program started, for `:time` and the benchmarks.
struct SpaceCounters {
  std::uint64_t nodes_taken;
  std::uint64_t collections;
};
SpaceCounters space_counters();
// How many nodes the last collection found in use.
std::int64_t nodes_in_use();

// A checker of the whole pool: every reachable node is well formed and lies in the pool or in
// clause code. 1 when all is well; otherwise 0 and `what` says what is wrong.
int check_pool(const char **what);

// Stress mode: collect at every `every`-th node and poison dead nodes. 0 turns it off.
void set_collect_stress(unsigned every);

// --- taking nodes -----------------------------------------------------------------------------
// The allocator's state; only take_node and the collector touch it.
struct SpaceState {
  node *cursor;
  node *end;
  std::int64_t budget; // accounted nodes that may be taken before the next collection
  std::uint8_t epoch;
};
extern SpaceState gSpace;
node *take_node_slowly();

// Makes a free node an application with nothing set beside: no guard, no flag, no note of its last
// life; its mark is that of no collection. One store.
inline void clear_header(node *n) {
  static_assert(kApply == 0);
  n->type = kApply;
  n->quote = 0;
  n->mark = 0;
  n->flags = 0;
  n->aux = 0;
}

// A free node with unspecified contents other than its bookkeeping. May collect, so everything
// held must be reachable. Takes the error exit with "Insufficient Query Space\n".
inline node *take_node() {
  node *n = gSpace.cursor;
  if (--gSpace.budget < 0) [[unlikely]]
    return take_node_slowly();
  while (n < gSpace.end && n->mark == gSpace.epoch)
    ++n;
  if (n >= gSpace.end) [[unlikely]]
    return take_node_slowly();
  gSpace.cursor = n + 1;
  return n;
}

// Makes sure that the next `count` takings neither collect nor fail, so that a structure can be
// built without roots. May collect; takes the error exit with "Insufficient Query Space\n".
void reserve_slowly(std::int64_t count);
inline void reserve_nodes(std::int64_t count) {
  if (gSpace.budget < count) [[unlikely]]
    reserve_slowly(count);
}

// Overwrites the type, quote and value of `under` with those of `over`; the bookkeeping stays.
inline void overwrite_node(node *under, const node *over) {
  under->type = over->type;
  under->quote = over->quote;
  under->val = over->val;
}

// A query-space application; both parts must be reachable or static.
inline node *LMakeApplyNode(node *a1, node *a2) {
  node *n = take_node();
  clear_header(n);
  n->val.a.a1 = a1;
  n->val.a.a2 = a2;
  return n;
}

// Query-space leaves.
node *LMakeInteger(std::int32_t i);
node *LMakeReal(float r);
node *LMakeCharacter(char c);
node *LMakeString(std::string_view text);
node *LMakeFunction(func_block *fc);
node *LMakeConstructor(cons_block *cs);
node *LMakeBuiltin(func_block *fc, int id);
node *LMakeVariable(int v);
node *LMakeName(symbol *s);

// Copies a tree (heap or query space) into the already taken node `nuw`. Texts and records are
// shared; guards are not copied. Static terms inside are shared, not copied, except `old` itself.
void LCopy_struct_rec(node *nuw, const node *old);
// As LCopy_struct_rec, but copies static terms too, so that every node of the result may be
// written; `quote` is the guard that every node of the copy gets.
void LCopy_whole(node *nuw, const node *old, std::uint8_t quote);
// A copy in a fresh node.
node *LCopy(const node *old);
// The function part of an application in the query space, made its own when it is shared code, so
// that its arguments may be evaluated in place.
node *own_function_part(node *application);

} // namespace velora
