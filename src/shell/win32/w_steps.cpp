// Steps of the user's part of a text: the whole text, or what stands behind the console's mark.
// Marks of faults move with the text.
#include "shell/win32/w_steps.h"

#include <algorithm>

#include "shell/win32/w_edit.h"

namespace velora::win32 {

namespace {

DWORD first_place(const Window &window) {
  return window.kind == kControlWindow ? window.mark : 0;
}

std::wstring_view users_part(const Window &window, std::wstring_view text) {
  return text.substr(std::min<std::size_t>(first_place(window), text.size()));
}

// A mark goes when its text is changed.
void move_faults(Window &window, const TextStep &step) {
  if (window.faults.empty())
    return;
  const auto start = static_cast<DWORD>(step.at);
  const auto end = static_cast<DWORD>(step.at + step.removed.size());
  const auto moved = static_cast<DWORD>(step.added.size() - step.removed.size());
  std::erase_if(window.faults, [=](const FaultMark &fault) {
    return fault.range.start < end + (start == end ? 1 : 0) && start < fault.range.end;
  });
  for (FaultMark &fault : window.faults)
    if (fault.range.start >= end)
      fault.range = {fault.range.start + moved, fault.range.end + moved};
  InvalidateRect(window.edit, nullptr, FALSE);
}

} // namespace

void begin_steps(Window &window) {
  const EditText text(window);
  window.steps.reset(users_part(window, text.view()));
}

void text_edited(Window &window) {
  const EditText text(window);
  if (const auto step = window.steps.changed(users_part(window, text.view())))
    move_faults(window, *step);
}

bool take_step(Window &window, bool back) {
  const auto step = back ? window.steps.undo() : window.steps.redo();
  if (!step)
    return false;
  const OwnChange own(window);
  const std::size_t at = first_place(window) + step->at;
  SendMessageW(window.edit, EM_SETSEL, at, static_cast<LPARAM>(at + step->removed.size()));
  SendMessageW(window.edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(step->added.c_str()));
  SendMessageW(window.edit, EM_EMPTYUNDOBUFFER, 0, 0);
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
  move_faults(window, *step);
  if (!window.change_told) // it is the user's change all the same
    window.change_told = PostMessageW(window.hwnd, kTextChangedMessage, 0, 0) != FALSE;
  return true;
}

} // namespace velora::win32
