// Fuzz target: whatever is typed or loaded, the session goes on and the pool stays well formed. The
// input is fed as console lines to the started language, with small bounds, so that each run ends.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "core/events.h"
#include "core/space.h"
#include "eval/evaluate.h"
#include "eval/registry.h"
#include "front/cint.h"
#include "front/parser.h"
#include "front/source.h"
#include "platform/response.h"
#include "shell/return_point.h"

namespace {

using namespace velora;

// Says yes to an interrupt after a while, so that endless queries end, and keeps no text.
class QuietConsole : public NullConsole {
public:
  int polls = 0;
  bool interrupted() override { return ++polls > 20; }
};

QuietConsole console;
std::string_view rest;

int next_line(std::string &line, const char *) {
  if (rest.empty())
    return 0;
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  line = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return 1;
}

int start() {
  namespace fs = std::filesystem;
  const fs::path folder =
      fs::temp_directory_path() / "velora-fuzz"; // what it writes, it writes here
  fs::create_directories(folder);
  fs::current_path(folder);
  gConsole = &console;
  gLibDir = VELORA_SOURCE_DIR "/lib";
  gConsolePrompt = 0;
  gProgressDots = 0;
  gMaxNodes = 4 * kInitialNodes;
  set_stack_limit(std::size_t{6} << 20);
  int code = 1;
  run_command([&] {
    code = init_Velora();
    return 1;
  });
  if (code != 0)
    std::abort();
  pp_refill = next_line;
  return 1;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const int started = start();
  (void)started;
  rest = {reinterpret_cast<const char *>(data), size};
  int answer = 0;
  while (answer >= 0) {
    console.polls = 0;
    answer = 0;
    run_command([&] { return answer = p_console_command(); });
    const char *what = nullptr;
    if (check_pool(&what) == 0) {
      std::fprintf(stderr, "the pool is damaged: %s\n", what);
      std::abort();
    }
    if (rest.empty() && answer == 0)
      pp_reset(true);
  }
  pp_reset(true);
  return 0;
}
