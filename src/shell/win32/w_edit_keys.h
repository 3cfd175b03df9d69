// What the edit controls of text windows do beyond the system's own: keys and protection of the
// console's older text, and messages shown in red.
#pragma once

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// The procedure laid over every edit control; `id` is the number of the text window.
LRESULT CALLBACK EditKeysProc(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                              DWORD_PTR id);

} // namespace velora::win32
