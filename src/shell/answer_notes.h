// What the terminal asks about answers that stayed as they were written.
#pragma once

namespace velora {

// Non-zero gives answers their notes. Off, the notes beside messages are shown all the same: who
// works with terms that stay as they are, on purpose, needs no word about each.
extern int gAnswerNotes;

// How many answers held a call that no rule reduced, since the program started.
extern int gAnswersLeft;

} // namespace velora
