// The parts of the running program, in the order of their making: the frame, the desktop over it,
// the menus. Made by main and by the window tests.
#pragma once

#include <QObject>

#include <string>

#include "shell/qt/q_frame.h"
#include "shell/window_desktop.h"

namespace velora::qt {

// Sees the keys before any window does: Esc stops the command that runs, unless a dialog is open.
class InterruptKey : public QObject {
protected:
  bool eventFilter(QObject *watched, QEvent *event) override;
};

class Program {
public:
  // Takes the places of the desktop and the console; `lib_dir` may be empty.
  explicit Program(const std::string &lib_dir);
  ~Program();
  Program(const Program &) = delete;
  Program &operator=(const Program &) = delete;

  // Opens the console, starts the language and opens `database` if one is named; 1, or 0 after the
  // failure has been shown.
  int start(const std::string &database);
  Frame &window() { return frame_; }

private:
  Frame frame_;
  WindowDesktop desktop_;
  InterruptKey interrupt_key_;
};

} // namespace velora::qt
