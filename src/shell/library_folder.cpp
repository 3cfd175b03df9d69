// Finding what is installed with the program, from the place of the program itself.
#include "shell/library_folder.h"

#include <filesystem>

#include "eval/registry.h"

namespace velora {

namespace fs = std::filesystem;

namespace {

fs::path program_folder() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).parent_path();
}

} // namespace

std::string find_library_folder() {
  std::error_code error;
  for (const char *place : {"../../../lib", "../share/velora/lib"}) {
    const fs::path dir = (program_folder() / place).lexically_normal();
    if (fs::exists(dir / "bis.fdb", error))
      return dir.string();
  }
  return gLibDir;
}

std::string find_shared(const std::string &name) {
  std::error_code error;
  for (const char *place : {"../../..", "../share/velora", "../share/doc/velora"}) {
    const fs::path found = (program_folder() / place / name).lexically_normal();
    if (fs::exists(found, error))
      return found.string();
  }
  return {};
}

} // namespace velora
