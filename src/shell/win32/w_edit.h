// The edit controls of text windows: making one, its text and its selection. In the console the
// text before `mark` was written by the program and cannot be edited; what the user types stands
// behind it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// Tells changes of the program from those of the user while in scope.
class OwnChange {
public:
  explicit OwnChange(Window &window) : window_(window), before_(window.own_change) {
    window_.own_change = true;
  }
  ~OwnChange() { window_.own_change = before_; }
  OwnChange(const OwnChange &) = delete;
  OwnChange &operator=(const OwnChange &) = delete;

private:
  Window &window_;
  bool before_;
};

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
void prepend_edit_text(Window &window, std::string_view text);
// How many letters of a line are in sight.
std::size_t columns_of(const Window &window);
EditState edit_state_of(const Window &window);
void do_edit(Window &window, EditCommand command);
// Makes the letters larger or smaller; 0 gives them their usual size.
void zoom_text(Window &window, int steps);

// The selected text of one line, or the name at the caret; empty for none.
std::string name_at_caret(const Window &window);
// The lines from the one that holds place `at` on, as they were before they were broken for
// showing, up to the mark of the console.
std::vector<std::string> whole_lines(const Window &window, DWORD at, std::size_t most);
// A stretch of `text`, which is that of the window, without the breaks made for showing.
std::wstring unbroken(const Window &window, std::wstring_view text, EditRange range);
// The whole text without those breaks, and ranges of its bytes as they stand in the control.
std::string text_of_edit(const Window &window);
TextRange bytes_of_range(const Window &window, EditRange range);
EditRange range_of_bytes(const Window &window, TextRange range);

} // namespace velora::win32
