// The hands of a script: how its mouse and keys reach the windows of the desktop that runs it. The
// desktop without a screen hands them to the program's entries; one with real windows sends them to
// the windows as the window system would.
#pragma once

#include <string>

#include "platform/desk_windows.h"
#include "platform/input.h"

namespace velora {

class ScriptHands {
public:
  virtual ~ScriptHands() = default;
  virtual void mouse(WindowId win, const MouseEvent &event) = 0;
  virtual void key(WindowId win, const KeyEvent &event) = 0;
  // What is shown: the title of a window, and the cursor over pictures.
  virtual std::string title_of(WindowId win) = 0;
  virtual CursorShape cursor() = 0;
  // A line is done: whatever it has set going, such as painting, comes to its end.
  virtual void settle() = 0;
};

} // namespace velora
