// Disabling and enabling of windows around dialogs. Counts the dialogs that stand.
#include "shell/win32/w_modal.h"

#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

int standing = 0;

// The top windows of the program that the user could work with, the front one first.
std::vector<HWND> usable_windows() {
  std::vector<HWND> found;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM list) -> BOOL {
        if (IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE)
          reinterpret_cast<std::vector<HWND> *>(list)->push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

} // namespace

ModalScope::ModalScope() : owner_(GetActiveWindow()) {
  if (owner_ == nullptr)
    owner_ = hVel;
  ++standing;
  for (const HWND window : usable_windows())
    if (window != owner_) {
      EnableWindow(window, FALSE);
      disabled_.push_back(window);
    }
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
  for (const HWND window : usable_windows()) {
    SetForegroundWindow(window);
    break;
  }
  return true;
}

} // namespace velora::win32
