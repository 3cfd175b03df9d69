// The drawing objects of the program: fonts and cursors. Made at the start or at the first use,
// freed with the frame.
#pragma once

#include "platform/canvas.h"
#include "platform/desktop.h"
#include "shell/win32/w_common.h"

namespace velora::win32 {

void Create_GDI_Objects(HINSTANCE instance);
void Destroy_GDI_Objects();
// Makes the fonts of pictures for the resolution of the frame, so that the first one is drawn
// without delay.
void FontsInitialize();

// The letters of pictures in one size and scale; `height` is that of a line of them in dots.
struct PictureFont {
  GdiHandle font;
  int height = 0;
};
const PictureFont &picture_font(const Font &font, double scale);
// The font of text windows on a screen of that resolution, `points` large; kept as long as the
// program runs.
HFONT text_font(unsigned dpi, int points = 10);
HCURSOR cursor_for(CursorShape shape);

} // namespace velora::win32
