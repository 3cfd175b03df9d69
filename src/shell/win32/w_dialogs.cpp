// The dialogs. The boxes come from the resources and are fitted to their texts and buttons, on the
// screen that their owner is on.
#include "shell/win32/w_dialogs.h"

#include <algorithm>
#include <string_view>

#include "platform/response.h"
#include "shell/win32/resource.h"
#include "shell/win32/w_guard.h"
#include "shell/win32/w_modal.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

constexpr int kMostButtons = 4;

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

// The size of a text in a control's font, wrapped at `width` dots; wider when one word alone is.
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

// The screen that the dialog's owner is on, without the system's own bars.
RECT screen_of(HWND dialog) {
  const HWND owner = GetWindow(dialog, GW_OWNER);
  MONITORINFO info{};
  info.cbSize = sizeof info;
  GetMonitorInfoW(MonitorFromWindow(owner != nullptr ? owner : dialog, MONITOR_DEFAULTTONEAREST),
                  &info);
  return info.rcWork;
}

void resize_inside(HWND dialog, int width, int height) {
  RECT outside{};
  RECT inside{};
  GetWindowRect(dialog, &outside);
  GetClientRect(dialog, &inside);
  const int w = width + (outside.right - outside.left) - inside.right;
  const int h = height + (outside.bottom - outside.top) - inside.bottom;
  const RECT screen = screen_of(dialog);
  SetWindowPos(dialog, nullptr, (screen.left + screen.right - w) / 2,
               (screen.top + screen.bottom - h) / 2, w, h, SWP_NOZORDER);
}

// A dialog laid out by its text: the text on top, the rest below it from `next` on, all between the
// margins and at least as wide as the text.
struct Layout {
  Size unit;
  int margin;
  int width;
  int next;
};

// Puts the text on top; one that would fill the screen, or that has a word wider than the dialog,
// stands in a control that scrolls over it.
Layout lay_out_message(HWND dialog, const std::wstring &text, int least_width) {
  const Size unit = dialog_units(dialog);
  const int margin = unit.height;
  const RECT screen = screen_of(dialog);
  const int most_width = std::min<int>(unit.width * 70, (screen.right - screen.left) * 3 / 4);
  const int most_height = static_cast<int>(screen.bottom - screen.top) * 2 / 5;
  Size size = text_size(GetDlgItem(dialog, IDC_MESSAGE), text, most_width);
  const bool fits = size.width <= most_width && size.height <= most_height;
  if (!fits) {
    const int lines = size.width / most_width + 2;
    size = {most_width, std::min(std::max(size.height, lines * margin), most_height)};
  }
  size.width = std::max(size.width + unit.width, least_width); // letters may hang over
  const HWND shown = GetDlgItem(dialog, fits ? IDC_MESSAGE : IDC_LONG_MESSAGE);
  SendMessageW(shown, EM_SETLIMITTEXT, 0, 0); // heeded by the scrolling one only
  SetWindowTextW(shown, text.c_str());
  MoveWindow(shown, margin, margin, size.width, size.height, FALSE);
  ShowWindow(shown, SW_SHOW);
  ShowWindow(GetDlgItem(dialog, fits ? IDC_LONG_MESSAGE : IDC_MESSAGE), SW_HIDE);
  return {unit, margin, size.width, margin + size.height + margin};
}

// The message on top, the buttons below one another, all as wide as the widest.
void lay_out_question(HWND dialog, const Question &question) {
  const Size unit = dialog_units(dialog);
  const HWND message = GetDlgItem(dialog, IDC_MESSAGE);
  int least = unit.width * 40;
  for (const std::wstring &label : question.buttons)
    least = std::max(least, text_size(message, label, unit.width * 60).width + 2 * unit.height);
  least = std::min(least, unit.width * 70);
  Layout at = lay_out_message(dialog, question.message, least);
  const int height = unit.height * 14 / 8;
  const auto place = [&](int id, bool used, const wchar_t *label) {
    const HWND button = GetDlgItem(dialog, id);
    ShowWindow(button, used ? SW_SHOW : SW_HIDE);
    EnableWindow(button, used ? TRUE : FALSE);
    if (!used)
      return;
    SetWindowTextW(button, label);
    MoveWindow(button, at.margin, at.next, at.width, height, FALSE);
    at.next += height + unit.height / 2;
  };
  for (int i = 0; i < kMostButtons; ++i) {
    const auto n = static_cast<std::size_t>(i);
    const bool used = n < question.buttons.size();
    place(IDC_CHOICE1 + i, used, used ? question.buttons[n].c_str() : L"");
  }
  place(IDCANCEL, true, L"Cancel");
  resize_inside(dialog, at.width + 2 * at.margin, at.next + unit.height / 2);
}

// The prompt on top, the line below it, the buttons at the right end.
void lay_out_line(HWND dialog, const Line &line) {
  const Size unit = dialog_units(dialog);
  const Layout at = lay_out_message(dialog, line.prompt, unit.width * 50);
  const int height = unit.height * 14 / 8;
  const int gap = unit.height / 2;
  const int button = unit.width * 50 / 4;
  const int buttons = at.next + height + unit.height;
  const int right = at.margin + at.width;
  MoveWindow(GetDlgItem(dialog, IDC_ANSWER), at.margin, at.next, at.width, height, FALSE);
  MoveWindow(GetDlgItem(dialog, IDOK), right - 2 * button - gap, buttons, button, height, FALSE);
  MoveWindow(GetDlgItem(dialog, IDCANCEL), right - button, buttons, button, height, FALSE);
  resize_inside(dialog, at.width + 2 * at.margin, buttons + height + at.margin);
}

INT_PTR question_message(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    const auto &question = *reinterpret_cast<const Question *>(lparam);
    lay_out_question(dialog, question);
    if (!question.buttons.empty())
      return TRUE;
    SendMessageW(dialog, DM_SETDEFID, IDCANCEL, 0);
    SetFocus(GetDlgItem(dialog, IDCANCEL));
    return FALSE;
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

INT_PTR CALLBACK question_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  return guarded<question_message>(dialog, message, wparam, lparam);
}

std::wstring item_text(HWND dialog, int id) {
  const HWND item = GetDlgItem(dialog, id);
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(item)), L'\0');
  GetWindowTextW(item, text.data(), static_cast<int>(text.size()) + 1);
  return text;
}

INT_PTR line_message(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    const auto *line = reinterpret_cast<const Line *>(lparam);
    SetWindowLongPtrW(dialog, DWLP_USER, lparam);
    lay_out_line(dialog, *line);
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

INT_PTR CALLBACK line_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  return guarded<line_message>(dialog, message, wparam, lparam);
}

INT_PTR about_message(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
  if (message == WM_COMMAND && (LOWORD(wparam) == IDOK || LOWORD(wparam) == IDCANCEL))
    EndDialog(dialog, 1);
  return message == WM_INITDIALOG || message == WM_COMMAND ? TRUE : FALSE;
}

INT_PTR CALLBACK about_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  return guarded<about_message>(dialog, message, wparam, lparam);
}

} // namespace

int ask_question(const std::string &message, const std::vector<std::string> &buttons) {
  Question question{to_edit(message), {}};
  for (const std::string &label : buttons)
    if (question.buttons.size() < kMostButtons)
      question.buttons.push_back(widen(label));
  const ModalScope modal;
  const INT_PTR answer = DialogBoxParamW(hInst, MAKEINTRESOURCEW(IDD_QUESTION), modal.owner(),
                                         question_proc, reinterpret_cast<LPARAM>(&question));
  return answer >= 1 && answer <= kMostButtons ? static_cast<int>(answer) : kCancelled;
}

bool ask_line(const std::string &prompt, std::string &answer) {
  Line line{to_edit(prompt), widen(answer)};
  const ModalScope modal;
  if (DialogBoxParamW(hInst, MAKEINTRESOURCEW(IDD_TEXT), modal.owner(), line_proc,
                      reinterpret_cast<LPARAM>(&line)) != 1)
    return false;
  answer = narrow(line.answer);
  return true;
}

void show_message(const std::string &title, const std::string &text, UINT icon) {
  const ModalScope modal;
  MessageBoxW(modal.owner(), widen(text).c_str(), widen(title).c_str(), MB_OK | icon);
}

void show_about() {
  const ModalScope modal;
  DialogBoxParamW(hInst, L"VeloraDlg", modal.owner(), about_proc, 0);
}

} // namespace velora::win32
