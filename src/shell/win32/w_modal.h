// What holds while a dialog stands: no other window of the program takes keys, clicks or requests
// to close. Used around every dialog, of ours and of the system.
#pragma once

#include <vector>

#include "shell/win32/w_common.h"

namespace velora::win32 {

// In scope from before a dialog is opened until it has gone. The owner is left to the dialog, which
// enables it before it goes itself: so the focus returns to it and no other program comes to the
// front. The rest is enabled after that.
class ModalScope {
public:
  ModalScope();
  ~ModalScope();
  ModalScope(const ModalScope &) = delete;
  ModalScope &operator=(const ModalScope &) = delete;
  // The window that the dialog belongs to: the one in front, so that the focus goes back there.
  HWND owner() const { return owner_; }

private:
  HWND owner_;
  std::vector<HWND> disabled_;
};

// While a dialog stands, brings it to the front, beeps and answers true: whatever else was asked
// for has to wait.
bool dialog_comes_first();

} // namespace velora::win32
