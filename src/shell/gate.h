// The gate that commands of the user go through, one at a time, and what is done when one has
// ended. Below the entries of the window system and below the lines typed in CONTROL, which both
// send commands through it.
#pragma once

#include "platform/desktop.h"
#include "shell/return_point.h"
#include "shell/running.h"

namespace velora {

// Runs a command through the return point and nothing else; for the start of the program.
CommandEnd run_alone(const Command &command);
// What waited for a command to end: windows are closed that the user asked to close meanwhile, the
// prompt stands again, graphics windows, menus and the frame's title are brought up to date.
void after_command();
// Both, unless a command runs already or the program has ended: then it beeps and the answer is
// failed.
CommandEnd run_gated(const Command &command);

// Closes a window (0 is the frame) when the command that runs has ended.
void close_afterwards(WindowId win);
bool closing_waits();
// Closes it now, asking what has to be asked. Answers 1.
int close_now(WindowId win);

// Closes the frame without a question.
void end_desktop();
// True once the frame is going.
bool desktop_ended();
// The frame tells which database is open and whether it has changes.
void show_database_state();

} // namespace velora
