// The edit controls of text windows: making one, its text and selection, and the keys of the
// console. In the console the text before `mark` was written by the program and cannot be edited;
// what the user types stands behind it.
#pragma once

#include <string>
#include <string_view>

#include "shell/win32/w_windows.h"

namespace velora::win32 {

// Makes the edit control that fills a text window; false when it cannot be made.
bool make_edit(Window &window);
// The whole text as the control holds it.
std::wstring edit_text(const Window &window);
void set_edit_text(Window &window, std::string_view text);
// Appends at the mark (console) or at the end; `level` -1 is plain text, else a message.
void append_edit_text(Window &window, std::string_view text, int level);
// What stands behind the mark.
std::string typed_text_of(const Window &window);
void set_typed(Window &window, std::string_view text);
// Takes whole lines from the front so that at most `keep` characters are left before the mark;
// answers how many went.
std::size_t drop_front_of(Window &window, std::size_t keep);
EditState edit_state_of(const Window &window);
void do_edit(const Window &window, EditCommand command);

} // namespace velora::win32
