// Choosing a file with the system's dialogs. The program adds a kind's ending to names without one,
// so that is done here already: what the dialog asks about is the file that will be written. Where
// any kind will do ("*.*") there is no ending to add.
#include <cwctype>
#include <string_view>

#include "shell/win32/w_dialogs.h"
#include "shell/win32/w_modal.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

struct FileKind {
  std::string_view pattern;
  const char *name;
};
constexpr FileKind kFileKinds[] = {{"*.ddb", "Databases"},
                                   {"*.bmp", "Pictures"},
                                   {"*.txt", "Texts"},
                                   {"*.png", "Images"},
                                   {"*.svg", "Drawings"}};

const char *kind_name(std::string_view pattern) {
  for (const FileKind &kind : kFileKinds)
    if (kind.pattern == pattern)
      return kind.name;
  return "Files";
}

// "Databases (*.ddb)\0*.ddb\0All files (*.*)\0*.*\0\0"
std::wstring file_filter(const std::string &pattern) {
  std::wstring filter;
  for (const std::string &part : {std::string(kind_name(pattern)) + " (" + pattern + ")", pattern,
                                  std::string("All files (*.*)"), std::string("*.*")}) {
    filter += widen(part);
    filter += L'\0';
  }
  return filter;
}

bool has_ending(std::wstring_view name, std::wstring_view ending) {
  if (name.size() < ending.size())
    return false;
  name.remove_prefix(name.size() - ending.size());
  for (std::size_t i = 0; i < ending.size(); ++i)
    if (std::towlower(static_cast<std::wint_t>(name[i])) !=
        std::towlower(static_cast<std::wint_t>(ending[i])))
      return false;
  return true;
}

// The name with its kind's ending, where the user gave another or none that the system knows; empty
// when a file of that name is to be kept.
std::wstring completed(HWND owner, std::wstring name, const std::wstring &ending) {
  if (has_ending(name, ending))
    return name;
  name += ending;
  if (GetFileAttributesW(name.c_str()) == INVALID_FILE_ATTRIBUTES)
    return name;
  const std::wstring question = name + L" already exists.\nDo you want to replace it?";
  const int answer = MessageBoxW(owner, question.c_str(), L"Velora", MB_YESNO | MB_ICONWARNING);
  return answer == IDYES ? name : std::wstring();
}

} // namespace

std::optional<std::string> choose_file_name(bool for_saving, const std::string &title,
                                            const std::string &pattern) {
  const ModalScope modal;
  wchar_t name[4096] = L"";
  const std::wstring caption = widen(title);
  const std::wstring filter = file_filter(pattern);
  const std::wstring ending = pattern == "*.*" ? L"" : widen(pattern).substr(1);
  OPENFILENAMEW ask{};
  ask.lStructSize = sizeof ask;
  ask.hwndOwner = modal.owner();
  ask.hInstance = hInst;
  ask.lpstrFilter = filter.c_str();
  ask.lpstrFile = name;
  ask.nMaxFile = static_cast<DWORD>(sizeof name / sizeof *name);
  ask.lpstrTitle = caption.c_str();
  ask.lpstrDefExt = ending.empty() ? nullptr : ending.c_str() + 1;
  ask.Flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_EXPLORER |
              (for_saving ? OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST : OFN_FILEMUSTEXIST);
  while ((for_saving ? GetSaveFileNameW(&ask) : GetOpenFileNameW(&ask)) != FALSE) {
    if (!for_saving)
      return narrow(name);
    if (const std::wstring whole = completed(modal.owner(), name, ending); !whole.empty())
      return narrow(whole);
  }
  return std::nullopt;
}

} // namespace velora::win32
