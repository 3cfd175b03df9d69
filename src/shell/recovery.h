// When unsaved work is written aside, so that a program that ends without being asked loses little:
// two seconds after the last change while nothing runs, ten seconds after the first change that is
// not written yet at the latest, and at once after a command that stores or removes. Called by the
// entries of the window system; what is written, and the question at the next opening, is the
// database's.
#pragma once

namespace velora {

// Nothing runs: a command has come to its end, or time has passed.
void recovery_look();
// The program ends without being asked: what is unsaved is written now.
void recovery_at_end();
// The next look writes at once.
void recovery_soon();
// Opens windows for the pictures that were shown when unsaved work was written, after it was taken
// into memory.
void show_recovered_pictures();
// Where there are no windows: stores them, each as a further picture of its name that is not
// translated, unless it is a mere view of the stored one. Says so.
void store_recovered_pictures();
// Forgets what was seen; between tests.
void forget_recovery();

} // namespace velora
