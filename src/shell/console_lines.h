// The lines typed or pasted in CONTROL: queries, sections of declarations and definitions, and the
// commands that begin with a colon. Each complete line is run through the gate in its turn.
#pragma once

#include <string>

namespace velora {

// Strips the prompt from `line` and runs it as a query, or asks to type it again. 1 when it ran.
int GetQuery(const std::string &line);
// The user changed the typed text: runs each line that is complete.
void console_changed();
// Puts the line `step` places later (1) or earlier (-1) in place of what is typed; 1 or 0.
int console_recall(int step);
// Takes up the queries that a file keeps, and keeps further ones there; an empty name ends that.
void keep_history_in(const std::string &file);
// Leaves a section that is being typed: the next line is a query.
void leave_section();

} // namespace velora
