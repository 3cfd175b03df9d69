// The clock, the bell, waiting, the form that asks the user for a text, and the built-ins of the
// user's own library. Called by the dispatcher.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "core/events.h"
#include "eval/bi_support.h"
#include "eval/builtins/families.h"
#include "platform/console.h"
#include "platform/response.h"
#include "platform/user_library.h"

namespace velora {

namespace {

// Writes one field of the local time over the built-in's own node.
int answer_time(node **stack, int std::tm::*field, int added) {
  const std::time_t now = std::time(nullptr);
  const std::tm *local = std::localtime(&now);
  return local == nullptr ? 0 : set_int(stack[0], local->*field + added);
}

// Waits in slices, so that the user can interrupt.
void wait_milliseconds(std::int32_t n) {
  using clock = std::chrono::steady_clock;
  const auto until = clock::now() + std::chrono::milliseconds(n);
  while (clock::now() < until) {
    poll_user_events();
    const auto left = until - clock::now();
    std::this_thread::sleep_for(std::min<clock::duration>(left, std::chrono::milliseconds(20)));
  }
}

} // namespace

int bi_time_year(node **stack, int) {
  return answer_time(stack, &std::tm::tm_year, 0);
}
int bi_time_month(node **stack, int) {
  return answer_time(stack, &std::tm::tm_mon, 0);
}
int bi_time_dayofmonth(node **stack, int) {
  return answer_time(stack, &std::tm::tm_mday, 0);
}
int bi_time_hour(node **stack, int) {
  return answer_time(stack, &std::tm::tm_hour, 0);
}
int bi_time_minute(node **stack, int) {
  return answer_time(stack, &std::tm::tm_min, 0);
}
int bi_time_second(node **stack, int) {
  return answer_time(stack, &std::tm::tm_sec, 0);
}
// Sunday is 1.
int bi_time_dayofweek(node **stack, int) {
  return answer_time(stack, &std::tm::tm_wday, 1);
}

int bi_sysbeep(node **stack, int) {
  gConsole->beep();
  return set_bool(stack[0], true);
}

// delay n waits n milliseconds; a negative n does not wait.
int bi_delay(node **stack, int) {
  const node *units = force_arg(stack, 1, kInteger);
  if (units == nullptr)
    return 0;
  wait_milliseconds(units->val.i);
  return set_bool(stack[1], true);
}

int bi_gr_dialog(node **stack, int) {
  const node *prompt = force_arg(stack, 1, kString);
  if (prompt == nullptr)
    return 0;
  std::string answer;
  if (GetUserDialogText(std::string(text_of(prompt)), answer) == 0)
    return 0;
  return set_string(stack[1], answer);
}

// user_fun n ss: what the user's library answers to number n and the texts of ss.
int bi_user_fun(node **stack, int) {
  const node *which = force_arg(stack, 1, kInteger);
  if (which == nullptr)
    return 0;
  const int n = which->val.i;
  const node *list = force_list(stack, 2);
  if (list == nullptr)
    return 0;
  std::vector<std::string> texts;
  for (; is_cell(list); list = cell_tail(list)) {
    const node *text = cell_head(list);
    if (text->type != kString)
      return 0;
    texts.emplace_back(text_of(text));
  }
  std::string answer;
  if (!call_user_library(n, texts, answer))
    return 0;
  return set_string(stack[2], answer);
}

} // namespace velora
