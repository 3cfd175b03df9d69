// The hands of a script in real windows: its mouse and keys are sent to the widgets as the window
// system would send them.
#pragma once

#include "shell/events/script_hands.h"

namespace velora::qt {

class WindowHands : public ScriptHands {
public:
  void mouse(WindowId win, const MouseEvent &event) override;
  void key(WindowId win, const KeyEvent &event) override;
  std::string title_of(WindowId win) override;
  CursorShape cursor() override;
  void settle() override;
};

} // namespace velora::qt
