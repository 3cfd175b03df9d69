// What the machine has.
#pragma once

#include <cstdint>

namespace velora {

// Bytes of memory; 0 when the system does not tell.
std::uint64_t machine_memory();

} // namespace velora
