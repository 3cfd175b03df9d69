// The return point: the one place where commands that were abandoned come back to. Every entry from
// outside (a line of the terminal, a window message, a dialog) runs through run_command, so nothing
// unwinds through frames that are not ours.
#pragma once

#include <functional>

namespace velora {

// How a command ended.
enum class CommandEnd {
  done,       // it ran to its end, also after retries with a larger query space, or threw a value
  failed,     // it answered 0, reported errors or was abandoned with a message
  interrupted // the user stopped it
};

// A command answers 0 when it failed.
using Command = std::function<int()>;

// Runs `command` and deals with its abandonment after everything has been unwound, in a loop, so
// that retries never nest:
//  - out of query space: the space is doubled and the query gQuery runs again; when no query of the
//    console is the cause, `again` runs in its place if there is one;
//  - "throw": the value left at the query root is printed as the answer;
//  - anything else: the message is shown, menus are enabled, the query space is emptied.
CommandEnd run_command(const Command &command, const Command &again = nullptr);

// Runs a step of the window system that is no command, such as painting, also while a command runs.
// A step that is abandoned, because memory is short, is left undone. 1 when it came to its end.
int run_step(const std::function<void()> &step);

} // namespace velora
