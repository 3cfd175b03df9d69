// The requests of the system to end the program.
#pragma once

namespace velora {

// From now on a hang-up and a request to end set gEndAsked and stop what runs, so that unsaved work
// can be kept before the program ends.
void catch_end_signals();

} // namespace velora
