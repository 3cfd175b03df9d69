// What a POSIX system tells of its machine.
#include "platform/machine.h"

#include <unistd.h>

namespace velora {

std::uint64_t machine_memory() {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long bytes = sysconf(_SC_PAGESIZE);
  return pages > 0 && bytes > 0
             ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(bytes)
             : 0;
}

} // namespace velora
