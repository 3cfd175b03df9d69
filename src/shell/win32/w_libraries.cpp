// Finding and unpacking the libraries. Called once by the start of the program.
#include "shell/win32/w_libraries.h"

#include <cstdio>
#include <filesystem>

#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

namespace fs = std::filesystem;

struct Library {
  const char *file;
  const wchar_t *resource;
};
constexpr Library kLibraries[] = {
    {"bis.fdb", L"BisLibrary"}, {"sys.fdb", L"SysLibrary"}, {"user.fdb", L"UserLibrary"}};

bool has_libraries(const fs::path &folder) {
  std::error_code failed;
  return fs::exists(folder / "bis.fdb", failed) && fs::exists(folder / "sys.fdb", failed);
}

std::wstring program_name() {
  std::wstring name(32768, L'\0');
  name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
  return name;
}

void unpack(const Library &library, const fs::path &folder) {
  const HRSRC found = FindResourceW(hInst, library.resource, MAKEINTRESOURCEW(10)); // RT_RCDATA
  if (found == nullptr)
    return;
  const HGLOBAL loaded = LoadResource(hInst, found);
  const void *bytes = LockResource(loaded);
  std::FILE *out = _wfopen((folder / library.file).c_str(), L"wb");
  if (out == nullptr)
    return;
  std::fwrite(bytes, 1, SizeofResource(hInst, found), out);
  std::fclose(out);
}

} // namespace

std::string program_folder() {
  return narrow(fs::path(program_name()).parent_path().wstring()) + "\\";
}

Libraries::Libraries() {
  const fs::path here = fs::path(program_name()).parent_path();
  for (const fs::path &folder : {here, here / "lib"})
    if (has_libraries(folder)) {
      folder_ = narrow(folder.wstring());
      return;
    }
  std::error_code failed;
  const fs::path folder =
      fs::temp_directory_path(failed) / ("velora-lib-" + std::to_string(GetCurrentProcessId()));
  fs::create_directories(folder, failed);
  unpacked_ = true;
  for (const Library &library : kLibraries)
    unpack(library, folder);
  folder_ = narrow(folder.wstring());
}

Libraries::~Libraries() {
  std::error_code failed;
  if (unpacked_)
    fs::remove_all(fs::path(widen(folder_)), failed);
}

} // namespace velora::win32
