// Chunks of the stack of spines. The first is part of the program and serves all but very long
// spines and very deep nesting.
#include "eval/spine.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <vector>

#include "core/needs.h"

namespace velora {

namespace {

constexpr std::size_t kFirstChunk = 1 << 18;

std::array<node *, kFirstChunk> first_chunk;

struct Chunk {
  std::unique_ptr<node *[]> entries;
  SpineStack before; // the stack as it was when the chunk was made
};
std::vector<Chunk> chunks;

} // namespace

SpineStack gSpines = {first_chunk.data(), first_chunk.data() + kFirstChunk, 0};

Frame grow_spines(Frame frame) {
  const auto used = static_cast<std::size_t>(frame.top - frame.at);
  const std::size_t size = std::max(kFirstChunk, used * 4);
  std::unique_ptr<node *[]> entries(new (std::nothrow) node *[size]);
  if (entries == nullptr)
    error_exit("CAlloc failed");
  node **const end = entries.get() + size;
  std::copy(frame.at, frame.top, end - used);
  const SpineStack before = gSpines;
  gSpines = {entries.get(), end - used, before.chunks + 1};
  chunks.push_back({std::move(entries), before});
  return {end - used, end};
}

void release_spines(node **mark, int chunk_count) {
  while (gSpines.chunks > chunk_count) {
    gSpines = chunks.back().before;
    chunks.pop_back();
  }
  gSpines.next = mark;
}

void reset_spines() {
  chunks.clear();
  gSpines = {first_chunk.data(), first_chunk.data() + kFirstChunk, 0};
}

} // namespace velora
