// Whether a command of the user runs. The gate of commands sets it; the console, which shows its
// text differently then, and the entries ask for it.
#pragma once

namespace velora {

bool command_runs();

// A command runs while this is in scope.
class Running {
public:
  Running();
  ~Running();
  Running(const Running &) = delete;
  Running &operator=(const Running &) = delete;
};

} // namespace velora
