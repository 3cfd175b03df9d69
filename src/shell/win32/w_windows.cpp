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

bool shows_picture(WindowKind kind) {
  return kind >= kFunctionWindow && kind <= kNetworkWindow;
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
