// What the program asks of a desktop, parted by role: windows, text panes, menus, dialogs.
// Implemented by the desktop programs, by the runner of event scripts and by the recorder of the
// tests; a NullDesktop is that of programs without windows.
#pragma once

#include "platform/desk_dialogs.h"
#include "platform/desk_menus.h"
#include "platform/desk_texts.h"
#include "platform/desk_windows.h"

namespace velora {

class Desktop : public DeskWindows, public DeskTexts, public DeskMenus, public DeskDialogs {
public:
  ~Desktop() override = default;
  // The text that is cut, copied and pasted.
  virtual std::string clipboard_text() = 0;
  virtual void set_clipboard_text(const std::string &text) = 0;
  // Services painting and the interrupt keys, waiting up to `milliseconds` for something to do.
  virtual void pump(int milliseconds) = 0;
  virtual void beep() = 0;
  virtual void quit() = 0;
};

// The desktop in use; never null.
extern Desktop *gDesktop;

} // namespace velora
