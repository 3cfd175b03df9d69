// Answering of dialogs from a queue, in the order in which the answers stand in the script.
#include "shell/events/event_answers.h"

#include <algorithm>
#include <cstdio>

#include "db/vel_util.h"
#include "platform/desktop.h"
#include "platform/response.h"
#include "shell/desk_events.h"

namespace velora {

EventAnswers *gEventAnswers = nullptr;

namespace {

constexpr const char *kCancelLabel = "Cancel";

// A dialog on one line.
void print_dialog(std::string message, const std::vector<std::string> &buttons,
                  const std::string &answer) {
  std::replace(message.begin(), message.end(), '\n', ' ');
  std::string line = "dialog " + message;
  for (const std::string &button : buttons)
    line += " [" + button + "]";
  line += " -> " + answer + "\n";
  std::fputs(line.c_str(), stdout);
  std::fflush(stdout);
}

} // namespace

void EventAnswers::complain(const std::string &what) {
  std::fflush(stdout);
  std::fputs(("velora: " + what + "\n").c_str(), stderr);
  ++faults_;
}

// The value of the next answer when it is of that kind.
std::optional<std::string> EventAnswers::next(Kind kind, const std::string &asked) {
  if (queue_.empty()) {
    complain("no answer for: " + asked);
    return std::nullopt;
  }
  const Answer answer = queue_.front();
  queue_.pop_front();
  if (answer.kind == Kind::cancel)
    return std::nullopt;
  if (answer.kind != kind) {
    complain("another kind of answer is wanted for: " + asked);
    return std::nullopt;
  }
  return answer.value;
}

int EventAnswers::ask(const std::string &message, const std::vector<std::string> &buttons) {
  std::vector<std::string> labels = buttons;
  labels.emplace_back(kCancelLabel);
  const std::string wanted = next(Kind::button, message).value_or(kCancelLabel);
  const auto found = std::find(labels.begin(), labels.end(), wanted);
  if (found == labels.end())
    complain("no such button: " + wanted);
  const bool cancelled = found >= labels.end() - 1;
  print_dialog(message, labels, cancelled ? kCancelLabel : wanted);
  return cancelled ? kCancelled : static_cast<int>(found - labels.begin()) + 1;
}

bool EventAnswers::ask_text(const std::string &prompt, std::string &answer) {
  const auto given = next(Kind::text, prompt);
  print_dialog(prompt, {}, given.value_or(kCancelLabel));
  if (given)
    answer = *given;
  return given.has_value();
}

std::optional<std::string> EventAnswers::choose_file(const std::string &title) {
  const auto given = next(Kind::file, title);
  print_dialog(title, {}, given.value_or(kCancelLabel));
  return given;
}

void EventAnswers::message_box(const std::string &title, const std::string &text) {
  print_dialog(title + ": " + text, {"OK"}, "OK");
}

std::optional<std::string> EventAnswers::typed() {
  return next(Kind::text, "characters to read");
}

void type_next_answer() {
  const auto typed = gEventAnswers->typed();
  if (!typed) {
    interrupt_asked();
    return;
  }
  gDesktop->set_typed_text(hControl, *typed + "\n");
  text_changed(hControl);
}

} // namespace velora
