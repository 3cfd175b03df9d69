// What every handler that the window system calls passes through, so that nothing unwinds through
// the system's frames: what cannot be dealt with, because memory is short, is left undone.
#pragma once

#include "shell/return_point.h"

namespace velora::qt {

// Does `work`. The step takes one reference, so that making it takes no memory.
template <class Work> void guarded(Work &&work) {
  run_step([&work] { work(); });
}

} // namespace velora::qt
