// Commands of the shell about the session: the query space, costs, nesting, leaving.
#include <charconv>

#include "core/space.h"
#include "eval/evaluate.h"
#include "platform/response.h"
#include "shell/terminal/colon.h"
#include "shell/terminal/session.h"

namespace velora {

int colon_space(const std::string &argument) {
  if (argument.empty()) {
    DisplayResponsef("Query space is %lld nodes\n", static_cast<long long>(node_count));
    return 1;
  }
  constexpr const char *kChoices[] = {"reset", "less", "more"};
  for (int choice = 0; choice < 3; ++choice) {
    if (argument == kChoices[choice])
      return resize_free_list(choice);
  }
  return report_use(":space more|less|reset");
}

int colon_time(const std::string &argument) {
  if (argument != "on" && argument != "off" && !argument.empty())
    return report_use(":time on|off");
  gTimes = argument.empty() ? !gTimes : argument == "on";
  return 1;
}

int colon_nesting(const std::string &argument) {
  int depth = gNestingLimit;
  const char *end = argument.data() + argument.size();
  const auto [stop, error] = std::from_chars(argument.data(), end, depth);
  if (!argument.empty() &&
      (error != std::errc() || stop != end || depth < 1 || depth > kMostNesting))
    return report_use(":nesting N, where N is 1 to 10000");
  gNestingLimit = depth;
  DisplayResponsef("Evaluations may nest %d deep\n", gNestingLimit);
  return 1;
}

int colon_quit(const std::string &) {
  gQuit = true;
  return 1;
}

} // namespace velora
