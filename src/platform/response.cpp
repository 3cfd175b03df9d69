// Sends the program's texts and questions to the console and desktop in use. Called from every
// level; owns the two global interfaces and the flags that redirect texts.
#include "platform/response.h"

#include "platform/aside.h"

#include <cstdarg>
#include <cstdio>
#include <set>
#include <vector>

#include "platform/answer_hint.h"
#include "platform/null_desktop.h"
#include "platform/shown_count.h"

namespace velora {

namespace {

NullConsole null_console;
NullDesktop null_desktop;
std::set<int> items_off;   // menu items that gDisableItem switched off
bool line_is_open = false; // what was written last to the console does not end a line

std::string vformat(const char *format, std::va_list args) {
  std::va_list again;
  va_copy(again, args);
  char small[256];
  const int needed = std::vsnprintf(small, sizeof small, format, args);
  std::string text;
  if (needed >= 0 && static_cast<std::size_t>(needed) < sizeof small) {
    text.assign(small, static_cast<std::size_t>(needed));
  } else if (needed >= 0) {
    text.resize(static_cast<std::size_t>(needed) + 1);
    std::vsnprintf(text.data(), text.size(), format, again);
    text.resize(static_cast<std::size_t>(needed));
  }
  va_end(again);
  return text;
}

} // namespace

Console *gConsole = &null_console;
Desktop *gDesktop = &null_desktop;
int gNarPrint = 0;
int gAside = 0;
std::uint64_t gShown = 0;
int gProgressDots = 1;
int gAnswerLines = 0;
int gNotes = 1;

#define VELORA_FORMAT(text, format)                                                                \
  std::va_list args;                                                                               \
  va_start(args, format);                                                                          \
  const std::string text = vformat(format, args);                                                  \
  va_end(args)

std::string format_text(const char *format, ...) {
  VELORA_FORMAT(text, format);
  return text;
}

void DisplayResponse(std::string_view text) {
  gConsole->write(text);
  if (!text.empty())
    line_is_open = text.back() != '\n';
}

void end_answer_line() {
  if (gAnswerLines != 0 && line_is_open)
    DisplayResponse("\n");
}

void DisplayResponsef(const char *format, ...) {
  VELORA_FORMAT(text, format);
  DisplayResponse(text);
}

void orvek_print(std::string_view text) {
  if (gNarPrint != 0)
    gConsole->narrative(text);
  else
    DisplayResponse(text);
}

void orvek_printf(const char *format, ...) {
  VELORA_FORMAT(text, format);
  orvek_print(text);
}

void BeepMsge(std::string_view text, int level) {
  ++gShown;
  gConsole->warn(text, level);
}

void BeepMsgef(int level, const char *format, ...) {
  VELORA_FORMAT(text, format);
  BeepMsge(text, level);
}

void orvek_error(std::string_view text) {
  BeepMsge(text, 1);
}

void orvek_errorf(const char *format, ...) {
  VELORA_FORMAT(text, format);
  orvek_error(text);
}

void show_note(std::string_view text) {
  ++gShown;
  if (gNotes != 0)
    gConsole->note(text);
}

int PromptUser(const std::string &message, std::initializer_list<const char *> buttons) {
  std::vector<std::string> labels(buttons.begin(), buttons.end());
  if (!labels.empty() && labels.back() == "Cancel")
    labels.pop_back();
  ++gShown;
  return gConsole->ask(message, labels);
}

int GetUserDialogText(const std::string &prompt, std::string &answer) {
  if (answer.empty())
    answer = kAnswerHint;
  ++gShown;
  return gConsole->ask_text(prompt, answer) ? 1 : 0;
}

void DisableAllMenus() {
  gConsole->busy(true);
}

void EnableAllMenus() {
  gConsole->busy(false);
}

void gDisableItem(int command) {
  items_off.insert(command);
  gDesktop->enable_item(command, false);
}

void gEnableItem(int command) {
  items_off.erase(command);
  gDesktop->enable_item(command, true);
}

bool gItemEnabled(int command) {
  return !items_off.contains(command);
}

} // namespace velora
