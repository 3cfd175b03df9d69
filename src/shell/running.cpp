// The flag of the command that runs.
#include "shell/running.h"

namespace velora {

namespace {

bool running = false;

} // namespace

bool command_runs() {
  return running;
}

Running::Running() {
  running = true;
}

Running::~Running() {
  running = false;
}

} // namespace velora
