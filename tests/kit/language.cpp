// Starts the language for the unit tests and feeds it console text.
#include "kit/language.h"

#include "core/space.h"
#include "core/symbols.h"
#include "db/removal.h"
#include "front/cint.h"
#include "front/source.h"
#include "kit/start.h"
#include "platform/response.h"
#include "shell/return_point.h"

namespace velora::kit {

int start_language() {
  static const int code = [] {
    const Recording quiet;
    const int answered = start_quietly();
    gSymbolTableChanged = 0;
    return answered;
  }();
  return code;
}

void feed(const std::string &text) {
  feed_console(text);
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
