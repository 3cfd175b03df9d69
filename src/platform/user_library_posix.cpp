// Shared libraries where dlopen is the way to them.
#include <dlfcn.h>

#include "platform/user_library.h"

namespace velora {

void *load_library_symbol(const char *file, const char *name, std::string &why) {
  void *library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
  void *symbol = library == nullptr ? nullptr : dlsym(library, name);
  if (symbol == nullptr) {
    const char *reason = dlerror();
    why = reason == nullptr ? "no such function" : reason;
  }
  return symbol;
}

} // namespace velora
