// The storage of the interrupt flag.
#include "platform/interrupt.h"

namespace velora {

volatile std::sig_atomic_t gInterrupted = 0;
volatile std::sig_atomic_t gEndAsked = 0;

} // namespace velora
