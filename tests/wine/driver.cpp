// Drives the desktop program from outside as a user would: finds its windows by class and title,
// types, chooses commands by number, answers dialogs and reads texts back. It reads one command a
// line from standard input and answers each with one line, "ok ..." or "no ...". Line ends in texts
// travel as "\n". Started by the test `run` beside it.
#include "driver_windows.h"

#include <ole2.h>

#include <oleacc.h>

#include <cstring>
#include <iostream>
#include <map>
#include <sstream>
#include <utility>

namespace {

using Answer = std::pair<bool, std::string>;

// --- the commands ------------------------------------------------------------------------------

// window CLASS TITLE MILLISECONDS: waits until such a window is there.
Answer do_window(const Arguments &a) {
  const bool there =
      wait_until([&a] { return one_window(a[0], a[1]) != nullptr; }, std::stoi(a[2]));
  return {there, ""};
}

Answer do_gone(const Arguments &a) {
  const bool gone = wait_until([&a] { return one_window(a[0], a[1]) == nullptr; }, std::stoi(a[2]));
  return {gone, ""};
}

Answer do_count(const Arguments &a) {
  return {true, std::to_string(windows(a[0]).size())};
}

Answer do_titles(const Arguments &a) {
  std::string titles;
  for (const HWND window : windows(a[0]))
    titles += text_of(window) + "|";
  return {true, titles};
}

Answer do_close(const Arguments &a) {
  const HWND window = one_window(a[0], a[1]);
  return {window != nullptr && PostMessageW(window, WM_CLOSE, 0, 0) != FALSE, ""};
}

Answer do_activate(const Arguments &a) {
  const HWND window = one_window(a[0], a[1]);
  if (window == nullptr)
    return {false, ""};
  SetForegroundWindow(window);
  Sleep(200);
  return {true, ""};
}

Answer do_place(const Arguments &a) {
  const HWND window = one_window(a[0], a[1]);
  RECT r{};
  if (window == nullptr || GetWindowRect(window, &r) == FALSE)
    return {false, ""};
  std::ostringstream out;
  out << r.left << ' ' << r.top << ' ' << r.right - r.left << ' ' << r.bottom - r.top;
  return {true, out.str()};
}

// text CLASS TITLE: the text of the edit control of a text window.
Answer do_text(const Arguments &a) {
  const HWND edit = edit_of(one_window(a[0], a[1]));
  return {edit != nullptr, edit != nullptr ? text_of(edit) : ""};
}

Answer do_settext(const Arguments &a) {
  const HWND edit = edit_of(one_window(a[0], a[1]));
  if (edit == nullptr)
    return {false, ""};
  std::string text;
  for (const char c : a[2])
    text += c == '\n' ? std::string("\r\n") : std::string(1, c);
  const std::wstring wide = widen(text);
  send(edit, EM_SETSEL, 0, -1);
  send(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str()));
  return {true, ""};
}

// type TEXT: characters typed one by one into the console; "\n" is Enter.
Answer do_type(const Arguments &a) {
  const HWND edit = console_edit();
  if (edit == nullptr)
    return {false, ""};
  for (const wchar_t c : widen(a[0]))
    PostMessageW(edit, WM_CHAR, c == L'\n' ? L'\r' : c, 1);
  return {true, ""};
}

// key CODE: a key pressed in the console.
Answer do_key(const Arguments &a) {
  const HWND edit = console_edit();
  const auto code = static_cast<WPARAM>(std::stoi(a[0]));
  return {edit != nullptr && PostMessageW(edit, WM_KEYDOWN, code, 1) != FALSE, ""};
}

// chord LETTER: Alt and a letter, pressed and released as on the keyboard.
Answer do_chord(const Arguments &a) {
  const auto letter = static_cast<BYTE>(a[0].empty() ? 0 : a[0][0]);
  keybd_event(VK_MENU, 0, 0, 0);
  keybd_event(letter, 0, 0, 0);
  keybd_event(letter, 0, KEYEVENTF_KEYUP, 0);
  keybd_event(VK_MENU, 0, KEYEVENTF_KEYUP, 0);
  Sleep(300);
  return {true, ""};
}

// strike CODE: a key pressed and released as on the keyboard, for whoever has the focus.
Answer do_strike(const Arguments &a) {
  const auto code = static_cast<BYTE>(std::stoi(a[0]));
  keybd_event(code, 0, 0, 0);
  keybd_event(code, 0, KEYEVENTF_KEYUP, 0);
  Sleep(100);
  return {true, ""};
}

// ctrl CODE: Ctrl and a key, pressed and released as on the keyboard.
Answer do_ctrl(const Arguments &a) {
  keybd_event(VK_CONTROL, 0, 0, 0);
  const Answer answer = do_strike(a);
  keybd_event(VK_CONTROL, 0, KEYEVENTF_KEYUP, 0);
  Sleep(200);
  return answer;
}

// ctrl_shift CODE: the same with Shift.
Answer do_ctrl_shift(const Arguments &a) {
  keybd_event(VK_SHIFT, 0, 0, 0);
  const Answer answer = do_ctrl(a);
  keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
  return answer;
}

// described CLASS TITLE: what a screen reader hears of the inside: name, description, role.
Answer do_described(const Arguments &a) {
  const HWND window = one_window(a[0], a[1]);
  const HWND edit = edit_of(window);
  void *found = nullptr;
  if (window == nullptr ||
      AccessibleObjectFromWindow(edit != nullptr ? edit : window, static_cast<DWORD>(OBJID_CLIENT),
                                 __uuidof(IAccessible), &found) != S_OK)
    return {false, ""};
  auto *heard = static_cast<IAccessible *>(found);
  VARIANT itself{};
  itself.vt = VT_I4;
  VARIANT role{};
  BSTR name = nullptr;
  BSTR description = nullptr;
  heard->get_accName(itself, &name);
  heard->get_accDescription(itself, &description);
  heard->get_accRole(itself, &role);
  const auto told = [](BSTR text) { return text == nullptr ? std::string() : narrow(text); };
  const std::string all =
      told(name) + "|" + told(description) + "|" + std::to_string(static_cast<int>(role.lVal));
  SysFreeString(name);
  SysFreeString(description);
  heard->Release();
  return {true, all};
}

// system CLASS TITLE CODE: a command of the window's own menu, as its buttons give.
Answer do_system(const Arguments &a) {
  const HWND window = one_window(a[0], a[1]);
  const auto code = static_cast<WPARAM>(std::stoi(a[2]));
  return {window != nullptr && PostMessageW(window, WM_SYSCOMMAND, code, 0) != FALSE, ""};
}

// caret AT: puts the caret of the console there; -1 is the end.
Answer do_caret(const Arguments &a) {
  const HWND edit = console_edit();
  if (edit == nullptr)
    return {false, ""};
  const int at = std::stoi(a[0]);
  const auto place = at < 0 ? send(edit, WM_GETTEXTLENGTH, 0, 0) : at;
  send(edit, EM_SETSEL, static_cast<WPARAM>(place), place);
  return {true, ""};
}

// Where a place of a text stands in its edit control, a little inside of the letter.
LPARAM point_of(HWND edit, const std::string &place) {
  const LRESULT at = send(edit, EM_POSFROMCHAR, static_cast<WPARAM>(std::stoi(place)), 0);
  return MAKELPARAM(LOWORD(at) + 3, HIWORD(at) + 3);
}

// click CLASS TITLE PLACE: a click of the mouse on a letter of a text.
Answer do_click(const Arguments &a) {
  const HWND edit = edit_of(one_window(a[0], a[1]));
  if (edit == nullptr)
    return {false, ""};
  PostMessageW(edit, WM_LBUTTONDOWN, MK_LBUTTON, point_of(edit, a[2]));
  PostMessageW(edit, WM_LBUTTONUP, 0, point_of(edit, a[2]));
  Sleep(300);
  return {true, ""};
}

// hover CLASS TITLE PLACE: the mouse over a letter of a text; tells the tips that are shown then.
Answer do_hover(const Arguments &a) {
  const HWND edit = edit_of(one_window(a[0], a[1]));
  if (edit == nullptr)
    return {false, ""};
  send(edit, WM_MOUSEMOVE, 0, point_of(edit, a[2]));
  Sleep(300);
  std::string shown;
  for (const HWND tip : windows("tooltips_class32"))
    if (IsWindowVisible(tip) != FALSE)
      shown += text_of(tip) + "|";
  return {true, shown};
}

// wheel CLASS TITLE KEYS TURN: turns the wheel over a window while the keys (MK_SHIFT...) are down.
Answer do_wheel(const Arguments &a) {
  const HWND window = one_window(a[0], a[1]);
  const WPARAM turn = MAKEWPARAM(std::stoi(a[2]), std::stoi(a[3]));
  return {window != nullptr && send(window, WM_MOUSEWHEEL, turn, 0) == 0, ""};
}

bool set_clipboard(const std::wstring &text) {
  if (OpenClipboard(nullptr) == FALSE)
    return false;
  EmptyClipboard();
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
  std::memcpy(GlobalLock(block), text.c_str(), bytes);
  GlobalUnlock(block);
  SetClipboardData(CF_UNICODETEXT, block);
  CloseClipboard();
  return true;
}

// select FROM TO: selects a stretch of the console's text.
Answer do_select(const Arguments &a) {
  const HWND edit = console_edit();
  if (edit == nullptr)
    return {false, ""};
  send(edit, EM_SETSEL, static_cast<WPARAM>(std::stoi(a[0])), std::stoi(a[1]));
  return {true, ""};
}

// selected CLASS TITLE: where the selection of a text begins and ends.
Answer do_selected(const Arguments &a) {
  const auto ends = static_cast<DWORD>(send(edit_of(one_window(a[0], a[1])), EM_GETSEL, 0, 0));
  return {true, std::to_string(LOWORD(ends)) + " " + std::to_string(HIWORD(ends))};
}

// logoff: asks the program, as the system does, whether the session may end; tells the answer.
Answer do_logoff(const Arguments &) {
  DWORD_PTR answer = 0;
  const bool heard = SendMessageTimeoutW(frame(), WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL,
                                         kSendPatience, &answer) != 0;
  return {heard, answer != 0 ? "yes" : "no"};
}

// drag STEPS: makes the console wider and narrower in steps, as by dragging its frame; tells how
// many milliseconds it took.
Answer do_drag(const Arguments &a) {
  const HWND window = one_window("ControlChild");
  RECT r{};
  GetWindowRect(window, &r);
  const ULONGLONG begin = GetTickCount64();
  send(window, WM_ENTERSIZEMOVE, 0, 0);
  for (int step = std::stoi(a[0]); step > 0; --step)
    SetWindowPos(window, nullptr, 0, 0, r.right - r.left + step * 4, r.bottom - r.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  send(window, WM_EXITSIZEMOVE, 0, 0);
  return {true, std::to_string(GetTickCount64() - begin)};
}

// clipboard: the text on it.
Answer do_clipboard(const Arguments &) {
  if (OpenClipboard(nullptr) == FALSE)
    return {false, ""};
  const HANDLE block = GetClipboardData(CF_UNICODETEXT);
  const auto *text = block == nullptr ? nullptr : static_cast<const wchar_t *>(GlobalLock(block));
  const std::string copied = text == nullptr ? "" : narrow(text);
  if (text != nullptr)
    GlobalUnlock(block);
  CloseClipboard();
  return {text != nullptr, copied};
}

// paste TEXT: puts the text on the clipboard and pastes it into the console.
Answer do_paste(const Arguments &a) {
  std::string text;
  for (const char c : a[0])
    text += c == '\n' ? std::string("\r\n") : std::string(1, c);
  const HWND edit = console_edit();
  if (edit == nullptr || !set_clipboard(widen(text)))
    return {false, ""};
  send(edit, WM_PASTE, 0, 0);
  return {true, ""};
}

Answer do_command(const Arguments &a) {
  const auto number = static_cast<WPARAM>(std::stoi(a[0]));
  return {PostMessageW(frame(), WM_COMMAND, number, 0) != FALSE, ""};
}

// shows TEXT MILLISECONDS: waits until the console's text holds it.
Answer do_shows(const Arguments &a) {
  std::string last;
  const bool there = wait_until(
      [&] {
        last = text_of(console_edit());
        std::erase(last, '\r');
        return last.find(a[0]) != std::string::npos;
      },
      std::stoi(a[1]));
  return {there, there ? "" : last.substr(last.size() > 400 ? last.size() - 400 : 0)};
}

// dialog MILLISECONDS: waits for a dialog and tells its title, texts and buttons.
Answer do_dialog(const Arguments &a) {
  if (!wait_until([] { return dialog() != nullptr; }, std::stoi(a[0])))
    return {false, ""};
  Sleep(100);
  const HWND box = dialog();
  std::string all = text_of(box);
  for (const HWND child : children(box))
    if (IsWindowVisible(child) != FALSE)
      all += "|" + without_mnemonic(text_of(child));
  return {true, all};
}

// push LABEL: presses a button of the dialog.
Answer do_push(const Arguments &a) {
  for (const HWND child : children(dialog())) {
    if (class_of(child) != "Button" || without_mnemonic(text_of(child)) != a[0])
      continue;
    PostMessageW(child, BM_CLICK, 0, 0);
    Sleep(200);
    return {true, ""};
  }
  return {false, "no such button"};
}

// press LABEL: the same, and waits until the dialog has gone.
Answer do_press(const Arguments &a) {
  const HWND box = dialog();
  const Answer pushed = do_push(a);
  if (!pushed.first)
    return pushed;
  return {
      wait_until([box] { return IsWindow(box) == FALSE || IsWindowVisible(box) == FALSE; }, 5000),
      ""};
}

// fill TEXT: types into the dialog's edit control.
Answer do_fill(const Arguments &a) {
  for (const HWND child : children(dialog())) {
    if (class_of(child) != "Edit")
      continue;
    const std::wstring wide = widen(a[0]);
    send(child, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
    return {true, ""};
  }
  return {false, "no edit control"};
}

// fill_next TEXT: types into the edit control behind the first.
Answer do_fill_next(const Arguments &a) {
  bool first = true;
  for (const HWND child : children(dialog())) {
    if (class_of(child) != "Edit" || std::exchange(first, false))
      continue;
    const std::wstring wide = widen(a[0]);
    send(child, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
    return {true, ""};
  }
  return {false, "no second edit control"};
}

// line_height CLASS TITLE: how far apart the first two lines of a text stand.
Answer do_line_height(const Arguments &a) {
  const HWND edit = edit_of(one_window(a[0], a[1]));
  const auto top = [edit](WPARAM line) {
    return static_cast<short>(HIWORD(
        send(edit, EM_POSFROMCHAR, static_cast<WPARAM>(send(edit, EM_LINEINDEX, line, 0)), 0)));
  };
  return {edit != nullptr, std::to_string(top(1) - top(0))};
}

// enabled CLASS TITLE: "yes" when the window takes keys and clicks, else "no".
Answer do_enabled(const Arguments &a) {
  const HWND window = one_window(a[0], a[1]);
  return {window != nullptr, IsWindowEnabled(window) != FALSE ? "yes" : "no"};
}

Answer do_sleep(const Arguments &a) {
  Sleep(static_cast<DWORD>(std::stoi(a[0])));
  return {true, ""};
}

struct Row {
  Answer (*run)(const Arguments &);
  std::size_t arguments;
};

const std::map<std::string, Row> kCommands = {
    {"window", {do_window, 3}},
    {"gone", {do_gone, 3}},
    {"count", {do_count, 1}},
    {"titles", {do_titles, 1}},
    {"close", {do_close, 2}},
    {"activate", {do_activate, 2}},
    {"place", {do_place, 2}},
    {"text", {do_text, 2}},
    {"settext", {do_settext, 3}},
    {"type", {do_type, 1}},
    {"key", {do_key, 1}},
    {"caret", {do_caret, 1}},
    {"paste", {do_paste, 1}},
    {"command", {do_command, 1}},
    {"shows", {do_shows, 2}},
    {"dialog", {do_dialog, 1}},
    {"press", {do_press, 1}},
    {"fill", {do_fill, 1}},
    {"enabled", {do_enabled, 2}},
    {"ctrl", {do_ctrl, 1}},
    {"system", {do_system, 3}},
    {"sleep", {do_sleep, 1}},
    {"chord", {do_chord, 1}},
    {"strike", {do_strike, 1}},
    {"select", {do_select, 2}},
    {"selected", {do_selected, 2}},
    {"clipboard", {do_clipboard, 0}},
    {"drag", {do_drag, 1}},
    {"logoff", {do_logoff, 0}},
    {"wheel", {do_wheel, 4}},
    {"click", {do_click, 3}},
    {"hover", {do_hover, 3}},
    {"push", {do_push, 1}},
    {"fill_next", {do_fill_next, 1}},
    {"line_height", {do_line_height, 2}},
    {"ctrl_shift", {do_ctrl_shift, 1}},
    {"described", {do_described, 2}},
};

Answer obey(const std::string &line) {
  Arguments words = split(line);
  if (words.empty())
    return {false, "no command"};
  const auto row = kCommands.find(words.front());
  words.erase(words.begin());
  if (row == kCommands.end() || words.size() != row->second.arguments)
    return {false, "bad command"};
  for (std::string &word : words)
    word = unescaped(word);
  return row->second.run(words);
}

} // namespace

int main() {
  CoInitialize(nullptr);
  std::string line;
  while (std::getline(std::cin, line)) {
    while (!line.empty() && line.back() == '\r')
      line.pop_back();
    const Answer answer = obey(line);
    std::cout << (answer.first ? "ok " : "no ") << escaped(answer.second) << std::endl;
  }
}
