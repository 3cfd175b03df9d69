// The slow side of the event hook, and the guard of the machine's stack.
#include "core/events.h"

#include "core/needs.h"
#include "platform/console.h"

namespace velora {

int event_countdown = 0;

namespace {

// Steps between two looks at the interface: a few milliseconds of evaluation.
constexpr int kStepsBetweenPolls = 20000;
// What must remain of the stack for a message to be shown and the command to be abandoned.
constexpr std::size_t kStackMargin = 256 * 1024;
} // namespace

void poll_user_events() {
  event_countdown = kStepsBetweenPolls;
  if (InterruptHold::depth == 0 && gConsole->interrupted()) {
    gInterrupted = 0;
    error_exit(kInterrupted);
  }
}

std::uintptr_t stack_limit = 0;

void refuse_depth() {
  error_exit("Sorry! This is nested too deeply\n");
}

void set_stack_limit(std::size_t bytes) {
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  stack_limit = here - bytes + kStackMargin;
}

} // namespace velora
