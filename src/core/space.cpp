// The pool of the query space: allocation, resizing and the roots. The collector itself is in
// collect.cpp.
#include "core/space.h"

#include <algorithm>
#include <cstdlib>

#include "core/collect.h"
#include "core/needs.h"
#include "core/symbols.h"
#include "core/text.h"
#include "platform/response.h"

namespace velora {

std::int32_t node_count = kInitialNodes;
std::int64_t gMaxNodes = 0;
bool gSpaceAtCeiling = false;
node *Copy_root = nullptr;
node *Query_root = nullptr;
node *Tn1 = nullptr;
node *Tn2 = nullptr;
node *Tn3 = nullptr;
Evalroot *Eval_rootp = nullptr;
Root *gRootTop = nullptr;
SpaceState gSpace = {nullptr, nullptr, 0, 1};
Pool gPool = {nullptr, 0};

namespace {

// Commands of the menu entries that resizing turns on and off.
constexpr int kIncreaseItem = 403;
constexpr int kDecreaseItem = 404;
constexpr int kResetItem = 405;

constexpr std::int32_t kShrinkStep = 5120;
constexpr int kBytesPerNode = 10; // as sizes of the space are told to the user

// Spaces below this size have no room beyond what is accounted.
constexpr std::int64_t kSmallSpace = 4096;
// What a large space has beyond it at the most.
constexpr std::int32_t kMostOverdraft = 8'000'000;

// Texts that may be made between two collections even when they have nearly reached the ceiling, so
// that a space full of them does not collect for each.
constexpr std::size_t kLeastTextBudget = 64 << 10;

unsigned stress_every = 0;
std::uint64_t taken_before = 0;
std::int64_t budget_at_start = 0;
std::uint64_t collections = 0;
std::int64_t in_use = 0;

// Nodes beyond `node_count` that may be in use between two collections. With as many as the space
// holds, a space that is nearly full collects no oftener than it is filled anew.
std::int64_t overdraft() {
  return node_count < kSmallSpace ? 0 : std::min(node_count, kMostOverdraft);
}

void settle_taken() {
  taken_before += static_cast<std::uint64_t>(budget_at_start - gSpace.budget);
  budget_at_start = gSpace.budget;
}

void set_budget(std::int64_t nodes) {
  gSpace.budget = nodes;
  budget_at_start = nodes;
}

// Bytes that nodes and texts may use together.
std::size_t ceiling_bytes() {
  return gMaxNodes > 0 ? static_cast<std::size_t>(gMaxNodes) * sizeof(node) : SIZE_MAX;
}

std::size_t bytes_in_use() {
  return static_cast<std::size_t>(in_use) * sizeof(node) + text_bytes_in_use();
}

[[noreturn]] void refuse_at_ceiling() {
  gSpaceAtCeiling = true;
  error_exit("Insufficient Query Space\n");
}

// Collects and gives out the next budget, of at least `wanted` nodes.
void collect_for(std::int64_t wanted) {
  settle_taken();
  if (gPool.nodes != nullptr)
    garbage_collect();
  if (text_bytes_in_use() != 0 && bytes_in_use() > ceiling_bytes()) {
    set_budget(0);
    refuse_at_ceiling();
  }
  const std::int64_t unused = node_count - in_use;
  if (gPool.nodes == nullptr || unused <= 0 || unused + overdraft() < wanted) {
    set_budget(0);
    error_exit("Insufficient Query Space\n");
  }
  std::int64_t budget = unused > overdraft() ? unused : overdraft();
  if (budget < wanted)
    budget = unused + overdraft();
  if (stress_every != 0 && budget > stress_every)
    budget = stress_every > wanted ? stress_every : wanted;
  set_budget(budget);
}

} // namespace

node *take_node_slowly() {
  collect_for(1);
  --gSpace.budget;
  node *n = gSpace.cursor;
  while (n < gSpace.end && n->mark == gSpace.epoch)
    ++n;
  if (n >= gSpace.end)
    error_exit("Insufficient Query Space\n");
  gSpace.cursor = n + 1;
  return n;
}

void reserve_slowly(std::int64_t count) {
  if (count > node_count)
    error_exit("Insufficient Query Space\n");
  collect_for(count);
}

void collect_at_next_node() {
  settle_taken();
  set_budget(0);
}

void check_text_fits(std::size_t len) {
  if (len > ceiling_bytes())
    refuse_at_ceiling();
}

void note_collection(std::int64_t reached) {
  settle_taken();
  ++collections;
  in_use = reached;
  set_budget(node_count > reached ? node_count - reached : 0);
  const std::size_t used = bytes_in_use();
  const std::size_t room = ceiling_bytes() > used ? ceiling_bytes() - used : 0;
  set_text_budget(std::clamp(room, kLeastTextBudget, kMostTextBudget));
  gSpace.cursor = gPool.nodes;
  gSpace.end = gPool.nodes + gPool.count;
}

SpaceCounters space_counters() {
  settle_taken();
  return {taken_before, collections};
}

std::int64_t nodes_in_use() {
  return in_use;
}

void set_collect_stress(unsigned every) {
  stress_every = every;
  if (every != 0 && gSpace.budget > every)
    set_budget(every);
}

bool collect_stress() {
  return stress_every != 0;
}

int alloc_free_list() {
  free_node_stack();
  const std::int64_t ceiling = gMaxNodes > 0 ? gMaxNodes : INT32_MAX;
  int at_first = 1;
  while (node_count >= 1) {
    if (node_count <= ceiling) {
      const auto count = static_cast<std::size_t>(node_count + overdraft() + 1);
      gPool.nodes = static_cast<node *>(std::calloc(count, sizeof(node)));
      if (gPool.nodes != nullptr) {
        gPool.count = count;
        return at_first;
      }
    }
    if (at_first != 0)
      gDisableItem(kIncreaseItem);
    at_first = 0;
    node_count -= kShrinkStep;
  }
  return 0;
}

void free_node_stack() {
  std::free(gPool.nodes);
  gPool = {nullptr, 0};
  gSpace.cursor = gSpace.end = nullptr;
  set_budget(0);
}

void init_free_list() {
  if (gPool.nodes == nullptr)
    return;
  Copy_root = Query_root = Tn1 = Tn2 = Tn3 = nullptr;
  for (Root *r = gRootTop; r != nullptr; r = r->previous())
    *r = nullptr;
  free_eval_roots();
  start_epoch();
  note_collection(0);
  if (stress_every != 0)
    set_collect_stress(stress_every);
  forget_texts_and_code();
  free_retired();
}

int resize_free_list(int choice) {
  std::int64_t wanted = kInitialNodes;
  if (choice == 1)
    wanted = node_count / 2;
  else if (choice == 2)
    wanted = std::int64_t{node_count} * 2;
  if (wanted > INT32_MAX / 2)
    wanted = INT32_MAX / 2;
  // The nodes go now, before the new ones come, so that both never stand in memory together.
  Query_root = Copy_root = nullptr;
  free_node_stack();
  node_count = static_cast<std::int32_t>(wanted);
  if (choice == 0) {
    gDisableItem(kResetItem);
    gEnableItem(kIncreaseItem);
  } else if (choice == 1) {
    if (node_count < kInitialNodes)
      BeepMsge("Warning: Query space below initial value\n", 0);
    gEnableItem(kIncreaseItem);
    gEnableItem(kResetItem);
  } else {
    gEnableItem(kDecreaseItem);
    gEnableItem(kResetItem);
  }
  // A smaller space than wanted will do; init_free_list then drops the roots into the old one.
  const int whole = alloc_free_list();
  if (gPool.nodes == nullptr)
    error_exit("No available memory for Query space.\n");
  init_free_list();
  DisplayResponsef("\nQuery space now set at %dK\n",
                   static_cast<int>(std::int64_t{node_count} * kBytesPerNode / 1024));
  return whole;
}

node **new_root_addr() {
  Evalroot **link = &Eval_rootp;
  for (; *link != nullptr; link = &(*link)->next)
    if ((*link)->root == nullptr)
      return &(*link)->root;
  auto *cell = static_cast<Evalroot *>(std::calloc(1, sizeof(Evalroot)));
  if (cell == nullptr)
    error_exit("Unable to allocate further memory\n");
  *link = cell;
  return &cell->root;
}

void free_eval_roots() {
  while (Eval_rootp != nullptr) {
    Evalroot *const cell = Eval_rootp;
    Eval_rootp = cell->next;
    cell->root = nullptr;
    std::free(cell);
  }
}

} // namespace velora
