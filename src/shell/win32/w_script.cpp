// The hands of a script in the windows of the window system. Keys that are held are set in the
// keyboard's state while a message is dealt with, as they would be under a person's hands.
#include "shell/win32/w_script.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include "shell/events/event_runner.h"
#include "shell/vel_wins.h"
#include "shell/win32/w_desktop.h"
#include "shell/win32/w_text.h"
#include "shell/win32/w_windows.h"

namespace velora::win32 {

namespace {

// Keys that are down while in scope.
class HeldKeys {
public:
  explicit HeldKeys(const Modifiers &held) {
    GetKeyboardState(before_);
    BYTE now[256];
    std::copy(std::begin(before_), std::end(before_), now);
    const auto set = [&now](int key, bool down) { now[key] = down ? 0x80 : 0; };
    set(VK_SHIFT, held.shift);
    set(VK_CONTROL, held.control);
    set(VK_MENU, held.alt);
    SetKeyboardState(now);
  }
  ~HeldKeys() { SetKeyboardState(before_); }
  HeldKeys(const HeldKeys &) = delete;
  HeldKeys &operator=(const HeldKeys &) = delete;

private:
  BYTE before_[256]{};
};

struct ButtonMessages {
  MouseButton button;
  UINT down;
  UINT up;
  UINT twice;
  WPARAM flag;
};
constexpr ButtonMessages kButtons[] = {
    {MouseButton::left, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, MK_LBUTTON},
    {MouseButton::right, WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, MK_RBUTTON},
    {MouseButton::middle, WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK, MK_MBUTTON},
};

const ButtonMessages &messages_of(MouseButton button) {
  for (const ButtonMessages &row : kButtons)
    if (row.button == button)
      return row;
  return kButtons[0];
}

// The message of an event, and what is held with it.
std::pair<UINT, WPARAM> mouse_words(const MouseEvent &event) {
  const ButtonMessages &row = messages_of(event.button);
  const WPARAM keys = (event.held.shift ? MK_SHIFT : 0) | (event.held.control ? MK_CONTROL : 0);
  switch (event.kind) {
  case MouseKind::down:
    return {row.down, keys | row.flag};
  case MouseKind::up:
    return {row.up, keys};
  case MouseKind::double_click:
    return {row.twice, keys | row.flag};
  case MouseKind::wheel:
    return {WM_MOUSEWHEEL,
            MAKEWPARAM(keys, static_cast<WORD>(static_cast<SHORT>(-event.notches * WHEEL_DELTA)))};
  default:
    return {WM_MOUSEMOVE, keys | (event.button == MouseButton::none ? 0 : row.flag)};
  }
}

class WindowHands : public ScriptHands {
public:
  void mouse(WindowId win, const MouseEvent &event) override {
    Window *window = find_window(win);
    if (window == nullptr || window->edit != nullptr)
      return;
    const HeldKeys held(event.held);
    const auto [message, words] = mouse_words(event);
    POINT at = shown_place(*window, event.at);
    if (event.kind == MouseKind::wheel)
      ClientToScreen(window->hwnd, &at);
    window->aimed = event.segment;
    SendMessageW(window->hwnd, message, words, MAKELPARAM(at.x, at.y));
    if ((window = find_window(win)) != nullptr)
      window->aimed = 0;
  }

  void key(WindowId win, const KeyEvent &event) override {
    const Window *window = find_window(win);
    if (window == nullptr)
      return;
    const HWND target = window->edit != nullptr ? window->edit : window->hwnd;
    if (event.key == Key::text) {
      for (const wchar_t unit : widen(event.text))
        SendMessageW(target, WM_CHAR, unit, 1);
    } else {
      const HeldKeys held(event.held);
      MSG message{};
      message.hwnd = target;
      message.message = event.held.alt && !event.held.control ? WM_SYSKEYDOWN : WM_KEYDOWN;
      message.wParam = code_of(event);
      message.lParam = 1;
      take_message(message);
      service_messages(); // the character that the key types
    }
    settle();
  }

  std::string title_of(WindowId win) override {
    const Window *window = find_window(win);
    wchar_t title[256] = L"";
    if (window != nullptr)
      GetWindowTextW(window->hwnd, title, static_cast<int>(std::size(title)));
    return narrow(title);
  }

  CursorShape cursor() override { return cursor_now(); }
  void settle() override { service_messages(); }
};

WindowHands hands;
std::unique_ptr<EventRunner> runner;

} // namespace

bool read_script(const std::string &file) {
  runner = std::make_unique<EventRunner>(hands);
  return runner->read(file);
}

int run_script() {
  const int status = run_event_script(*runner) ? 0 : 1;
  runner.reset();
  return status;
}

} // namespace velora::win32
