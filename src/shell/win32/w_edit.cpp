// Text of edit controls. The control counts in units of UTF-16 with "\r\n" at line ends; the mark
// and the ranges of messages are kept in those units and move with the text.
#include "shell/win32/w_edit.h"

#include <algorithm>

#include "shell/win32/w_edit_keys.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

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

DWORD text_length(const Window &window) {
  return static_cast<DWORD>(GetWindowTextLengthW(window.edit));
}

EditRange selection_of(const Window &window) {
  EditRange range{};
  SendMessageW(window.edit, EM_GETSEL, reinterpret_cast<WPARAM>(&range.start),
               reinterpret_cast<LPARAM>(&range.end));
  return range;
}

void replace(const Window &window, EditRange range, const std::wstring &text) {
  SendMessageW(window.edit, EM_SETSEL, range.start, range.end);
  SendMessageW(window.edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

// Long code lines run on to the right; answers and stories are wrapped.
DWORD edit_style(WindowKind kind) {
  const DWORD style = WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL |
                      ES_NOHIDESEL | ES_WANTRETURN;
  return kind == kOrvekWindow ? style | WS_HSCROLL | ES_AUTOHSCROLL : style;
}

void shift_messages(Window &window, DWORD dropped) {
  std::erase_if(window.messages, [dropped](const EditRange &r) { return r.end <= dropped; });
  for (EditRange &r : window.messages)
    r = {r.start > dropped ? r.start - dropped : 0, r.end - dropped};
}

} // namespace

bool make_edit(Window &window) {
  window.edit = CreateWindowExW(0, L"edit", nullptr, edit_style(window.kind), 0, 0, 0, 0,
                                window.hwnd, nullptr, hInst, nullptr);
  if (window.edit == nullptr)
    return false;
  SendMessageW(window.edit, EM_SETLIMITTEXT, 0, 0);
  SendMessageW(window.edit, WM_SETFONT, reinterpret_cast<WPARAM>(text_font(dpi_of(window.hwnd))),
               FALSE);
  SendMessageW(window.edit, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(4, 4));
  SetWindowSubclass(window.edit, EditKeysProc, 1, static_cast<DWORD_PTR>(window.id));
  return true;
}

std::wstring edit_text(const Window &window) {
  std::wstring text(text_length(window), L'\0');
  const int got = GetWindowTextW(window.edit, text.data(), static_cast<int>(text.size()) + 1);
  text.resize(static_cast<std::size_t>(got));
  return text;
}

void set_edit_text(Window &window, std::string_view text) {
  const OwnChange own(window);
  SetWindowTextW(window.edit, to_edit(text).c_str());
  window.messages.clear();
  window.mark = text_length(window);
  SendMessageW(window.edit, EM_SETSEL, window.mark, static_cast<LPARAM>(window.mark));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

// The user's selection in older text stays; otherwise the caret follows the text.
void append_edit_text(Window &window, std::string_view text, int level) {
  const std::wstring wide = to_edit(text);
  if (wide.empty())
    return;
  const OwnChange own(window);
  const EditRange before = selection_of(window);
  const DWORD length = text_length(window);
  const DWORD at = window.kind == kControlWindow ? std::min(window.mark, length) : length;
  replace(window, {at, at}, wide);
  const DWORD added = text_length(window) - length;
  window.mark = at + added;
  if (level >= 0)
    window.messages.push_back({at, at + added});
  const bool selected_older = before.start != before.end && before.start < at;
  const DWORD moved = before.end >= at ? added : 0;
  const EditRange after = selected_older     ? before
                          : before.end >= at ? EditRange{before.start + moved, before.end + moved}
                                             : EditRange{window.mark, window.mark};
  SendMessageW(window.edit, EM_SETSEL, after.start, static_cast<LPARAM>(after.end));
  if (!selected_older)
    SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
  SendMessageW(window.edit, EM_EMPTYUNDOBUFFER, 0, 0);
}

std::string typed_text_of(const Window &window) {
  const std::wstring text = edit_text(window);
  return text.size() <= window.mark ? std::string()
                                    : from_edit(std::wstring_view(text).substr(window.mark));
}

void set_typed(Window &window, std::string_view text) {
  const OwnChange own(window);
  const DWORD length = text_length(window);
  window.mark = std::min(window.mark, length);
  replace(window, {window.mark, length}, to_edit(text));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

std::size_t drop_front_of(Window &window, std::size_t keep) {
  if (window.mark <= keep)
    return 0;
  const OwnChange own(window);
  const EditRange before = selection_of(window);
  const auto line = SendMessageW(window.edit, EM_LINEFROMCHAR, window.mark - keep, 0) + 1;
  const LRESULT start = SendMessageW(window.edit, EM_LINEINDEX, static_cast<WPARAM>(line), 0);
  if (start <= 0 || static_cast<DWORD>(start) > window.mark)
    return 0;
  const auto dropped = static_cast<DWORD>(start);
  const std::wstring text = edit_text(window).substr(0, dropped);
  replace(window, {0, dropped}, L"");
  window.mark -= dropped;
  shift_messages(window, dropped);
  const auto moved = [dropped](DWORD at) { return at > dropped ? at - dropped : 0; };
  SendMessageW(window.edit, EM_SETSEL, moved(before.start), static_cast<LPARAM>(moved(before.end)));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](wchar_t c) { return c != L'\r'; }));
}

EditState edit_state_of(const Window &window) {
  EditState state;
  const EditRange range = selection_of(window);
  state.can_undo = SendMessageW(window.edit, EM_CANUNDO, 0, 0) != 0;
  state.can_paste = IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE ||
                    IsClipboardFormatAvailable(CF_TEXT) != FALSE;
  state.selected = range.start != range.end;
  return state;
}

void do_edit(const Window &window, EditCommand command) {
  switch (command) {
  case EditCommand::undo:
    SendMessageW(window.edit, EM_UNDO, 0, 0);
    break;
  case EditCommand::cut:
    SendMessageW(window.edit, WM_CUT, 0, 0);
    break;
  case EditCommand::copy:
    SendMessageW(window.edit, WM_COPY, 0, 0);
    break;
  case EditCommand::paste:
    SendMessageW(window.edit, WM_PASTE, 0, 0);
    break;
  case EditCommand::clear:
    SendMessageW(window.edit, WM_CLEAR, 0, 0);
    break;
  }
}

} // namespace velora::win32
