// Starts the language and feeds the console.
#include "kit/start.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "core/events.h"
#include "core/space.h"
#include "eval/registry.h"
#include "front/cint.h"
#include "front/source.h"
#include "platform/safe_file.h"
#include "shell/return_point.h"

namespace velora::kit {

namespace {

std::string_view rest;

int next_line(std::string &line, const char *) {
  if (rest.empty())
    return 0;
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  line = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return 1;
}

} // namespace

int start_quietly() {
  gLibDir = VELORA_SOURCE_DIR "/lib";
  gConsolePrompt = 0;
  gProgressDots = 0;
  int code = 1;
  run_command([&] {
    code = init_Velora();
    return 1;
  });
  return code;
}

void feed_console(std::string_view text) {
  rest = text;
  pp_refill = next_line;
}

std::string_view unread_text() {
  return rest;
}

void start_fuzzing(Console &console, const char *folder) {
  namespace fs = std::filesystem;
  const fs::path own = fs::temp_directory_path() / folder;
  fs::create_directories(own);
  fs::current_path(own);
  gConsole = &console;
  gSyncFiles = 0;
  gMaxNodes = 4 * kInitialNodes;
  set_stack_limit(std::size_t{6} << 20);
  if (start_quietly() != 0)
    std::abort();
}

void require_sound_pool() {
  const char *what = nullptr;
  if (check_pool(&what) != 0)
    return;
  std::fprintf(stderr, "the pool is damaged: %s\n", what);
  std::abort();
}

} // namespace velora::kit
