// Making events of Qt out of those of a script.
#include "shell/qt/q_hands.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include "shell/desk_events.h"
#include "shell/qt/q_cursors.h"
#include "shell/qt/q_input.h"
#include "shell/qt/q_menus.h"
#include "shell/qt/q_picture.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_windows.h"

namespace velora::qt {

namespace {

constexpr int kNotch = 120;

Qt::KeyboardModifiers modifiers(const Modifiers &held) {
  Qt::KeyboardModifiers made;
  made.setFlag(Qt::ShiftModifier, held.shift);
  made.setFlag(Qt::ControlModifier, held.control);
  made.setFlag(Qt::AltModifier, held.alt);
  return made;
}

Qt::MouseButton button_of(MouseButton button) {
  switch (button) {
  case MouseButton::left:
    return Qt::LeftButton;
  case MouseButton::middle:
    return Qt::MiddleButton;
  case MouseButton::right:
    return Qt::RightButton;
  case MouseButton::none:
    break;
  }
  return Qt::NoButton;
}

void send_wheel(PictureArea &view, const MouseEvent &event, QPointF at) {
  QWheelEvent sent(at, view.viewport()->mapToGlobal(at), {}, {0, -event.notches * kNotch},
                   Qt::NoButton, modifiers(event.held), Qt::NoScrollPhase, false);
  QApplication::sendEvent(view.viewport(), &sent);
}

QEvent::Type type_of(MouseKind kind) {
  switch (kind) {
  case MouseKind::down:
    return QEvent::MouseButtonPress;
  case MouseKind::up:
    return QEvent::MouseButtonRelease;
  case MouseKind::double_click:
    return QEvent::MouseButtonDblClick;
  default:
    return QEvent::MouseMove;
  }
}

QString text_of(const KeyEvent &event) {
  if (event.key == Key::text)
    return wide(event.text);
  if (event.key == Key::space)
    return QStringLiteral(" ");
  return event.key == Key::enter ? QStringLiteral("\r") : QString();
}

} // namespace

void WindowHands::mouse(WindowId win, const MouseEvent &event) {
  const Window *window = find_window(win);
  if (window == nullptr || window->view == nullptr)
    return;
  if (event.kind == MouseKind::lost) {
    mouse_event(win, event);
    return;
  }
  QWidget *view = window->view->viewport();
  // The middle of the unit, so that it is the same one after the way back.
  const double half = window->view->zoom() / 2;
  const QPointF at = window->view->dot_at(event.at) + QPointF(half, half);
  if (event.kind == MouseKind::wheel) {
    send_wheel(*window->view, event, at);
    return;
  }
  const bool moves = event.kind == MouseKind::move;
  const Qt::MouseButton button = button_of(event.button);
  const bool held = event.kind != MouseKind::up;
  QMouseEvent sent(type_of(event.kind), at, view->mapToGlobal(at), moves ? Qt::NoButton : button,
                   held ? Qt::MouseButtons(button) : Qt::MouseButtons(), modifiers(event.held));
  QApplication::sendEvent(view, &sent);
}

// A key that a menu knows is the menu's, unless the widget keeps it for itself.
void WindowHands::key(WindowId win, const KeyEvent &event) {
  const Window *window = find_window(win);
  if (window == nullptr)
    return;
  QWidget *target = inside_of(*window);
  const int code = code_of(event);
  QKeyEvent asked(QEvent::ShortcutOverride, code, modifiers(event.held), text_of(event));
  asked.ignore();
  QApplication::sendEvent(target, &asked);
  if (!asked.isAccepted() && choose_by_key(QKeySequence(code | modifiers(event.held).toInt())))
    return;
  QKeyEvent pressed(QEvent::KeyPress, code, modifiers(event.held), text_of(event));
  QApplication::sendEvent(target, &pressed);
  QKeyEvent released(QEvent::KeyRelease, code, modifiers(event.held), text_of(event));
  QApplication::sendEvent(target, &released);
}

std::string WindowHands::title_of(WindowId win) {
  const Window *window = find_window(win);
  return window == nullptr ? std::string() : narrow(window->sub->windowTitle());
}

CursorShape WindowHands::cursor() {
  return cursor_in_use();
}

void WindowHands::settle() {
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QApplication::processEvents();
}

} // namespace velora::qt
