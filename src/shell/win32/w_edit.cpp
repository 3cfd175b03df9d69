// Text of edit controls. The control counts in units of UTF-16 with "\r\n" at line ends; the mark
// and the ranges of messages are kept in those units and move with the text.
#include "shell/win32/w_edit.h"

#include <algorithm>

#include "shell/shown_text.h"
#include "shell/win32/w_breaks.h"
#include "shell/win32/w_edit_keys.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_steps.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

// Nothing is drawn while in scope; everything once at its end.
class DrawnOnce {
public:
  explicit DrawnOnce(HWND edit) : edit_(edit) { SendMessageW(edit_, WM_SETREDRAW, FALSE, 0); }
  ~DrawnOnce() {
    SendMessageW(edit_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(edit_, nullptr, FALSE);
  }
  DrawnOnce(const DrawnOnce &) = delete;
  DrawnOnce &operator=(const DrawnOnce &) = delete;

private:
  HWND edit_;
};

// The user cannot undo what the program did, nor what he did before it: the text has moved.
void replace(const Window &window, EditRange range, const std::wstring &text) {
  SendMessageW(window.edit, EM_SETSEL, range.start, range.end);
  SendMessageW(window.edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
  SendMessageW(window.edit, EM_EMPTYUNDOBUFFER, 0, 0);
}

// Where the program's text ends.
DWORD end_of_text(const Window &window) {
  const DWORD length = text_length(window);
  return window.kind == kControlWindow ? std::min(window.mark, length) : length;
}

// A text to append, with places in the control that it will stand in.
struct Incoming {
  std::wstring text;
  std::vector<EditRange> messages;
  std::vector<DWORD> soft_breaks;
};

void add_part(Incoming &incoming, DWORD at, std::string_view part) {
  for (std::size_t end; (end = part.find(kSoftBreak)) != std::string_view::npos;) {
    incoming.text += to_edit(part.substr(0, end));
    incoming.soft_breaks.push_back(at + static_cast<DWORD>(incoming.text.size()));
    incoming.text += L"\r\n";
    part.remove_prefix(end + 1);
  }
  incoming.text += to_edit(part);
}

Incoming incoming_at(DWORD at, std::string_view text, const std::vector<TextRange> &standing_out) {
  Incoming incoming;
  const auto place = [&] { return at + static_cast<DWORD>(incoming.text.size()); };
  std::size_t done = 0;
  for (const TextRange &range : standing_out) {
    add_part(incoming, at, text.substr(done, range.start - done));
    const DWORD start = place();
    add_part(incoming, at, text.substr(range.start, range.end - range.start));
    incoming.messages.push_back({start, place()});
    done = range.end;
  }
  add_part(incoming, at, text.substr(done));
  return incoming;
}

// Long code lines run on to the right; answers and stories are wrapped.
DWORD edit_style(WindowKind kind) {
  const DWORD style = WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL |
                      ES_NOHIDESEL | ES_WANTRETURN;
  return kind == kOrvekWindow ? style | WS_HSCROLL | ES_AUTOHSCROLL : style;
}

// Whether the line end at "\n" number `line_end` is for showing only.
bool is_soft(const Window &window, std::size_t line_end) {
  return std::binary_search(window.soft_breaks.begin(), window.soft_breaks.end(),
                            static_cast<DWORD>(line_end) - 1);
}

// How much of `text` can go, in whole lines, so that `keep` characters or more are left.
std::size_t units_to_spare(const Window &window, std::wstring_view text, std::size_t keep) {
  std::size_t at = text.size();
  for (; at > 0 && keep > 0; --at) {
    const wchar_t c = text[at - 1];
    if (begins_character(c) && !(c == L'\n' && is_soft(window, at - 1)))
      --keep;
  }
  return at == 0 ? 0 : text.rfind(L'\n', at - 1) + 1; // 0 when there is no line end
}

// What the user typed as it stands in the control.
std::wstring shown_as_typed(std::string_view text) {
  const std::wstring wide = to_edit(text);
  return broken(wide, longest_shown_line(wide.size()));
}

// The line ends that are for showing only, in order: those of the program and, behind the mark of
// the console, those in what is typed.
std::vector<EditRange> breaks_for_showing(const Window &window, std::wstring_view text) {
  std::vector<EditRange> breaks;
  breaks.reserve(window.soft_breaks.size());
  for (const DWORD at : window.soft_breaks)
    breaks.push_back({at, at + 2}); // "\r\n"
  if (window.kind == kControlWindow)
    for (std::size_t at = window.mark; (at = text.find(kBreak, at)) != std::wstring_view::npos;
         at += kBreak.size())
      breaks.push_back({static_cast<DWORD>(at), static_cast<DWORD>(at + kBreak.size())});
  return breaks;
}

// Places in the text move when `dropped` units go from its front.
void shift_places(Window &window, DWORD dropped) {
  std::erase_if(window.messages, [dropped](const EditRange &r) { return r.end <= dropped; });
  for (EditRange &r : window.messages)
    r = {r.start > dropped ? r.start - dropped : 0, r.end - dropped};
  std::erase_if(window.soft_breaks, [dropped](DWORD at) { return at < dropped; });
  for (DWORD &at : window.soft_breaks)
    at -= dropped;
}

} // namespace

// --- reading -----------------------------------------------------------------------------------

DWORD text_length(const Window &window) {
  return static_cast<DWORD>(GetWindowTextLengthW(window.edit));
}

EditRange selection_of(const Window &window) {
  EditRange range{};
  SendMessageW(window.edit, EM_GETSEL, reinterpret_cast<WPARAM>(&range.start),
               reinterpret_cast<LPARAM>(&range.end));
  return range;
}

EditText::EditText(const Window &window) {
  const std::size_t length = text_length(window);
  const auto block = reinterpret_cast<HLOCAL>(SendMessageW(window.edit, EM_GETHANDLE, 0, 0));
  const void *place = block == nullptr ? nullptr : LocalLock(block);
  if (place != nullptr) {
    const auto *units = static_cast<const wchar_t *>(place);
    if (LocalSize(block) > length * sizeof(wchar_t) && units[length] == L'\0') {
      block_ = block;
      text_ = {units, length};
      return;
    }
    LocalUnlock(block);
  }
  copy_.resize(length);
  const int got = GetWindowTextW(window.edit, copy_.data(), static_cast<int>(length) + 1);
  copy_.resize(static_cast<std::size_t>(got));
  text_ = copy_;
}

EditText::~EditText() {
  if (block_ != nullptr)
    LocalUnlock(block_);
}

std::string typed_text_of(const Window &window) {
  if (text_length(window) <= window.mark)
    return {};
  const EditText text(window);
  const std::size_t mark = std::min<std::size_t>(window.mark, text.view().size());
  return from_edit(without_breaks(text.view().substr(mark)));
}

std::wstring unbroken(const Window &window, std::wstring_view text, EditRange range) {
  std::wstring out;
  DWORD at = range.start;
  for (const EditRange &b : breaks_for_showing(window, text)) {
    if (b.end <= at || b.start >= range.end)
      continue;
    out += text.substr(at, std::max(at, b.start) - at);
    at = std::min(b.end, range.end);
  }
  return out += text.substr(at, range.end - at);
}

std::string text_of_edit(const Window &window) {
  const EditText text(window);
  const auto end = static_cast<DWORD>(text.view().size());
  return from_edit(unbroken(window, text.view(), {0, end}));
}

TextRange bytes_of_range(const Window &window, EditRange range) {
  const EditText text(window);
  const auto bytes = [&](DWORD at) {
    return from_edit(unbroken(window, text.view(), {0, at})).size();
  };
  return {bytes(range.start), bytes(range.end)};
}

EditRange range_of_bytes(const Window &window, TextRange range) {
  const EditText text(window);
  const std::wstring_view all = text.view();
  const std::wstring plain = unbroken(window, all, {0, static_cast<DWORD>(all.size())});
  const std::vector<EditRange> breaks = breaks_for_showing(window, all);
  const auto place = [&](std::size_t byte) {
    auto at = static_cast<DWORD>(edit_place(plain, byte));
    for (auto b = breaks.begin(); b != breaks.end() && b->start <= at; ++b)
      at += b->end - b->start;
    return at;
  };
  return {place(range.start), place(range.end)};
}

std::vector<std::string> whole_lines(const Window &window, DWORD at, std::size_t most) {
  const EditText text(window);
  const std::wstring_view all = text.view();
  const std::size_t last =
      window.kind == kControlWindow ? std::min<std::size_t>(window.mark, all.size()) : all.size();
  const auto soft = [&](std::size_t line_end) { return is_soft(window, line_end); };
  std::size_t start = std::min<std::size_t>(at, all.size());
  while (start > 0 && (all[start - 1] != L'\n' || soft(start - 1)))
    --start;
  std::vector<std::string> lines;
  while (lines.size() < most && (start < last || lines.empty())) {
    std::size_t end = start;
    while (end < all.size() && (all[end] != L'\n' || soft(end)))
      ++end;
    lines.push_back(
        from_edit(unbroken(window, all, {static_cast<DWORD>(start), static_cast<DWORD>(end)})));
    start = end + 1;
  }
  return lines;
}

std::string name_at_caret(const Window &window) {
  const EditText text(window);
  const std::wstring_view all = text.view();
  const auto in_name = [](wchar_t c) {
    return c > L' ' && std::wstring_view(L"()[]{},;\"'").find(c) == std::wstring_view::npos;
  };
  const EditRange selected = selection_of(window);
  std::size_t start = std::min<std::size_t>(selected.start, all.size());
  std::size_t end = std::min<std::size_t>(selected.end, all.size());
  if (start == end) {
    while (start > 0 && in_name(all[start - 1]))
      --start;
    while (end < all.size() && in_name(all[end]))
      ++end;
  }
  return from_edit(all.substr(start, end - start));
}

EditState edit_state_of(const Window &window) {
  EditState state;
  const EditRange range = selection_of(window);
  state.can_undo = window.steps.can_undo();
  state.can_paste = IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE ||
                    IsClipboardFormatAvailable(CF_TEXT) != FALSE;
  state.selected = range.start != range.end;
  return state;
}

// --- changing ----------------------------------------------------------------------------------

bool make_edit(Window &window) {
  window.edit = CreateWindowExW(0, L"edit", nullptr, edit_style(window.kind), 0, 0, 0, 0,
                                window.hwnd, nullptr, hInst, nullptr);
  if (window.edit == nullptr)
    return false;
  SendMessageW(window.edit, EM_SETLIMITTEXT, 0, 0);
  SendMessageW(window.edit, WM_SETFONT,
               reinterpret_cast<WPARAM>(text_font(dpi_of(window.hwnd), window.points)), FALSE);
  SendMessageW(window.edit, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(4, 4));
  SetWindowSubclass(window.edit, EditKeysProc, 1, static_cast<DWORD_PTR>(window.id));
  return true;
}

void set_edit_text(Window &window, std::string_view text) {
  const OwnChange own(window);
  const std::wstring wide = to_edit(text);
  const std::wstring typed =
      window.kind == kControlWindow ? shown_as_typed(typed_text_of(window)) : std::wstring();
  SetWindowTextW(window.edit, (wide + typed).c_str());
  window.messages.clear();
  window.soft_breaks.clear();
  window.faults.clear();
  window.mark = std::min(static_cast<DWORD>(wide.size()), text_length(window));
  if (window.kind != kControlWindow)
    begin_steps(window);
  const DWORD end = text_length(window);
  SendMessageW(window.edit, EM_SETSEL, end, static_cast<LPARAM>(end));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

// The user's selection in older text stays; otherwise the caret follows the text.
void append_edit_text(Window &window, std::string_view text,
                      const std::vector<TextRange> &standing_out) {
  const DWORD at = end_of_text(window);
  const Incoming incoming = incoming_at(at, text, standing_out);
  if (incoming.text.empty())
    return;
  const OwnChange own(window);
  const DrawnOnce once(window.edit);
  const EditRange before = selection_of(window);
  const DWORD length = text_length(window);
  replace(window, {at, at}, incoming.text);
  const DWORD added = text_length(window) - length;
  window.mark = at + added;
  if (window.kind != kControlWindow)
    begin_steps(window);
  window.messages.insert(window.messages.end(), incoming.messages.begin(), incoming.messages.end());
  window.soft_breaks.insert(window.soft_breaks.end(), incoming.soft_breaks.begin(),
                            incoming.soft_breaks.end());
  const bool selected_older = before.start != before.end && before.start < at;
  const DWORD moved = before.end >= at ? added : 0;
  const EditRange after = selected_older     ? before
                          : before.end >= at ? EditRange{before.start + moved, before.end + moved}
                                             : EditRange{window.mark, window.mark};
  SendMessageW(window.edit, EM_SETSEL, after.start, static_cast<LPARAM>(after.end));
  if (!selected_older)
    SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

void set_typed(Window &window, std::string_view text) {
  const OwnChange own(window);
  const DWORD length = text_length(window);
  window.mark = std::min(window.mark, length);
  replace(window, {window.mark, length}, shown_as_typed(text));
  begin_steps(window);
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

std::size_t drop_front_of(Window &window, std::size_t keep) {
  DWORD dropped = 0;
  std::size_t characters = 0;
  {
    const EditText text(window);
    const std::wstring_view older = text.view().substr(0, end_of_text(window));
    dropped = static_cast<DWORD>(units_to_spare(window, older, keep));
    characters = static_cast<std::size_t>(
        std::count_if(older.begin(), older.begin() + dropped, begins_character));
  }
  if (dropped == 0)
    return 0;
  const OwnChange own(window);
  const DrawnOnce once(window.edit);
  const EditRange before = selection_of(window);
  replace(window, {0, dropped}, L"");
  window.mark -= std::min(window.mark, dropped);
  if (window.kind != kControlWindow)
    begin_steps(window);
  shift_places(window, dropped);
  const auto moved = [dropped](DWORD at) { return at > dropped ? at - dropped : 0; };
  SendMessageW(window.edit, EM_SETSEL, moved(before.start), static_cast<LPARAM>(moved(before.end)));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
  return characters;
}

void prepend_edit_text(Window &window, std::string_view text) {
  const OwnChange own(window);
  const DrawnOnce once(window.edit);
  const std::wstring wide = to_edit(text);
  const auto added = static_cast<DWORD>(wide.size());
  const EditRange before = selection_of(window);
  replace(window, {0, 0}, wide);
  window.mark += added;
  for (EditRange &r : window.messages)
    r = {r.start + added, r.end + added};
  for (DWORD &at : window.soft_breaks)
    at += added;
  if (window.kind != kControlWindow)
    begin_steps(window);
  SendMessageW(window.edit, EM_SETSEL, before.start + added,
               static_cast<LPARAM>(before.end + added));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

std::size_t columns_of(const Window &window) {
  const WindowDC dc(window.edit);
  const Selected font(dc, text_font(dpi_of(window.hwnd), window.points));
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  RECT box{};
  SendMessageW(window.edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&box));
  const LONG letters = (box.right - box.left) / std::max(metrics.tmAveCharWidth, LONG{1});
  return static_cast<std::size_t>(std::max(letters, LONG{0}));
}

void do_edit(Window &window, EditCommand command) {
  switch (command) {
  case EditCommand::undo:
    take_step(window, true);
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

void zoom_text(Window &window, int steps) {
  constexpr int kLeastPoints = 6;
  constexpr int kMostPoints = 40;
  window.points =
      steps == 0 ? kTextPoints : std::clamp(window.points + steps, kLeastPoints, kMostPoints);
  SendMessageW(window.edit, WM_SETFONT,
               reinterpret_cast<WPARAM>(text_font(dpi_of(window.hwnd), window.points)), TRUE);
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

} // namespace velora::win32
