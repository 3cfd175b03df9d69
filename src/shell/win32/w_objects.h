// The drawing objects of the program: pens and brushes of the palette, fonts, cursors. Made once at
// the start, fonts again when the resolution of the screen changes; freed with the frame.
#pragma once

#include "platform/canvas.h"
#include "platform/desktop.h"
#include "shell/win32/w_common.h"

namespace velora::win32 {

// Erasing and marking in pictures.
extern HPEN hDottedPen;
extern HPEN hBoldPen;
extern HPEN wipe_out_pen;

void Create_GDI_Objects(HINSTANCE instance);
void Destroy_GDI_Objects();
// Makes the fonts; `dpi` is the resolution that text windows are shown at. Pictures use fonts of
// the resolution 96 and are scaled as a whole.
void FontsInitialize(unsigned dpi);

// The pen or brush for a drawing call: one of the palette's where it has one, else kept from the
// first use on.
HPEN pen_for(const Pen &pen);
HBRUSH brush_for(const Brush &brush);
HFONT font_for(const Font &font);
// The font of text windows.
HFONT text_font();
HCURSOR cursor_for(CursorShape shape);

} // namespace velora::win32
