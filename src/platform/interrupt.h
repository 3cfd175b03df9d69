// The interrupt flag. A signal handler or the window system sets it; the event hook reads it.
#pragma once

#include <csignal>

namespace velora {

// Non-zero once the user has asked to stop what runs.
extern volatile std::sig_atomic_t gInterrupted;

// The signal that asks the program to end, once it has come: unsaved work is kept and the program
// ends after the command that runs, which is stopped.
extern volatile std::sig_atomic_t gEndAsked;

// While one is in scope nothing is stopped: a save that has begun is finished. The flag stays set
// for what comes after.
class InterruptHold {
public:
  InterruptHold() { ++depth; }
  ~InterruptHold() { --depth; }
  InterruptHold(const InterruptHold &) = delete;
  InterruptHold &operator=(const InterruptHold &) = delete;
  inline static int depth = 0;
};

} // namespace velora
