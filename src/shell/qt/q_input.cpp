// Translating events, in both directions for keys. Nothing is decided here.
#include "shell/qt/q_input.h"

#include "shell/qt/q_text.h"

namespace velora::qt {

namespace {

MouseButton button_of(Qt::MouseButton button) {
  switch (button) {
  case Qt::LeftButton:
    return MouseButton::left;
  case Qt::MiddleButton:
    return MouseButton::middle;
  case Qt::RightButton:
    return MouseButton::right;
  default:
    return MouseButton::none;
  }
}

// The button held in a move; of several the first.
MouseButton button_held(Qt::MouseButtons held) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton})
    if (held.testFlag(button))
      return button_of(button);
  return MouseButton::none;
}

struct KeyRow {
  int code;
  Key key;
};
// Of several codes of a key the first is the one that scripts send.
constexpr KeyRow kKeyRows[] = {
    {Qt::Key_Return, Key::enter},   {Qt::Key_Enter, Key::enter},
    {Qt::Key_Escape, Key::escape},  {Qt::Key_Tab, Key::tab},
    {Qt::Key_Backtab, Key::tab},    {Qt::Key_Space, Key::space},
    {Qt::Key_Delete, Key::del},     {Qt::Key_Backspace, Key::backspace},
    {Qt::Key_Left, Key::left},      {Qt::Key_Right, Key::right},
    {Qt::Key_Up, Key::up},          {Qt::Key_Down, Key::down},
    {Qt::Key_Home, Key::home},      {Qt::Key_End, Key::end},
    {Qt::Key_PageUp, Key::page_up}, {Qt::Key_PageDown, Key::page_down},
};

} // namespace

Modifiers held_keys(Qt::KeyboardModifiers held) {
  return {held.testFlag(Qt::ShiftModifier), held.testFlag(Qt::ControlModifier),
          held.testFlag(Qt::AltModifier)};
}

MouseEvent mouse_of(const QMouseEvent &event, MouseKind kind, Point at) {
  MouseEvent made;
  made.kind = kind;
  made.at = at;
  made.button = kind == MouseKind::move ? button_held(event.buttons()) : button_of(event.button());
  made.held = held_keys(event.modifiers());
  return made;
}

// Keys with names first; then Ctrl or Alt with a letter or digit, both together type on some
// keyboards; what remains is text.
bool key_of(const QKeyEvent &event, KeyEvent &key) {
  key.held = held_keys(event.modifiers());
  const int code = event.key();
  for (const KeyRow &row : kKeyRows)
    if (row.code == code) {
      key.key = row.key;
      key.held.shift = key.held.shift || code == Qt::Key_Backtab;
      return true;
    }
  if (code >= Qt::Key_F1 && code <= Qt::Key_F12) {
    key.key = Key::function;
    key.number = code - Qt::Key_F1 + 1;
    return true;
  }
  const bool letter =
      (code >= Qt::Key_A && code <= Qt::Key_Z) || (code >= Qt::Key_0 && code <= Qt::Key_9);
  if (letter && key.held.control != key.held.alt) {
    key.key = Key::letter;
    key.text = static_cast<char>(code);
    return true;
  }
  if (event.text().isEmpty() || !event.text().front().isPrint())
    return false;
  key.key = Key::text;
  key.text = narrow(event.text());
  return true;
}

int code_of(const KeyEvent &event) {
  if (event.key == Key::tab && event.held.shift)
    return Qt::Key_Backtab;
  if (event.key == Key::function)
    return Qt::Key_F1 + event.number - 1;
  if (event.key == Key::letter)
    return event.text.empty() ? 0 : static_cast<unsigned char>(event.text.front());
  for (const KeyRow &row : kKeyRows)
    if (row.key == event.key)
      return row.code;
  return 0;
}

} // namespace velora::qt
