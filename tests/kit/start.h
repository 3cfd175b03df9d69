// The language started for a test program, and console text fed to it. Stands apart from the
// fixtures, so that the fuzz targets use it too.
#pragma once

#include <string>
#include <string_view>

#include "platform/response.h"

namespace velora::kit {

// Starts the language with the libraries of the source tree, without prompts and progress dots.
// Answers what init_Velora answers, or 1 when it was abandoned.
int start_quietly();

// Lets the console read `text`, which must outlive the reading, line by line.
void feed_console(std::string_view text);
// What of that text has not been read yet.
std::string_view unread_text();

// The console of a fuzz target: keeps warnings only, and interrupts after a while, so that endless
// queries end.
class FuzzConsole : public NullConsole {
public:
  int polls = 0;
  std::string warnings;
  bool interrupted() override { return ++polls > 20; }
  void warn(std::string_view text, int) override { warnings += text; }
};

// Starts the language for a fuzz target with small bounds, so that each run ends, in a folder of
// its own under the folder for temporary files. Aborts when that fails.
void start_fuzzing(Console &console, const char *folder);

// Aborts when the pool of the query space is not well formed.
void require_sound_pool();

} // namespace velora::kit
