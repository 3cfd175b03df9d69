// The drawing objects of the program: pens and brushes of the palette, fonts, cursors. Made at the
// start or at the first use, freed with the frame.
#pragma once

#include "platform/canvas.h"
#include "platform/desktop.h"
#include "shell/win32/w_common.h"

namespace velora::win32 {

// The pens for marking and erasing in pictures; pen_for() answers the same ones for what is drawn
// so.
extern HPEN hDottedPen;
extern HPEN hBoldPen;
extern HPEN wipe_out_pen;

void Create_GDI_Objects(HINSTANCE instance);
void Destroy_GDI_Objects();
// Makes the fonts of pictures. They are those of the resolution 96, and pictures are scaled as a
// whole.
void FontsInitialize();

// The pen or brush for a drawing call: one of the palette's where it has one, else kept from the
// first use on.
HPEN pen_for(const Pen &pen);
HBRUSH brush_for(const Brush &brush);
// `scaled` tells of a surface that is not drawn on dot by dot.
HFONT font_for(const Font &font, bool scaled);
// The font of text windows on a screen of that resolution, kept as long as the program runs.
HFONT text_font(unsigned dpi);
HCURSOR cursor_for(CursorShape shape);

} // namespace velora::win32
