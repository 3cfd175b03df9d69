// The edit controls of text windows: making one, its text and its selection. In the console the
// text before `mark` was written by the program and cannot be edited; what the user types stands
// behind it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// Makes the edit control that fills a text window; false when it cannot be made.
bool make_edit(Window &window);

// The text of an edit control, read where it stands. The control must not be changed meanwhile.
class EditText {
public:
  explicit EditText(const Window &window);
  ~EditText();
  EditText(const EditText &) = delete;
  EditText &operator=(const EditText &) = delete;
  [[nodiscard]] std::wstring_view view() const { return text_; }

private:
  HLOCAL block_ = nullptr;
  std::wstring copy_; // where the control does not show its own
  std::wstring_view text_;
};

DWORD text_length(const Window &window);
EditRange selection_of(const Window &window);
// Replaces the text; in the console what the user typed stays behind it.
void set_edit_text(Window &window, std::string_view text);
// Appends at the mark (console) or at the end, as Desktop::append_text.
void append_edit_text(Window &window, std::string_view text,
                      const std::vector<TextRange> &standing_out);
// What stands behind the mark.
std::string typed_text_of(const Window &window);
void set_typed(Window &window, std::string_view text);
// Takes lines from the front, those for showing too, as Desktop::drop_front.
std::size_t drop_front_of(Window &window, std::size_t keep);
EditState edit_state_of(const Window &window);
void do_edit(const Window &window, EditCommand command);

// The line that holds place `at`, as it was before it was broken for showing.
std::string whole_line(const Window &window, DWORD at);
// A stretch of `text`, which is that of the window, without the breaks made for showing.
std::wstring unbroken(const Window &window, std::wstring_view text, EditRange range);
// The whole text without those breaks, and ranges of its bytes as they stand in the control.
std::string text_of_edit(const Window &window);
TextRange bytes_of_range(const Window &window, EditRange range);
EditRange range_of_bytes(const Window &window, TextRange range);

} // namespace velora::win32
