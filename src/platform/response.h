// The system's own names for talking with its user. All code above the platform calls these and
// none calls the console directly, so that every text can be recorded and redirected in one place.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/console.h"

#if defined(__MINGW32__)
#define VELORA_PRINTF(f, a) __attribute__((format(gnu_printf, f, a)))
#else
#define VELORA_PRINTF(f, a) __attribute__((format(printf, f, a)))
#endif

namespace velora {

// Non-zero sends orvek_print to the narrative window and prints values without their marks.
extern int gNarPrint;
// Non-zero prints " ." for each command of a file that loads (off in batch runs).
extern int gProgressDots;
// Non-zero gives the answers of a file that loads lines of their own, for scripts (on in batch
// runs, where no dots stand between them).
extern int gAnswerLines;
// Non-zero allows the extra lines of help beside messages.
extern int gNotes;

// Appends `text` to the console, whatever the narrative flag says.
void DisplayResponse(std::string_view text);
void DisplayResponsef(const char *format, ...) VELORA_PRINTF(1, 2);
// Ends the line that the console stands in, if gAnswerLines is set and something stands there.
void end_answer_line();
// Appends `text` to the console, or to the narrative window when gNarPrint is set.
void orvek_print(std::string_view text);
void orvek_printf(const char *format, ...) VELORA_PRINTF(1, 2);
// Shows a message that beeps: a warning (level 0) or an error (level 1).
void BeepMsge(std::string_view text, int level);
void BeepMsgef(int level, const char *format, ...) VELORA_PRINTF(2, 3);
// The error display: a message that beeps, of level 1.
void orvek_error(std::string_view text);
void orvek_errorf(const char *format, ...) VELORA_PRINTF(1, 2);
// A line of help beside a message; nothing when gNotes is 0.
void show_note(std::string_view text);
// The answer of a question that was cancelled.
inline constexpr int kCancelled = 5;
// Asks `message` with up to four `buttons` and "Cancel"; answers 1 to 4, or kCancelled.
// A trailing "Cancel" among `buttons` is dropped, since it is always offered.
int PromptUser(const std::string &message, std::initializer_list<const char *> buttons);
// Asks for a short text with the hint "Please type here"; answers 1 and fills `answer`, or 0.
int GetUserDialogText(const std::string &prompt, std::string &answer);
// All menus off and on around a command that runs.
void DisableAllMenus();
void EnableAllMenus();
// One menu item off or on.
void gDisableItem(int command);
void gEnableItem(int command);
// Whether an item is on as far as these two know; one that they never switched is.
bool gItemEnabled(int command);
// Formats into a string of any length.
std::string format_text(const char *format, ...) VELORA_PRINTF(1, 2);

} // namespace velora
