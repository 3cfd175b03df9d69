// The storage of the interrupt flag.
#include "platform/interrupt.h"

namespace velora {

volatile std::sig_atomic_t gInterrupted = 0;

} // namespace velora
