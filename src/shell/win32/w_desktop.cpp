// Windows of the program: making, placing, texts, dialogs and the message pump of running commands.
// Places and sizes come in units of 96 an inch and are turned into dots here.
#include "shell/win32/w_desktop.h"

#include <algorithm>

#include "shell/console_window.h"
#include "shell/desk_events.h"
#include "shell/events/event_answers.h"
#include "shell/vel_wins.h"
#include "shell/win32/resource.h"
#include "shell/win32/w_clipboard.h"
#include "shell/win32/w_commands.h"
#include "shell/win32/w_dialogs.h"
#include "shell/win32/w_edit.h"
#include "shell/win32/w_find.h"
#include "shell/win32/w_objects.h"
#include "shell/win32/w_spots.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"
#include "shell/window_desktop.h"

namespace velora {

using namespace win32;

namespace {

RECT in_dots(const Rect &place) {
  return {to_dots(hVel, place.left), to_dots(hVel, place.top), to_dots(hVel, place.right),
          to_dots(hVel, place.bottom)};
}

Rect in_units(const RECT &place) {
  return {to_units(hVel, place.left), to_units(hVel, place.top), to_units(hVel, place.right),
          to_units(hVel, place.bottom)};
}

// Makes the window so large that its inside has that size.
void place_inside(RECT &dots) {
  const POINT corner{dots.left, dots.top};
  AdjustWindowRectExForDpi(&dots, WS_OVERLAPPEDWINDOW, FALSE, 0, dpi_of(hVel));
  OffsetRect(&dots, corner.x - dots.left, corner.y - dots.top);
}

// Ctrl+Tab and Ctrl+F6, back with Shift, whatever has the focus.
bool goes_to_next_window(const MSG &message) {
  if (message.message != WM_KEYDOWN || (message.wParam != VK_TAB && message.wParam != VK_F6) ||
      GetKeyState(VK_CONTROL) >= 0)
    return false;
  run_step([] { next_window_asked(GetKeyState(VK_SHIFT) < 0 ? -1 : 1); });
  return true;
}

// Keys of the desktop's own commands, while no dialog stands.
bool own_key_taken(const MSG &message) {
  bool taken = false;
  if (IsWindowEnabled(hVel) != FALSE)
    run_step([&] { taken = take_own_key(message); });
  return taken;
}

} // namespace

WindowId WindowDesktop::create_window(WindowKind kind, const std::string &title,
                                      const Rect &place) {
  Window *window = add_window(kind);
  const WindowId id = window->id;
  RECT dots = in_dots(place);
  if (means_inside(kind, place))
    place_inside(dots);
  const DWORD style =
      WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | (holds_text(kind) ? 0 : WS_HSCROLL | WS_VSCROLL);
  const HWND hwnd = CreateWindowExW(0, class_of(kind), widen(title).c_str(), style, dots.left,
                                    dots.top, dots.right - dots.left, dots.bottom - dots.top, hVel,
                                    nullptr, hInst, nullptr);
  if (hwnd != nullptr)
    window->hwnd = hwnd;
  if (hwnd == nullptr || (holds_text(kind) && !make_edit(*window))) {
    remove_window(id);
    if (hwnd != nullptr)
      DestroyWindow(hwnd);
    return 0;
  }
  RECT inside{};
  GetClientRect(hwnd, &inside);
  SendMessageW(hwnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(inside.right, inside.bottom));
  enter_window(id, kind);
  return id;
}

void WindowDesktop::close_window(WindowId win) {
  leave_window(win);
  if (Window *window = find_window(win)) {
    const HWND hwnd = window->hwnd;
    remove_window(win);
    DestroyWindow(hwnd);
  }
}

void WindowDesktop::set_title(WindowId win, const std::string &title) {
  if (const Window *window = find_window(win))
    SetWindowTextW(window->hwnd, widen(title).c_str());
}

// Placed windows come to the front one after the other, so that the last one lies on top.
void WindowDesktop::place_window(WindowId win, const Rect &place) {
  const Window *window = find_window(win);
  if (window == nullptr)
    return;
  const RECT dots = in_dots(place);
  if (IsIconic(window->hwnd) != FALSE || IsZoomed(window->hwnd) != FALSE)
    ShowWindow(window->hwnd, SW_RESTORE);
  SetWindowPos(window->hwnd, HWND_TOP, dots.left, dots.top, dots.right - dots.left,
               dots.bottom - dots.top, SWP_NOACTIVATE);
}

void WindowDesktop::show_window(WindowId win) {
  if (const Window *window = find_window(win)) {
    ShowWindow(window->hwnd, IsIconic(window->hwnd) != FALSE ? SW_SHOWNOACTIVATE : SW_SHOWNA);
    SetWindowPos(window->hwnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    UpdateWindow(window->hwnd);
  }
}

void WindowDesktop::focus_window(WindowId win) {
  const Window *window = find_window(win);
  if (window == nullptr)
    return;
  if (IsIconic(window->hwnd) != FALSE)
    ShowWindow(window->hwnd, SW_RESTORE);
  SetActiveWindow(window->hwnd);
  SetFocus(window->edit != nullptr ? window->edit : window->hwnd);
}

void WindowDesktop::invalidate(WindowId win) {
  if (const Window *window = find_window(win))
    InvalidateRect(window->hwnd, nullptr, FALSE);
}

Rect WindowDesktop::client_rect(WindowId win) {
  const Window *window = find_window(win);
  RECT inside{};
  if (window == nullptr)
    return {};
  if (gEventAnswers == nullptr) {
    GetClientRect(window->hwnd, &inside);
    return in_units(inside);
  }
  // Under a script the inside of a window is as large as its place on every desktop, so that the
  // nodes of a picture stand in the same places.
  GetWindowRect(window->hwnd, &inside);
  OffsetRect(&inside, -inside.left, -inside.top);
  return in_units(inside);
}

// --- text --------------------------------------------------------------------------------------

std::string WindowDesktop::text_of(WindowId win) {
  const Window *window = find_window(win);
  return window != nullptr && window->edit != nullptr ? text_of_edit(*window) : std::string();
}

void WindowDesktop::set_text(WindowId win, std::string_view text) {
  if (Window *window = find_window(win); window != nullptr && window->edit != nullptr)
    set_edit_text(*window, text);
}

void WindowDesktop::append_text(WindowId win, std::string_view text,
                                const std::vector<TextRange> &standing_out) {
  if (Window *window = find_window(win); window != nullptr && window->edit != nullptr)
    append_edit_text(*window, text, standing_out);
}

std::string WindowDesktop::typed_text(WindowId win) {
  const Window *window = find_window(win);
  return window != nullptr && window->edit != nullptr ? typed_text_of(*window) : std::string();
}

void WindowDesktop::set_typed_text(WindowId win, std::string_view text) {
  if (Window *window = find_window(win); window != nullptr && window->edit != nullptr)
    set_typed(*window, text);
}

std::size_t WindowDesktop::drop_front(WindowId win, std::size_t keep) {
  Window *window = find_window(win);
  return window != nullptr && window->edit != nullptr ? drop_front_of(*window, keep) : 0;
}

void WindowDesktop::prepend_text(WindowId win, std::string_view text) {
  if (Window *window = find_window(win); window != nullptr && window->edit != nullptr)
    prepend_edit_text(*window, text);
}

std::size_t WindowDesktop::columns(WindowId win) {
  const Window *window = find_window(win);
  return window != nullptr && window->edit != nullptr ? columns_of(*window) : 0;
}

EditState WindowDesktop::edit_state(WindowId win) {
  const Window *window = find_window(win);
  return window != nullptr && window->edit != nullptr ? edit_state_of(*window) : EditState{};
}

void WindowDesktop::edit(WindowId win, EditCommand command) {
  if (Window *window = find_window(win); window != nullptr && window->edit != nullptr)
    do_edit(*window, command);
}

TextRange WindowDesktop::selection(WindowId win) {
  const Window *window = find_window(win);
  if (window == nullptr || window->edit == nullptr)
    return {};
  return bytes_of_range(*window, selection_of(*window));
}

void WindowDesktop::select_text(WindowId win, TextRange range) {
  const Window *window = find_window(win);
  if (window == nullptr || window->edit == nullptr)
    return;
  const EditRange place = range_of_bytes(*window, range);
  SendMessageW(window->edit, EM_SETSEL, place.start, static_cast<LPARAM>(place.end));
  SendMessageW(window->edit, EM_SCROLLCARET, 0, 0);
}

// --- menus, dialogs, measures ------------------------------------------------------------------

void WindowDesktop::show_menu_bar(MenuBar bar) {
  show_bar(bar);
}

MenuBar WindowDesktop::menu_bar() {
  return shown_bar();
}

void WindowDesktop::enable_item(int command, bool on) {
  enable_menu_item(command, on);
}

void WindowDesktop::enable_menu(MenuBar bar, const std::string &label, bool on) {
  enable_whole_menu(bar, label, on);
}

void WindowDesktop::enable_menus(bool on) {
  enable_all_menus(on);
}

void WindowDesktop::set_user_menu(MenuBar bar, const std::string &header,
                                  const std::vector<std::string> &names, int first_command) {
  fill_user_menu(bar, header, names, first_command);
}

std::string WindowDesktop::menu_label(MenuBar bar, int command) {
  return user_menu_label(bar, command);
}

std::optional<std::string> WindowDesktop::choose_file(bool for_saving, const std::string &title,
                                                      const std::string &pattern) {
  gDesktopConsole.show();
  return gEventAnswers != nullptr ? gEventAnswers->choose_file(title)
                                  : choose_file_name(for_saving, title, pattern);
}

void WindowDesktop::set_cursor(CursorShape shape) {
  show_cursor(shape);
}

void WindowDesktop::set_extent(WindowId win, const Rect &extent) {
  Window *window = find_window(win);
  if (window == nullptr || window->edit != nullptr)
    return;
  window->extent = extent;
  update_scroll_bars(*window);
}

PictureView WindowDesktop::view_of(WindowId win) {
  const Window *window = find_window(win);
  if (window == nullptr)
    return {};
  return {{static_cast<int>(window->scroll.x), static_cast<int>(window->scroll.y)}, window->zoom};
}

void WindowDesktop::set_view(WindowId win, const PictureView &view) {
  Window *window = find_window(win);
  if (window == nullptr || window->edit != nullptr)
    return;
  window->zoom = view.percent;
  window->scroll = {view.origin.x, view.origin.y};
  update_scroll_bars(*window);
  InvalidateRect(window->hwnd, nullptr, FALSE);
}

void WindowDesktop::show_database(const std::string &name, bool unsaved) {
  std::string title = VELORA_TITLE;
  if (!name.empty() || unsaved)
    title += " - " + name + (unsaved ? "*" : "");
  SetWindowTextW(hVel, widen(title).c_str());
}

// The frame has no place for one.
void WindowDesktop::show_hint(const std::string &) {}

void WindowDesktop::mark_faults(WindowId win, const std::vector<TextMark> &marks) {
  if (Window *window = find_window(win); window != nullptr && window->edit != nullptr)
    set_faults(*window, marks);
}

int WindowDesktop::ask(const std::string &message, const std::vector<std::string> &buttons) {
  return gEventAnswers != nullptr ? gEventAnswers->ask(message, buttons)
                                  : ask_question(message, buttons);
}

bool WindowDesktop::ask_text(const std::string &prompt, std::string &answer) {
  return gEventAnswers != nullptr ? gEventAnswers->ask_text(prompt, answer)
                                  : ask_line(prompt, answer);
}

void WindowDesktop::message_box(const std::string &title, const std::string &text) {
  gDesktopConsole.show();
  if (gEventAnswers != nullptr)
    gEventAnswers->message_box(title, text);
  else
    show_message(title, text, MB_ICONERROR);
}

std::string WindowDesktop::clipboard_text() {
  return text_on_clipboard();
}

void WindowDesktop::set_clipboard_text(const std::string &text) {
  put_on_clipboard(text);
}

void WindowDesktop::pump(int milliseconds) {
  if (milliseconds > 0 && gEventAnswers != nullptr)
    type_next_answer();
  else if (milliseconds > 0)
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(milliseconds), QS_ALLINPUT);
  service_messages();
}

namespace win32 {

void take_message(MSG &message) {
  if (find_dialog_message(message) || goes_to_next_window(message) ||
      TranslateAcceleratorW(hVel, hAccel, &message) != 0 || own_key_taken(message))
    return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

// The interrupt keys are taken before any window sees them. Other keys go to the window that has
// the focus; what is typed in the console waits there, and commands are refused while one runs.
void service_messages() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      interrupt_asked();
      return;
    }
    const bool key = message.message == WM_KEYDOWN;
    if (key && (message.wParam == VK_ESCAPE || message.wParam == VK_CANCEL)) {
      interrupt_asked();
      continue;
    }
    take_message(message);
  }
}

} // namespace win32

void WindowDesktop::beep() {
  MessageBeep(MB_ICONEXCLAMATION);
}

bool WindowDesktop::save_bitmap(WindowId win, const std::string &file) {
  Window *window = find_window(win);
  return window != nullptr && win32::save_bitmap(*window, file);
}

Rect WindowDesktop::screen() {
  return in_units({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
}

Rect WindowDesktop::work_area() {
  return in_units(frame_inside());
}

void WindowDesktop::quit() {
  DestroyWindow(hVel);
}

} // namespace velora
