// Keeping what a query writes.
#include "shell/captured_console.h"

#include "front/cint.h"

namespace velora {

CapturedConsole::CapturedConsole() : behind_(gConsole), prompt_(gConsolePrompt) {
  gConsole = this;
  gConsolePrompt = 0;
}

CapturedConsole::~CapturedConsole() {
  gConsole = behind_;
  gConsolePrompt = prompt_;
}

void CapturedConsole::warn(std::string_view part, int level) {
  if (silent)
    messages += part;
  else
    behind_->warn(part, level);
}

void CapturedConsole::note(std::string_view part) {
  if (!silent)
    behind_->note(part);
}

} // namespace velora
