// Finding out what was changed, and joining what belongs together.
#include "shell/text_steps.h"

#include <algorithm>
#include <utility>

namespace velora {

namespace {

bool ends_word(wchar_t c) {
  return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r';
}

// Joins a step to the one before it; false when it stands for itself.
bool join(TextStep &before, const TextStep &step) {
  const std::size_t end = before.at + before.added.size();
  if (step.removed.empty() && step.added.size() == 1) { // a letter typed behind the last one
    if (before.added.empty() || step.at != end ||
        ends_word(step.added[0]) != ends_word(before.added.back()))
      return false;
    before.added += step.added;
    return true;
  }
  if (!step.added.empty() || step.removed.size() != 1 || !before.added.empty())
    return false;
  if (step.at == before.at) { // Delete
    before.removed += step.removed;
    return true;
  }
  if (step.at + 1 != before.at) // Backspace
    return false;
  before.removed = step.removed + before.removed;
  before.at = step.at;
  return true;
}

} // namespace

void TextSteps::reset(std::wstring_view text) {
  text_ = text;
  done_.clear();
  undone_.clear();
}

std::optional<TextStep> TextSteps::changed(std::wstring_view now) {
  const std::wstring_view was = text_;
  const auto front = std::mismatch(was.begin(), was.end(), now.begin(), now.end()).first;
  const auto same_front = static_cast<std::size_t>(front - was.begin());
  const std::size_t most = std::min(was.size(), now.size()) - same_front;
  std::size_t same_back = 0;
  while (same_back < most && was[was.size() - 1 - same_back] == now[now.size() - 1 - same_back])
    ++same_back;
  TextStep step{same_front,
                std::wstring(was.substr(same_front, was.size() - same_front - same_back)),
                std::wstring(now.substr(same_front, now.size() - same_front - same_back))};
  if (step.removed.empty() && step.added.empty())
    return std::nullopt;
  apply(step);
  undone_.clear();
  if (done_.empty() || !join(done_.back(), step))
    done_.push_back(step);
  return step;
}

std::optional<TextStep> TextSteps::undo() {
  if (done_.empty())
    return std::nullopt;
  TextStep step = std::move(done_.back());
  done_.pop_back();
  TextStep back{step.at, step.added, step.removed};
  undone_.push_back(std::move(step));
  apply(back);
  return back;
}

std::optional<TextStep> TextSteps::redo() {
  if (undone_.empty())
    return std::nullopt;
  done_.push_back(std::move(undone_.back()));
  undone_.pop_back();
  apply(done_.back());
  return done_.back();
}

void TextSteps::apply(const TextStep &step) {
  text_.replace(step.at, step.removed.size(), step.added);
}

} // namespace velora
