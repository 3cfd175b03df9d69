// The dialog asks through a message of its own. It holds what is looked for, so that it is there
// again the next time.
#include "shell/win32/w_find.h"

#include <algorithm>
#include <string>

#include "shell/win32/w_edit.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

constexpr std::size_t kMostText = 500;

wchar_t wanted[kMostText] = L"";
wchar_t instead[kMostText] = L"";
FINDREPLACEW asked{};
HWND dialog = nullptr;
WindowId searched = 0;

std::wstring folded(std::wstring_view text) {
  std::wstring low(text);
  if ((asked.Flags & FR_MATCHCASE) == 0)
    CharLowerBuffW(low.data(), static_cast<DWORD>(low.size()));
  return low;
}

// What was found or done is told in the title of the dialog, which the user looks at.
void tell(const std::wstring &what) {
  SetWindowTextW(dialog, (L"Replace" + (what.empty() ? what : L" - " + what)).c_str());
}

// Selects what is looked for behind the selection, or from the beginning when there is none there.
void find_next(const Window &window) {
  const EditText text(window);
  const std::wstring all = folded(text.view());
  const std::wstring part = folded(wanted);
  std::size_t at = all.find(part, selection_of(window).end);
  const bool around = at == std::wstring::npos;
  if (around)
    at = all.find(part);
  if (part.empty() || at == std::wstring::npos) {
    tell(L"not found");
    return;
  }
  tell(around ? L"from the beginning" : L"");
  SendMessageW(window.edit, EM_SETSEL, at, static_cast<LPARAM>(at + part.size()));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
}

bool selected_is_wanted(const Window &window) {
  const EditText text(window);
  const EditRange range = selection_of(window);
  return folded(text.view().substr(range.start, range.end - range.start)) == folded(wanted);
}

void replace_one(const Window &window) {
  if (*wanted != L'\0' && selected_is_wanted(window))
    SendMessageW(window.edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(instead));
  find_next(window);
}

// In one step, which is taken back as one.
void replace_all(const Window &window) {
  const std::wstring part = folded(wanted);
  std::wstring out;
  int count = 0;
  {
    const EditText text(window);
    const std::wstring all = folded(text.view());
    std::size_t done = 0;
    for (std::size_t at; !part.empty() && (at = all.find(part, done)) != std::wstring::npos;
         done = at + part.size(), ++count)
      out.append(text.view().substr(done, at - done)).append(instead);
    out += text.view().substr(done);
  }
  if (count > 0) {
    SendMessageW(window.edit, EM_SETSEL, 0, -1);
    SendMessageW(window.edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(out.c_str()));
    SendMessageW(window.edit, EM_SETSEL, 0, 0);
  }
  tell(std::to_wstring(count) + L" replaced");
}

// One line of what is selected is what the user most likely looks for.
void take_selection(const Window &window) {
  const EditText text(window);
  const EditRange range = selection_of(window);
  const std::wstring_view part = text.view().substr(range.start, range.end - range.start);
  if (part.empty() || part.size() >= kMostText || part.find(L'\n') != std::wstring_view::npos)
    return;
  *std::copy(part.begin(), part.end(), wanted) = L'\0';
}

} // namespace

void open_replace(const Window &window) {
  searched = window.id;
  if (dialog != nullptr) {
    SetForegroundWindow(dialog);
    return;
  }
  take_selection(window);
  const DWORD same_case = asked.Flags & FR_MATCHCASE;
  asked = {};
  asked.lStructSize = sizeof asked;
  asked.hwndOwner = hVel;
  asked.hInstance = hInst;
  asked.Flags = FR_HIDEUPDOWN | FR_HIDEWHOLEWORD | same_case;
  asked.lpstrFindWhat = wanted;
  asked.wFindWhatLen = sizeof wanted;
  asked.lpstrReplaceWith = instead;
  asked.wReplaceWithLen = sizeof instead;
  dialog = ReplaceTextW(&asked);
}

bool find_message(UINT message, LPARAM lparam) {
  static const UINT kFindMessage = RegisterWindowMessageW(FINDMSGSTRINGW);
  if (message != kFindMessage)
    return false;
  asked.Flags = reinterpret_cast<const FINDREPLACEW *>(lparam)->Flags;
  const Window *window = find_window(searched);
  if ((asked.Flags & FR_DIALOGTERM) != 0)
    dialog = nullptr;
  else if (window == nullptr)
    tell(L"the text is closed");
  else if ((asked.Flags & FR_REPLACEALL) != 0)
    replace_all(*window);
  else if ((asked.Flags & FR_REPLACE) != 0)
    replace_one(*window);
  else if ((asked.Flags & FR_FINDNEXT) != 0)
    find_next(*window);
  return true;
}

bool find_dialog_message(MSG &message) {
  return dialog != nullptr && IsDialogMessageW(dialog, &message) != FALSE;
}

} // namespace velora::win32
