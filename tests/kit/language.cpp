// Starts the language for the unit tests and feeds it console text.
#include "kit/language.h"

#include <string_view>

#include "core/space.h"
#include "core/symbols.h"
#include "db/removal.h"
#include "eval/registry.h"
#include "front/cint.h"
#include "front/source.h"
#include "platform/response.h"
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

int start_language() {
  static const int code = [] {
    const Recording quiet;
    gLibDir = VELORA_SOURCE_DIR "/lib";
    gConsolePrompt = 0;
    gProgressDots = 0;
    int answered = 1;
    run_command([&] {
      answered = init_Velora();
      return 1;
    });
    gSymbolTableChanged = 0;
    return answered;
  }();
  return code;
}

void feed(const std::string &text) {
  rest = text;
  pp_refill = next_line;
  for (int answered = 0; answered >= 0;)
    run_command([&] { return answered = p_console_command(); });
  pp_reset(true);
  pp_refill = nullptr;
}

std::string answer(const std::string &text) {
  auto &console = static_cast<RecorderConsole &>(*gConsole);
  const std::size_t before = console.text.size();
  feed(text);
  return console.text.substr(before);
}

void Language::SetUp() {
  ASSERT_EQ(start_language(), 0);
}

void Language::TearDown() {
  run_command([] {
    clear_user_symbols();
    return 1;
  });
  free_retired();
  gSymbolTableChanged = 0;
  const char *what = nullptr;
  EXPECT_EQ(check_pool(&what), 1) << what;
}

} // namespace velora::kit
