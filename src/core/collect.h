// What the pool and the collector share; for core alone.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/records.h"

namespace velora {

// The nodes of the query space: `node_count` accounted ones and the overdraft.
struct Pool {
  node *nodes;
  std::size_t count;
};
extern Pool gPool;

// Records a collection that reached `reached` accounted nodes and restarts the cursor.
void note_collection(std::int64_t reached);
// True in stress mode, where dead nodes are poisoned.
bool collect_stress();
// Starts a new epoch, in which no node is reached yet.
void start_epoch();
// Frees every text without references and all retired clause code: the space is empty.
void forget_texts_and_code();

} // namespace velora
