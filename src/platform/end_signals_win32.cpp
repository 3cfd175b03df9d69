// Windows asks by messages to the frame instead.
#include "platform/end_signals.h"

namespace velora {

void catch_end_signals() {}

} // namespace velora
