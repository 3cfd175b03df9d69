// Fuzz target: whatever is typed or loaded, the session goes on and the pool stays well formed. The
// input is fed as console lines to the started language, with small bounds, so that each run ends.
#include <cstddef>
#include <cstdint>

#include "front/cint.h"
#include "front/source.h"
#include "kit/start.h"
#include "shell/return_point.h"

using namespace velora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static kit::FuzzConsole console;
  static const bool started = (kit::start_fuzzing(console, "velora-fuzz"), true);
  (void)started;
  console.warnings.clear();
  kit::feed_console({reinterpret_cast<const char *>(data), size});
  int answer = 0;
  while (answer >= 0) {
    console.polls = 0;
    answer = 0;
    run_command([&] { return answer = p_console_command(); });
    kit::require_sound_pool();
    if (kit::unread_text().empty() && answer == 0)
      pp_reset(true);
  }
  pp_reset(true);
  return 0;
}
