// The dialogs. The boxes come from the resources; a question's box is fitted to its text and
// buttons.
#include "shell/win32/w_dialogs.h"

#include <algorithm>
#include <string_view>

#include "shell/win32/resource.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

constexpr int kMostButtons = 4;
constexpr int kCancelled = 5;

struct Question {
  std::wstring message;
  std::vector<std::wstring> buttons;
};

struct Line {
  std::wstring prompt;
  std::wstring answer;
};

struct Size {
  int width;
  int height;
};

// The size of a text in a control's font, wrapped at `width` dots.
Size text_size(HWND control, const std::wstring &text, int width) {
  const WindowDC dc(control);
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
  const Selected use(dc, font);
  RECT box{0, 0, width, 0};
  DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &box,
            DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
  return {box.right, box.bottom};
}

// One dialog unit, four across and eight down, in dots.
Size dialog_units(HWND dialog) {
  RECT box{0, 0, 4, 8};
  MapDialogRect(dialog, &box);
  return {box.right, box.bottom};
}

void resize_inside(HWND dialog, int width, int height) {
  RECT outside{};
  RECT inside{};
  GetWindowRect(dialog, &outside);
  GetClientRect(dialog, &inside);
  const int w = width + (outside.right - outside.left) - inside.right;
  const int h = height + (outside.bottom - outside.top) - inside.bottom;
  RECT screen{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
  SetWindowPos(dialog, nullptr, (screen.left + screen.right - w) / 2,
               (screen.top + screen.bottom - h) / 2, w, h, SWP_NOZORDER);
}

// The message on top, the buttons below one another, all as wide as the widest.
void lay_out_question(HWND dialog, const Question &question) {
  const Size unit = dialog_units(dialog);
  const int margin = unit.height;
  const HWND message = GetDlgItem(dialog, IDC_MESSAGE);
  const int most = unit.width * 70;
  const Size text = text_size(message, question.message, most);
  int width = std::max(text.width, unit.width * 40);
  for (const std::wstring &label : question.buttons)
    width = std::max(width, text_size(message, label, most).width + 2 * margin);
  SetDlgItemTextW(dialog, IDC_MESSAGE, question.message.c_str());
  MoveWindow(message, margin, margin, width, text.height, FALSE);
  int y = margin + text.height + margin;
  const int height = unit.height * 14 / 8;
  const auto place = [&](int id, bool used, const wchar_t *label) {
    const HWND button = GetDlgItem(dialog, id);
    ShowWindow(button, used ? SW_SHOW : SW_HIDE);
    EnableWindow(button, used ? TRUE : FALSE);
    if (!used)
      return;
    SetWindowTextW(button, label);
    MoveWindow(button, margin, y, width, height, FALSE);
    y += height + unit.height / 2;
  };
  for (int i = 0; i < kMostButtons; ++i) {
    const auto n = static_cast<std::size_t>(i);
    const bool used = n < question.buttons.size();
    place(IDC_CHOICE1 + i, used, used ? question.buttons[n].c_str() : L"");
  }
  place(IDCANCEL, true, L"Cancel");
  resize_inside(dialog, width + 2 * margin, y + unit.height / 2);
}

INT_PTR CALLBACK question_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    lay_out_question(dialog, *reinterpret_cast<const Question *>(lparam));
    return TRUE;
  }
  if (message != WM_COMMAND || HIWORD(wparam) != BN_CLICKED)
    return FALSE;
  const int id = LOWORD(wparam);
  if (id >= IDC_CHOICE1 && id < IDC_CHOICE1 + kMostButtons)
    EndDialog(dialog, id - IDC_CHOICE1 + 1);
  else if (id == IDCANCEL)
    EndDialog(dialog, kCancelled);
  return TRUE;
}

std::wstring item_text(HWND dialog, int id) {
  const HWND item = GetDlgItem(dialog, id);
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(item)), L'\0');
  GetWindowTextW(item, text.data(), static_cast<int>(text.size()) + 1);
  return text;
}

INT_PTR CALLBACK line_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    const auto *line = reinterpret_cast<const Line *>(lparam);
    SetWindowLongPtrW(dialog, DWLP_USER, lparam);
    SetDlgItemTextW(dialog, IDC_MESSAGE, line->prompt.c_str());
    SetDlgItemTextW(dialog, IDC_ANSWER, line->answer.c_str());
    SendDlgItemMessageW(dialog, IDC_ANSWER, EM_SETSEL, 0, -1);
    SetFocus(GetDlgItem(dialog, IDC_ANSWER));
    return FALSE;
  }
  if (message != WM_COMMAND)
    return FALSE;
  if (LOWORD(wparam) == IDOK) {
    auto *line = reinterpret_cast<Line *>(GetWindowLongPtrW(dialog, DWLP_USER));
    line->answer = item_text(dialog, IDC_ANSWER);
    EndDialog(dialog, 1);
  } else if (LOWORD(wparam) == IDCANCEL) {
    EndDialog(dialog, 0);
  }
  return TRUE;
}

INT_PTR CALLBACK about_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
  if (message == WM_COMMAND && (LOWORD(wparam) == IDOK || LOWORD(wparam) == IDCANCEL))
    EndDialog(dialog, 1);
  return message == WM_INITDIALOG || message == WM_COMMAND ? TRUE : FALSE;
}

// "Title\0*.ddb\0All files\0*.*\0\0"
std::wstring file_filter(const std::string &pattern) {
  std::wstring filter = widen(pattern);
  filter += L'\0';
  filter += widen(pattern);
  filter += L'\0';
  filter += L"All files";
  filter += L'\0';
  filter += L"*.*";
  filter += L'\0';
  return filter;
}

} // namespace

int ask_question(HWND owner, const std::string &message, const std::vector<std::string> &buttons) {
  Question question{to_edit(message), {}};
  for (const std::string &label : buttons)
    if (question.buttons.size() < kMostButtons)
      question.buttons.push_back(widen(label));
  const INT_PTR answer = DialogBoxParamW(hInst, MAKEINTRESOURCEW(IDD_QUESTION), owner,
                                         question_proc, reinterpret_cast<LPARAM>(&question));
  return answer >= 1 && answer <= kMostButtons ? static_cast<int>(answer) : kCancelled;
}

bool ask_line(HWND owner, const std::string &prompt, std::string &answer) {
  Line line{widen(prompt), widen(answer)};
  if (DialogBoxParamW(hInst, MAKEINTRESOURCEW(IDD_TEXT), owner, line_proc,
                      reinterpret_cast<LPARAM>(&line)) != 1)
    return false;
  answer = narrow(line.answer);
  return true;
}

std::optional<std::string> choose_file_name(HWND owner, bool for_saving, const std::string &title,
                                            const std::string &pattern) {
  wchar_t name[4096] = L"";
  const std::wstring caption = widen(title);
  const std::wstring filter = file_filter(pattern);
  OPENFILENAMEW ask{};
  ask.lStructSize = sizeof ask;
  ask.hwndOwner = owner;
  ask.hInstance = hInst;
  ask.lpstrFilter = filter.c_str();
  ask.lpstrFile = name;
  ask.nMaxFile = static_cast<DWORD>(sizeof name / sizeof *name);
  ask.lpstrTitle = caption.c_str();
  ask.Flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_EXPLORER |
              (for_saving ? OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST : OFN_FILEMUSTEXIST);
  const BOOL chosen = for_saving ? GetSaveFileNameW(&ask) : GetOpenFileNameW(&ask);
  return chosen != FALSE ? std::optional(narrow(name)) : std::nullopt;
}

void show_about(HWND owner) {
  DialogBoxParamW(hInst, L"VeloraDlg", owner, about_proc, 0);
}

} // namespace velora::win32
