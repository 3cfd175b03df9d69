// What a script answers when the program asks. The dialogs of a desktop that runs a script come
// here instead of to the user; each is printed with its answer.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace velora {

class EventAnswers {
public:
  enum class Kind { text, button, file, cancel };
  void add(Kind kind, const std::string &value) { queue_.push_back({kind, value}); }
  [[nodiscard]] std::size_t left() const { return queue_.size(); }
  // How much was not done as the script wanted it; every time the reason goes to standard error.
  [[nodiscard]] int faults() const { return faults_; }
  void complain(const std::string &what);

  // As the functions of DeskDialogs. An answer of another kind and a label that is not offered
  // cancel; so does the want of an answer.
  int ask(const std::string &message, const std::vector<std::string> &buttons);
  bool ask_text(const std::string &prompt, std::string &answer);
  std::optional<std::string> choose_file(const std::string &title);
  void message_box(const std::string &title, const std::string &text);
  // What is typed for a command that reads characters; none when nothing is waiting.
  std::optional<std::string> typed();

private:
  struct Answer {
    Kind kind;
    std::string value;
  };
  std::optional<std::string> next(Kind kind, const std::string &asked);
  std::deque<Answer> queue_;
  int faults_ = 0;
};

// Set while a script runs, otherwise null.
extern EventAnswers *gEventAnswers;

// A command waits for characters while a script runs: it gets the next answer as a typed line. A
// script that has none stops the command, since nobody else can type.
void type_next_answer();

} // namespace velora
