// Shared libraries where LoadLibrary is the way to them.
#include <windows.h>

#include "platform/user_library.h"

namespace velora {

void *load_library_symbol(const char *file, const char *name, std::string &why) {
  HMODULE library = LoadLibraryA(file);
  if (library == nullptr) {
    why = "error " + std::to_string(GetLastError());
    return nullptr;
  }
  auto symbol = reinterpret_cast<void *>(GetProcAddress(library, name));
  if (symbol == nullptr)
    why = std::string("it has no function ") + name;
  return symbol;
}

} // namespace velora
