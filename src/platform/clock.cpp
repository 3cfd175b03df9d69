// The steady clock of the machine, and how far scripts have moved it on.
#include "platform/clock.h"

#include <chrono>

namespace velora {

namespace {

std::int64_t moved_on = 0;

} // namespace

std::int64_t now_ms() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count() + moved_on;
}

void advance_clock(std::int64_t milliseconds) {
  moved_on += milliseconds;
}

} // namespace velora
