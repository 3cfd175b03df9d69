// Disabling and enabling of windows around dialogs. Counts the dialogs that stand.
#include "shell/win32/w_modal.h"

#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

int standing = 0;

// The top windows of the program that the user could work with, the front one first.
std::vector<HWND> usable_windows() {
  std::vector<HWND> found = top_windows();
  std::erase_if(found, [](HWND window) {
    return IsWindowVisible(window) == FALSE || IsWindowEnabled(window) == FALSE;
  });
  return found;
}

} // namespace

// What needs memory comes first: what is counted and disabled here is undone by the destructor
// only.
ModalScope::ModalScope()
    : owner_(GetActiveWindow() != nullptr ? GetActiveWindow() : hVel), disabled_(usable_windows()) {
  std::erase(disabled_, owner_);
  ++standing;
  for (const HWND window : disabled_)
    EnableWindow(window, FALSE);
}

ModalScope::~ModalScope() {
  --standing;
  for (const HWND window : disabled_)
    if (IsWindow(window) != FALSE)
      EnableWindow(window, TRUE);
}

bool dialog_comes_first() {
  if (standing == 0)
    return false;
  MessageBeep(MB_OK);
  if (const auto windows = usable_windows(); !windows.empty())
    SetForegroundWindow(windows.front());
  return true;
}

} // namespace velora::win32
