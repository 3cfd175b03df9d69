// Bitmaps as files of the format PNG.
#pragma once

#include <string>

#include "shell/win32/w_common.h"

namespace velora::win32 {

// The bytes of such a file; empty when the system cannot make one.
std::string png_of(HBITMAP bitmap);

} // namespace velora::win32
