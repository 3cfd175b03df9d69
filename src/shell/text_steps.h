// The changes of a text that a person edits, one after the other, so that they can be taken back
// and done again. For controls that remember one change only; a control tells what its text has
// become.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

// At a place, in units of the control's text: what stood there, and what stands there instead.
struct TextStep {
  std::size_t at = 0;
  std::wstring removed;
  std::wstring added;
  friend bool operator==(const TextStep &, const TextStep &) = default;
};

class TextSteps {
public:
  // The program has set the text: there is nothing to take back.
  void reset(std::wstring_view text);
  // The person has changed it; answers the change, none when it is as before. The letters of a word
  // that are typed or deleted one by one are one step.
  std::optional<TextStep> changed(std::wstring_view now);
  [[nodiscard]] bool can_undo() const { return !done_.empty(); }
  [[nodiscard]] bool can_redo() const { return !undone_.empty(); }
  // The change that takes the last step back, or does the one again that was taken back last. It is
  // taken for done.
  std::optional<TextStep> undo();
  std::optional<TextStep> redo();

private:
  void apply(const TextStep &step);

  std::wstring text_;
  std::vector<TextStep> done_;
  std::vector<TextStep> undone_;
};

} // namespace velora
