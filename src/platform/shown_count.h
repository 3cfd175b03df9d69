// How often something out of the way of an answer was said, for those who must know whether it was.
#pragma once

#include <cstdint>

namespace velora {

// Messages, notes and questions since the program started; printed answers do not count.
extern std::uint64_t gShown;

} // namespace velora
