// Hang-ups and requests to end on systems of the Unix family.
#include "platform/end_signals.h"

#include <csignal>

#include "platform/interrupt.h"

namespace velora {

namespace {

void note_end(int signal) {
  gEndAsked = signal;
  gInterrupted = 1;
}

} // namespace

void catch_end_signals() {
  // Calls that wait are not taken up again: they are woken by the signals.
  struct sigaction action = {};
  sigemptyset(&action.sa_mask);
  action.sa_handler = note_end;
  sigaction(SIGTERM, &action, nullptr);
  // Who starts the program with hang-ups ignored wants it to outlive its terminal.
  struct sigaction before = {};
  sigaction(SIGHUP, nullptr, &before);
  if (before.sa_handler != SIG_IGN)
    sigaction(SIGHUP, &action, nullptr);
}

} // namespace velora
