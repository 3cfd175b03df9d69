// The clock of everything that waits for time to pass, such as a recovery file that is written when
// the user pauses. Event scripts move it on, so that they need not wait.
#pragma once

#include <cstdint>

namespace velora {

// Milliseconds since some fixed moment; never goes back.
std::int64_t now_ms();
// Lets `milliseconds` more pass at once.
void advance_clock(std::int64_t milliseconds);

} // namespace velora
