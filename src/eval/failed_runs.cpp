// The notes of clean failed runs: all of one reading of the clock and one collection, so that they
// fall together by a comparison. A node's `aux` is the number of its note, from 1 on.
#include "eval/failed_runs.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "core/clock.h"
#include "core/space.h"
#include "eval/evaluate.h"

namespace velora {

int gDeepest = std::numeric_limits<int>::max();

namespace {

struct Note {
  const node *n; // whose note it is: an `aux` may be left over from another life of the node
  int depth;     // nesting that the run needed below its own
  // The same of forcing it completely, with the answer; -1 when that is not known.
  int forced_depth;
  int forced_result;
};

std::vector<Note> notes;
std::uint64_t notes_clock = 0;
std::uint64_t notes_collections = 0;

bool notes_stand() {
  return notes_clock == clock_reading() && notes_collections == space_counters().collections;
}

// The note of a node when it stands and may be used.
Note *note_of(const node *n) {
  const std::uint32_t number = n->aux - 1;
  if (number >= notes.size() || notes[number].n != n || n->quote != 0 || stack_trace != 0 ||
      !notes_stand())
    return nullptr;
  return &notes[number];
}

// Whether a run that reaches the nesting `deepest` may be left out. One that is watched around it
// would have been as deep.
bool fits(int deepest) {
  if (deepest >= gNestingLimit)
    return false;
  gDeepest = std::max(gDeepest, deepest);
  return true;
}

} // namespace

bool fails_again(const node *n, int nesting) {
  const Note *note = note_of(n);
  return note != nullptr && fits(nesting + note->depth);
}

bool forced_before(const node *n, int nesting, int &result) {
  const Note *note = note_of(n);
  if (note == nullptr || note->forced_depth < 0 || !fits(nesting + note->forced_depth))
    return false;
  result = note->forced_result;
  return true;
}

WatchedRun::WatchedRun(int nesting)
    : nesting_(nesting), outer_deepest_(gDeepest), clock_(clock_reading()),
      taken_(space_counters().nodes_taken), collections_(space_counters().collections) {
  gDeepest = nesting;
}

WatchedRun::~WatchedRun() {
  gDeepest = std::max(gDeepest, outer_deepest_);
}

// Whether the run has changed nothing, shown nothing and taken nothing.
bool WatchedRun::clean() const {
  const SpaceCounters space = space_counters();
  return stack_trace == 0 && clock_ == clock_reading() && taken_ == space.nodes_taken &&
         collections_ == space.collections;
}

void WatchedRun::settle(node *n, int result) {
  n->aux = result == 0 ? kFailedOnce : 0;
  if (result != 0 || n->quote != 0 || !clean())
    return;
  if (!notes_stand()) {
    notes.clear();
    notes_clock = clock_;
    notes_collections = collections_;
  }
  notes.push_back({n, gDeepest - nesting_, -1, 0});
  n->aux = static_cast<std::uint32_t>(notes.size());
}

// A forcing that was clean has left a note of its first evaluation.
void WatchedRun::settle_forcing(const node *n, int result) {
  Note *note = note_of(n);
  if (note == nullptr || !clean())
    return;
  note->forced_depth = gDeepest - nesting_;
  note->forced_result = result;
}

} // namespace velora
