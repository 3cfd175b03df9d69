// The settings of the session.
#include <string>
#include <string_view>

#include "front/type_check.h"
#include "platform/response.h"
#include "shell/answer_notes.h"
#include "shell/terminal/colon.h"
#include "shell/terminal/terminal_console.h"

namespace velora {

namespace {

// A setting: its name, its values, what it holds now, and the function that takes a value.
struct Setting {
  const char *name;
  const char *values;
  const char *help;
  const char *(*now)();
  bool (*take)(std::string_view value);
};

const char *on_or_off(bool on) {
  return on ? "on" : "off";
}

bool take_switch(std::string_view value, int &target) {
  if (value != "on" && value != "off")
    return false;
  target = value == "on" ? 1 : 0;
  return true;
}

bool take_notes(std::string_view value) {
  if (value != "all" && value != "messages" && value != "none")
    return false;
  gNotes = value == "none" ? 0 : 1;
  gAnswerNotes = value == "all" ? 1 : 0;
  return true;
}

constexpr Setting kSettings[] = {
    {"check", "on|off", "hold clauses and queries against the declared types",
     [] { return on_or_off(gCheckTypes != 0); },
     [](std::string_view value) { return take_switch(value, gCheckTypes); }},
    {"notes", "all|messages|none", "lines of help beside answers and messages",
     [] { return gNotes == 0         ? "none"
                 : gAnswerNotes == 0 ? "messages"
                                     : "all"; }, take_notes},
    {"page", "on|off", "show long answers a screen at a time, at a terminal",
     [] { return on_or_off(gPages != 0); },
     [](std::string_view value) { return take_switch(value, gPages); }},
};

} // namespace

int colon_set(const std::string &argument) {
  const std::vector<ColonWord> words = colon_words(argument);
  if (words.empty()) {
    for (const Setting &row : kSettings)
      DisplayResponsef("  %-6s %-18s now %s; %s\n", row.name, row.values, row.now(), row.help);
    return 1;
  }
  for (const Setting &row : kSettings) {
    if (words[0].text != row.name)
      continue;
    if (words.size() == 2 && row.take(words[1].text))
      return 1;
    return report_use(format_text(":set %s %s", row.name, row.values));
  }
  BeepMsgef(1, "Sorry! There is no setting \"%s\"; \":set\" lists them\n", words[0].text.c_str());
  return 0;
}

} // namespace velora
