// The interrupt flag. A signal handler or the window system sets it; the event hook reads it.
#pragma once

#include <csignal>

namespace velora {

// Non-zero once the user has asked to stop what runs.
extern volatile std::sig_atomic_t gInterrupted;

} // namespace velora
