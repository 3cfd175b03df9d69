// The events of mouse and keys over pictures, as the program takes them.
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include "platform/input.h"

namespace velora::qt {

Modifiers held_keys(Qt::KeyboardModifiers held);
// The mouse at `at`, in units of the picture.
MouseEvent mouse_of(const QMouseEvent &event, MouseKind kind, Point at);
// False when the key means nothing to a picture.
bool key_of(const QKeyEvent &event, KeyEvent &key);
// The code of a key as key_of takes it; 0 for text.
int code_of(const KeyEvent &event);

} // namespace velora::qt
