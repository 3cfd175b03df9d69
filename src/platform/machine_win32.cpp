// What Windows tells of its machine.
#include "platform/machine.h"

#include <windows.h>

namespace velora {

std::uint64_t machine_memory() {
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof status;
  return GlobalMemoryStatusEx(&status) != 0 ? status.ullTotalPhys : 0;
}

} // namespace velora
