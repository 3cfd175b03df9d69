// What is remembered of evaluations that failed. Every enclosing built-in and the printing force
// their arguments again, and so does each pass of the matcher; without a memory the time of n
// nested calls that stay as they are would double with each of them.
//
// evaluate(n) may answer 0 at once when its last run on n answered 0, nothing that it depends on
// has changed since before that run (core/clock.h), the run took no node of the query space, and
// its nesting would fit below the limit where it is asked for now. Then running it again would show
// nothing, change nothing and answer 0. While calls are traced every run is shown, so none is left
// out.
//
// A node that failed once carries a mark in `aux`, and only marked nodes come here; the next run is
// watched, and if it was clean its note stands until the clock moves or the space is collected
// (when the node may become another).
#pragma once

#include <cstdint>

#include "core/records.h"

namespace velora {

inline constexpr std::uint32_t kFailedOnce = ~0U;

// The deepest nesting reached while a run is watched; beyond all nesting when none is.
extern int gDeepest;

// Whether evaluating `n` now, in an evaluation nested `nesting` deep, would fail as it did before.
bool fails_again(const node *n, int nesting);

// Whether forcing `n` completely, inside evaluations nested `nesting` deep, would again do nothing;
// then `result` is what it answers.
bool forced_before(const node *n, int nesting, int &result);

// Watches the run of one evaluation that is nested `nesting` deep. Runs may be watched inside one
// another; one that is abandoned leaves the outer one as it was.
class WatchedRun {
public:
  explicit WatchedRun(int nesting);
  ~WatchedRun();
  WatchedRun(const WatchedRun &) = delete;
  WatchedRun &operator=(const WatchedRun &) = delete;
  // Keeps what the run has shown: the result of evaluating `n`.
  void settle(node *n, int result);
  // The same for forcing `n` completely.
  void settle_forcing(const node *n, int result);

private:
  [[nodiscard]] bool clean() const;
  int nesting_;
  int outer_deepest_;
  std::uint64_t clock_;
  std::uint64_t taken_;
  std::uint64_t collections_;
};

} // namespace velora
