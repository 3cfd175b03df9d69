// The longest time that a command may take, which --timeout sets: a command that takes longer is
// stopped as by the interrupt key.
#pragma once

namespace velora {

// The limit in seconds; 0 for none.
extern int gSeconds;

// While one is in scope the clock runs.
class TimeLimit {
public:
  TimeLimit();
  ~TimeLimit();
  TimeLimit(const TimeLimit &) = delete;
  TimeLimit &operator=(const TimeLimit &) = delete;
  // True when the time is over.
  [[nodiscard]] bool passed() const;
};

// The signal of the clock calls this.
void note_time_passed(int signal);

} // namespace velora
