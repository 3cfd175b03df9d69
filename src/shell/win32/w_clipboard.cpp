// The clipboard and the edit controls. Texts on it have no breaks for showing.
#include "shell/win32/w_clipboard.h"

#include <cstring>
#include <string>

#include "shell/shown_text.h"
#include "shell/win32/w_breaks.h"
#include "shell/win32/w_edit.h"
#include "shell/win32/w_text.h"

namespace velora::win32 {

namespace {

constexpr int kTries = 20;
constexpr DWORD kBetweenTries = 10; // milliseconds

// The clipboard, held while in scope if it can be had. Another program has it for moments only.
class Clipboard {
public:
  explicit Clipboard(HWND owner) : open_(OpenClipboard(owner) != FALSE) {
    for (int tries = 1; !open_ && tries < kTries; ++tries) {
      Sleep(kBetweenTries);
      open_ = OpenClipboard(owner) != FALSE;
    }
  }
  ~Clipboard() {
    if (open_)
      CloseClipboard();
  }
  Clipboard(const Clipboard &) = delete;
  Clipboard &operator=(const Clipboard &) = delete;
  explicit operator bool() const { return open_; }

private:
  bool open_;
};

// A block of memory that the clipboard holds, read while in scope.
class LockedBlock {
public:
  explicit LockedBlock(HGLOBAL block)
      : block_(block), place_(block != nullptr ? GlobalLock(block) : nullptr) {}
  ~LockedBlock() {
    if (place_ != nullptr)
      GlobalUnlock(block_);
  }
  LockedBlock(const LockedBlock &) = delete;
  LockedBlock &operator=(const LockedBlock &) = delete;
  // The text in the block, as far as it goes.
  [[nodiscard]] std::wstring_view text() const {
    if (place_ == nullptr)
      return {};
    const std::wstring_view all(static_cast<const wchar_t *>(place_),
                                GlobalSize(block_) / sizeof(wchar_t));
    return all.substr(0, all.find(L'\0'));
  }

private:
  HGLOBAL block_;
  void *place_;
};

bool to_clipboard(HWND owner, const std::wstring &text) {
  const Clipboard clipboard(owner);
  if (!clipboard)
    return false;
  EmptyClipboard();
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (block != nullptr) {
    std::memcpy(GlobalLock(block), text.c_str(), bytes);
    GlobalUnlock(block);
    if (SetClipboardData(CF_UNICODETEXT, block) == nullptr)
      GlobalFree(block);
  }
  return true;
}

// The text on the clipboard, with the line ends of edit controls; empty when it holds none.
std::wstring from_clipboard(HWND owner) {
  const Clipboard clipboard(owner);
  if (!clipboard)
    return {};
  const LockedBlock block(GetClipboardData(CF_UNICODETEXT));
  return to_edit(narrow(block.text()));
}

} // namespace

std::string text_on_clipboard() {
  const Clipboard clipboard(hVel);
  return clipboard ? narrow(LockedBlock(GetClipboardData(CF_UNICODETEXT)).text()) : std::string();
}

void put_on_clipboard(const std::string &text) {
  if (!to_clipboard(hVel, widen(text)))
    MessageBeep(MB_OK);
}

bool copy_unbroken(const Window &window) {
  const EditRange range = selection_of(window);
  std::wstring copied;
  {
    const EditText text(window);
    copied = unbroken(window, text.view(), range);
  }
  if (copied.size() == range.end - range.start)
    return false;
  if (!to_clipboard(window.edit, copied))
    MessageBeep(MB_OK);
  return true;
}

// All that is typed is broken anew, since the lines that the text comes into grow longer.
bool paste_typed(const Window &window) {
  const std::wstring pasted = from_clipboard(window.edit);
  const EditRange selected = selection_of(window);
  std::wstring typed; // up to the end of what is pasted, then all of it
  std::size_t caret = 0;
  std::size_t longest = 0;
  {
    const EditText text(window);
    const std::wstring_view all = text.view();
    typed = without_breaks(all.substr(window.mark, selected.start - window.mark)) + pasted;
    caret = typed.size();
    typed += without_breaks(all.substr(selected.end));
    longest = longest_shown_line(typed.size());
  }
  if (!has_longer_line(typed, longest))
    return false;
  caret = window.mark + broken(std::wstring_view(typed).substr(0, caret), longest).size();
  SendMessageW(window.edit, EM_SETSEL, window.mark, -1);
  SendMessageW(window.edit, EM_REPLACESEL, TRUE,
               reinterpret_cast<LPARAM>(broken(typed, longest).c_str()));
  SendMessageW(window.edit, EM_SETSEL, caret, static_cast<LPARAM>(caret));
  SendMessageW(window.edit, EM_SCROLLCARET, 0, 0);
  return true;
}

} // namespace velora::win32
