// The cursors over pictures and the icons of the kinds of windows, drawn by the program.
#pragma once

#include <QCursor>
#include <QIcon>

#include "platform/desktop.h"

namespace velora::qt {

QCursor cursor_for(CursorShape shape);
// The shape that pictures have now.
CursorShape cursor_in_use();
void use_cursor(CursorShape shape);
// The mark of a window of that kind.
QIcon kind_icon(WindowKind kind);
QIcon program_icon();

} // namespace velora::qt
