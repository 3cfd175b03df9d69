// The clock of a command, by the system's alarm.
#include "shell/terminal/time_limit.h"

#include <csignal>
#include <unistd.h>

#include "platform/interrupt.h"

namespace velora {

int gSeconds = 0;

namespace {

volatile std::sig_atomic_t time_passed = 0;

} // namespace

void note_time_passed(int) {
  time_passed = 1;
  gInterrupted = 1;
}

TimeLimit::TimeLimit() {
  time_passed = 0;
  if (gSeconds > 0)
    ::alarm(static_cast<unsigned>(gSeconds));
}

TimeLimit::~TimeLimit() {
  if (gSeconds > 0)
    ::alarm(0);
}

bool TimeLimit::passed() const {
  return time_passed != 0;
}

} // namespace velora
