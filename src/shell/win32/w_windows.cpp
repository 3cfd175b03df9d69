// The table of open windows and the measures of the screen. Holds the records of all windows.
#include "shell/win32/w_windows.h"

#include <algorithm>
#include <memory>

namespace velora::win32 {

HWND hVel = nullptr;
HINSTANCE hInst = nullptr;
HACCEL hAccel = nullptr;

namespace {

std::vector<std::unique_ptr<Window>> windows;
WindowId last_id = 0;

template <class Test> Window *first_with(Test test) {
  const auto found = std::find_if(windows.begin(), windows.end(), test);
  return found == windows.end() ? nullptr : found->get();
}

} // namespace

Window *find_window(WindowId id) {
  return first_with([id](const auto &w) { return w->id == id; });
}

Window *find_window(HWND hwnd) {
  if (hwnd == nullptr)
    return nullptr;
  return first_with([hwnd](const auto &w) { return w->hwnd == hwnd || w->edit == hwnd; });
}

Window *add_window(WindowKind kind) {
  windows.push_back(std::make_unique<Window>());
  windows.back()->id = ++last_id;
  windows.back()->kind = kind;
  return windows.back().get();
}

void remove_window(WindowId id) {
  std::erase_if(windows, [id](const auto &w) { return w->id == id; });
}

// They are counted first, so that nothing is allocated while the system lists them.
std::vector<HWND> top_windows() {
  std::size_t count = 0;
  const auto count_one = [](HWND, LPARAM counter) -> BOOL {
    ++*reinterpret_cast<std::size_t *>(counter);
    return TRUE;
  };
  EnumThreadWindows(GetCurrentThreadId(), count_one, reinterpret_cast<LPARAM>(&count));
  std::vector<HWND> found;
  found.reserve(count);
  const auto add_one = [](HWND window, LPARAM list) -> BOOL {
    auto &all = *reinterpret_cast<std::vector<HWND> *>(list);
    if (all.size() < all.capacity())
      all.push_back(window);
    return TRUE;
  };
  EnumThreadWindows(GetCurrentThreadId(), add_one, reinterpret_cast<LPARAM>(&found));
  return found;
}

unsigned dpi_of(HWND hwnd) {
  const UINT dpi = GetDpiForWindow(hwnd != nullptr ? hwnd : hVel);
  return dpi != 0 ? dpi : 96;
}

int to_dots(HWND hwnd, int units) {
  return MulDiv(units, static_cast<int>(dpi_of(hwnd)), 96);
}

int to_units(HWND hwnd, int dots) {
  return MulDiv(dots, 96, static_cast<int>(dpi_of(hwnd)));
}

} // namespace velora::win32
